#include "com/StructObject.h"

#include "com/StructItemObject.h"

namespace z7::com {

StructObject::StructObject(const cashflow::CashFlowStruct& structure) {
    for (const auto& item : structure.items()) {
        structure_.Add(std::make_shared<cashflow::CashFlowStructItem>(*item));
    }
}

HRESULT StructObject::Add(_CashFlowStructItem* Item) noexcept {
    return run([&] { structure_.Add(objectNeeded<StructItemObject>(Item).item()); });
}

HRESULT StructObject::get_Item(BSTR vntIndexKey, _CashFlowStructItem** field) noexcept {
    // The fields are this object's own copies, so that the host may change them.
    return answer(field, [&] {
        return StructItemObject::of(
            std::const_pointer_cast<cashflow::CashFlowStructItem>(structure_.Item(text(vntIndexKey))));
    });
}

HRESULT StructObject::get_Fields(VARIANT* names) noexcept {
    return answer(names, [this] { return structure_.Fields(); });
}

HRESULT StructObject::get_Count(VARIANT* number) noexcept {
    return answer(number, [this] { return structure_.Count(); });
}

} // namespace z7::com
