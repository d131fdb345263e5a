#pragma once

#include "z7cashflow/model/CashFlow.h"
#include "z7cashflow/model/ItemSource.h"

#include <map>
#include <string>

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

} // namespace z7::cashflow::host
