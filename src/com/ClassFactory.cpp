#include "com/ClassFactory.h"

#include "com/guarded.h"
#include "com/threadStates.h"

namespace z7::com {

HRESULT ClassFactory::QueryInterface(REFIID id, void** out) noexcept {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = nullptr;
    if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IClassFactory)) {
        return E_NOINTERFACE;
    }
    *out = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef() noexcept { return ++references_; }

ULONG ClassFactory::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** out) noexcept {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = nullptr;
    if (outer != nullptr) {
        return CLASS_E_NOAGGREGATION;
    }
    return guarded(IID_IClassFactory, [&] {
        makeThreadState();
        return created_.create()->QueryInterface(id, out);
    });
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept {
    if (lock != FALSE) {
        ModuleUse::lock();
    } else {
        ModuleUse::unlock();
    }
    return S_OK;
}

} // namespace z7::com
