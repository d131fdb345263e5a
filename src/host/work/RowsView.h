#pragma once

#include "host/cli/Output.h"
#include "host/work/Session.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/ItemSource.h"

#include <map>

namespace z7::cashflow::host {

/// Where the items of rows come from, by row.
using ItemSources = std::map<const CashFlow*, ItemSource>;

/// Notes where the library finds the items of the rows that it makes, as long as it lives. One at a time in a thread.
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

/// Writes rows as a table for people or an array for machines; a null pointer stands for no rows. With sources, each
/// row says where its item comes from.
void showRows(Output& output, Session& session, const CashFlowCollection* rows, const ItemSources* sources = nullptr);

} // namespace z7::cashflow::host
