#include "z7cashflow/model/CashFlowStruct.h"

#include <cstdint>
#include <utility>

namespace z7::cashflow {

void CashFlowStruct::Add(std::shared_ptr<const CashFlowStructItem> Item) {
    if (!Item) {
        raisePlatformError(Reason::schemaFieldMissing);
    }
    const std::string name = Item->FieldName;
    items_.add(name, std::move(Item));
}

std::shared_ptr<const CashFlowStructItem> CashFlowStruct::Item(const std::string& vntIndexKey) const {
    const auto* found = items_.find(vntIndexKey);
    return found == nullptr ? nullptr : *found;
}

const std::vector<std::string>& CashFlowStruct::Fields() const noexcept { return items_.names(); }

Variant CashFlowStruct::Count() const { return static_cast<std::int32_t>(items_.size()); }

} // namespace z7::cashflow
