#include "com/StructItemObject.h"

#include "adapters/ado/automation/OwnedVariant.h"
#include "com/Identities.h"
#include "com/arguments.h"

#include <utility>

namespace z7::com {

using Known = Identities<StructItemObject>;

adapters::automation::ComPtr<StructItemObject>
StructItemObject::of(const std::shared_ptr<cashflow::CashFlowStructItem>& item) {
    return item ? Known::of(item.get(), [&item] { return new StructItemObject(item); }) : nullptr;
}

StructItemObject::StructItemObject(std::shared_ptr<cashflow::CashFlowStructItem> item) : item_(std::move(item)) {}

StructItemObject::~StructItemObject() { Known::forget(item_.get(), this); }

HRESULT StructItemObject::get_FieldName(BSTR* value) noexcept {
    return answer(value, [this] { return item_->FieldName; });
}

HRESULT StructItemObject::put_FieldName(BSTR value) noexcept {
    return run([&] { item_->FieldName = text(value); });
}

HRESULT StructItemObject::get_DataType(BSTR* value) noexcept {
    return answer(value, [this] { return item_->DataType; });
}

HRESULT StructItemObject::put_DataType(BSTR value) noexcept {
    return run([&] { item_->DataType = text(value); });
}

HRESULT StructItemObject::get_DataCanNull(VARIANT_BOOL* value) noexcept {
    return answer(value, [this] { return item_->DataCanNull; });
}

HRESULT StructItemObject::put_DataCanNull(VARIANT_BOOL value) noexcept {
    return run([&] { item_->DataCanNull = truth(value); });
}

HRESULT StructItemObject::get_DefaultValue(VARIANT* value) noexcept {
    return answer(value, [this] { return item_->DefaultValue; });
}

HRESULT StructItemObject::put_DefaultValue(VARIANT value) noexcept {
    return run([&] { item_->DefaultValue = adapters::automation::fromAutomation(value); });
}

HRESULT StructItemObject::get_isSave(VARIANT_BOOL* value) noexcept {
    return answer(value, [this] { return item_->isSave; });
}

HRESULT StructItemObject::put_isSave(VARIANT_BOOL value) noexcept {
    return run([&] { item_->isSave = truth(value); });
}

} // namespace z7::com
