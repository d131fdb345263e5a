#pragma once

#include "com/DualObject.h"
#include "com/Z7CashFlow.h"

namespace z7::com {

/// The class IXmlSerializable, the contract alone. Hosts can create it, as they can create any class; its members
/// succeed, do nothing and return the zero of their type.
class XmlContractObject final : public DualObject<_IXmlSerializable> {
public:
    HRESULT STDMETHODCALLTYPE Load(VARIANT /*xml*/) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Save(BSTR* xml) noexcept override { return storeNothing(xml); }
};

} // namespace z7::com
