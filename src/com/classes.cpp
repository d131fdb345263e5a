#include "com/classes.h"

#include "com/GlContractObject.h"
#include "com/MainObject.h"
#include "com/OutContractObject.h"
#include "com/ProviderObject.h"
#include "com/SqlContractObject.h"
#include "com/StructItemObject.h"
#include "com/XmlContractObject.h"

#include <algorithm>
#include <array>
#include <memory>

namespace z7::com {

namespace {

using adapters::automation::ComPtr;

template <class T> ComPtr<IUnknown> create() {
    const ComPtr<T> object(new T());
    return ComPtr<IUnknown>(static_cast<ISupportErrorInfo*>(object.get()));
}

ComPtr<IUnknown> createStructItem() {
    const auto object = StructItemObject::of(std::make_shared<cashflow::CashFlowStructItem>());
    return ComPtr<IUnknown>(static_cast<ISupportErrorInfo*>(object.get()));
}

const std::array classes{
    CreatableClass{CLSID_VoucherProvider, L"VoucherProvider", create<ProviderObject>},
    CreatableClass{CLSID_clsMain, L"clsMain", create<MainObject>},
    CreatableClass{CLSID_CashFlowStructItem, L"CashFlowStructItem", createStructItem},
    CreatableClass{CLSID_IGlVoucherProvider, L"IGlVoucherProvider", create<GlContractObject>},
    CreatableClass{CLSID_IOutVoucherProvider, L"IOutVoucherProvider", create<OutContractObject>},
    CreatableClass{CLSID_ISQLSerializable, L"ISQLSerializable", create<SqlContractObject>},
    CreatableClass{CLSID_IXmlSerializable, L"IXmlSerializable", create<XmlContractObject>},
};

} // namespace

std::span<const CreatableClass> creatableClasses() noexcept { return classes; }

const CreatableClass* findClass(REFCLSID id) noexcept {
    const auto* const found = std::find_if(classes.begin(), classes.end(),
                                           [&id](const CreatableClass& known) { return IsEqualCLSID(known.id, id); });
    return found == classes.end() ? nullptr : found;
}

} // namespace z7::com
