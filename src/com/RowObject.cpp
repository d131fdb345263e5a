#include "com/RowObject.h"

#include "adapters/ado/automation/OwnedVariant.h"
#include "com/ByReference.h"
#include "com/CollectionObject.h"
#include "com/Identities.h"

#include <utility>

namespace z7::com {

using Known = Identities<RowObject>;

adapters::automation::ComPtr<RowObject> RowObject::of(const std::shared_ptr<cashflow::CashFlow>& row) {
    if (!row) {
        return nullptr;
    }
    auto object = Known::of(row.get(), [&row] { return new RowObject(row); });
    object->keepCollection();
    return object;
}

RowObject::RowObject(std::shared_ptr<cashflow::CashFlow> row)
    : row_(std::move(row)), sql_(*this, *row_), xml_(*this, *row_, XmlFace::element) {}

RowObject::~RowObject() { Known::forget(row_.get(), this); }

HRESULT RowObject::get_objParent(_CashFlowCollection** value) noexcept {
    return answer(value, [this] { return CollectionObject::of(row_->objParent()); });
}

HRESULT RowObject::putref_objParent(_CashFlowCollection* value) noexcept {
    return run([&] {
        row_->objParent(held(value));
        keepCollection();
    });
}

HRESULT RowObject::get_key(BSTR* value) noexcept {
    return answer(value, [this] { return row_->key(); });
}

HRESULT RowObject::put_key(BSTR value) noexcept {
    return run([&] { row_->key(text(value)); });
}

HRESULT RowObject::get_Item(BSTR Field, VARIANT* value) noexcept {
    return answer(value, [&] { return row_->Item(text(Field)); });
}

HRESULT RowObject::SetValue(BSTR Field, VARIANT vdata) noexcept {
    return run([&] { row_->SetValue(text(Field), adapters::automation::fromAutomation(vdata)); });
}

HRESULT RowObject::get_Count(LONG* number) noexcept {
    return answer(number, [this] { return row_->Count(); });
}

HRESULT RowObject::CheckCashFlow(BSTR* strInfo, VARIANT_BOOL* complete) noexcept {
    return answer(complete, [&] {
        TextReference reason(strInfo);
        std::string unasked;
        return storingBack(
            [&] { return row_->CheckCashFlow(reason.pointer() == nullptr ? unasked : *reason.pointer()); }, reason);
    });
}

HRESULT RowObject::get_Fields(VARIANT* names) noexcept {
    return answer(names, [this] { return row_->Fields(); });
}

} // namespace z7::com
