// The entry points of Z7CashFlow.dll.

#include "com/ClassFactory.h"
#include "com/ModuleUse.h"
#include "com/classes.h"
#include "com/guarded.h"
#include "com/registration.h"
#include "com/threadStates.h"
#include "com/typeLibrary.h"

// NOLINTBEGIN(readability-identifier-naming): the names are the system's.

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID processEnds) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return z7::com::openThreadStates() ? TRUE : FALSE;
    case DLL_THREAD_DETACH:
        z7::com::abandonThreadState();
        break;
    case DLL_PROCESS_DETACH:
        if (processEnds == nullptr) {
            z7::com::closeThreadStates();
        }
        break;
    default:
        break;
    }
    return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** out) {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = nullptr;
    const z7::com::CreatableClass* created = z7::com::findClass(classId);
    if (created == nullptr) {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    return z7::com::guarded(IID_IClassFactory, [&] {
        const z7::adapters::automation::ComPtr<IClassFactory> factory(new z7::com::ClassFactory(*created));
        return factory->QueryInterface(interfaceId, out);
    });
}

// Before the DLL agrees to be unloaded, it destroys the calling thread's state: it gets no later opportunity.
extern "C" HRESULT WINAPI DllCanUnloadNow() {
    const long own = z7::com::hasThreadState() ? 1 : 0;
    if (z7::com::ModuleUse::count() > 0 || z7::com::threadStateCount() > own) {
        return S_FALSE;
    }
    z7::com::destroyThreadState();
    // The host's objects that were released may have called back and taken new ones.
    return z7::com::threadStateCount() == 0 && z7::com::ModuleUse::count() == 0 ? S_OK : S_FALSE;
}

extern "C" HRESULT WINAPI DllRegisterServer() {
    HRESULT result = S_OK;
    const HRESULT failure =
        z7::com::guarded(IID_IUnknown, [&] { result = z7::com::registerLibrary(z7::com::ownPath()); });
    return FAILED(failure) ? failure : result;
}

extern "C" HRESULT WINAPI DllUnregisterServer() { return z7::com::unregisterLibrary(); }

// NOLINTEND(readability-identifier-naming)
