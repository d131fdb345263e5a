#pragma once

#include "host/cli/Output.h"
#include "host/work/Session.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/ItemSource.h"

#include <map>

namespace z7::cashflow::host {

/// Where the item of each row comes from.
using ItemSources = std::map<const CashFlow*, ItemSource>;

/// Records where the library finds the items of the rows that it generates, for as long as this object lives. At
/// most one per thread.
class ItemSourceNotes {
public:
    ItemSourceNotes();
    ~ItemSourceNotes();
    ItemSourceNotes(const ItemSourceNotes&) = delete;
    ItemSourceNotes& operator=(const ItemSourceNotes&) = delete;

    [[nodiscard]] const ItemSources& sources() const noexcept { return sources_; }

private:
    ItemSources sources_;
};

/// Writes rows as a table, or as an array in JSON; a null pointer means no rows. With sources, each row shows where
/// its item comes from.
void showRows(Output& output, Session& session, const CashFlowCollection* rows, const ItemSources* sources = nullptr);

} // namespace z7::cashflow::host
