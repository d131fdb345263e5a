#include "com/typeLibrary.h"

#include "adapters/ado/automation/Dispatch.h"
#include "z7cashflow/support/Error.h"

namespace z7::com {

namespace {

[[noreturn]] void raise(HRESULT code, const char* what) {
    throw cashflow::Error(code, "Z7CashFlow", what + adapters::automation::systemText(code));
}

} // namespace

HMODULE ownModule() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ownModule), &module);
    return module;
}

std::wstring ownPath() {
    constexpr std::size_t longest = 32768; // what the system allows
    std::wstring path(MAX_PATH, L'\0');
    while (true) {
        const DWORD length = GetModuleFileNameW(ownModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0 || path.size() > longest) {
            raise(HRESULT_FROM_WIN32(GetLastError()), "The path of Z7CashFlow.dll is not known: ");
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

adapters::automation::ComPtr<ITypeLib> typeLibrary() {
    adapters::automation::ComPtr<ITypeLib> library;
    const HRESULT result = LoadTypeLibEx(ownPath().c_str(), REGKIND_NONE, library.put());
    if (FAILED(result)) {
        raise(result, "The type library of Z7CashFlow.dll cannot be read: ");
    }
    return library;
}

} // namespace z7::com
