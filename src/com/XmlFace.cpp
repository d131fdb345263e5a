#include "com/XmlFace.h"

#include "adapters/ado/automation/Dispatch.h"
#include "adapters/ado/automation/OwnedVariant.h"
#include "z7cashflow/support/conversions.h"

namespace z7::com {

namespace {

using adapters::automation::Dispatch;

bool isObject(const VARIANT& value) noexcept {
    const VARIANT& held = value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal != nullptr ? *value.pvarVal : value;
    const auto type = static_cast<VARTYPE>(held.vt & ~VT_BYREF);
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

} // namespace

XmlFace::XmlFace(Object& object, cashflow::IXmlSerializable& source, Reader reader)
    : Face(object, L"IXmlSerializable"), source_(source), reader_(reader) {}

cashflow::XmlSource XmlFace::document(const VARIANT& xml) {
    return cashflow::toTextOrEmpty(adapters::automation::fromAutomation(xml));
}

cashflow::XmlSource XmlFace::element(const VARIANT& xml) {
    const cashflow::Variant text =
        isObject(xml) ? Dispatch::ofValue(xml, L"xml").get(L"xml").value() : adapters::automation::fromAutomation(xml);
    const auto parsed = cashflow::XmlDocument::load(cashflow::toTextOrEmpty(text));
    if (!parsed) {
        raiseHostError(cashflow::errors::typeMismatch, "A row is loaded from its XML element");
    }
    return parsed->documentElement();
}

HRESULT XmlFace::Load(VARIANT xml) noexcept {
    return run([&] { source_.Load(reader_(xml)); });
}

HRESULT XmlFace::Save(BSTR* xml) noexcept {
    return answer(xml, [this] { return source_.Save(); });
}

} // namespace z7::com
