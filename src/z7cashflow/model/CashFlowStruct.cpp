#include "z7cashflow/model/CashFlowStruct.h"

#include "z7cashflow/support/Error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace z7::cashflow {

void CashFlowStruct::Add(std::shared_ptr<const CashFlowStructItem> Item) {
    if (!Item) {
        raisePlatformError(Reason::schemaFieldMissing);
    }
    if (!shape_.add(Item->FieldName)) {
        raisePlatformError(Reason::fieldExists, {Item->FieldName});
    }
    items_.push_back(std::move(Item));
}

std::shared_ptr<const CashFlowStructItem> CashFlowStruct::Item(const std::string& vntIndexKey) const {
    const std::optional<std::size_t> position = shape_.position(vntIndexKey);
    return position ? items_[*position] : nullptr;
}

Variant CashFlowStruct::Count() const { return static_cast<std::int32_t>(items_.size()); }

} // namespace z7::cashflow
