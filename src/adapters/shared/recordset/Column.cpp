#include "adapters/shared/recordset/Column.h"

#include "z7cashflow/support/conversions.h"

#include <utility>

namespace z7::cashflow::shared {

ColumnList::ColumnList(std::vector<Column> columns) : columns_(std::move(columns)) {
    for (int position = 0; position < count(); ++position) {
        // If several columns have the same name, the first one is found.
        positions_.try_emplace(asciiLower((*this)[position].name), position);
    }
}

int ColumnList::find(std::string_view name) const {
    const auto found = positions_.find(asciiLower(name));
    return found == positions_.end() ? -1 : found->second;
}

} // namespace z7::cashflow::shared
