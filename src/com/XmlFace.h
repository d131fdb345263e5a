#pragma once

#include "com/Face.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/model/IXmlSerializable.h"

namespace z7::com {

/// The interface IXmlSerializable of a row or a collection.
class XmlFace final : public Face<_IXmlSerializable> {
public:
    /// Reads what a host passes to Load.
    using Reader = cashflow::XmlSource (*)(const VARIANT& xml);

    /// The interface of an object over its row or collection, which the object owns.
    XmlFace(Object& object, cashflow::IXmlSerializable& source, Reader reader);

    /// The document of a collection: a text.
    [[nodiscard]] static cashflow::XmlSource document(const VARIANT& xml);
    /// The element of a row: a node of the system's XML documents, or the element's text. Error 13 for anything else,
    /// also for a text that is not an element.
    [[nodiscard]] static cashflow::XmlSource element(const VARIANT& xml);

    HRESULT STDMETHODCALLTYPE Load(VARIANT xml) noexcept override;
    HRESULT STDMETHODCALLTYPE Save(BSTR* xml) noexcept override;

private:
    cashflow::IXmlSerializable& source_;
    Reader reader_;
};

} // namespace z7::com
