#include "com/registration.h"

#include "com/Z7CashFlow.h"
#include "com/classes.h"
#include "com/guarded.h"

#include <array>
#include <vector>

namespace z7::com {

namespace {

// Of the system: passes calls between apartments by the description in a type library.
constexpr const wchar_t* marshaler = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* version = L"1.0";
constexpr const wchar_t* wordSize = sizeof(void*) == 8 ? L"win64" : L"win32";

struct InterfaceName {
    const IID& id;
    const wchar_t* name;
};

const std::array interfaces{
    InterfaceName{IID__VoucherProvider, L"_VoucherProvider"},
    InterfaceName{IID__IGlVoucherProvider, L"_IGlVoucherProvider"},
    InterfaceName{IID__IOutVoucherProvider, L"_IOutVoucherProvider"},
    InterfaceName{IID__clsMain, L"_clsMain"},
    InterfaceName{IID__CashFlowCollection, L"_CashFlowCollection"},
    InterfaceName{IID__CashFlow, L"_CashFlow"},
    InterfaceName{IID__CashFlowStruct, L"_CashFlowStruct"},
    InterfaceName{IID__CashFlowStructItem, L"_CashFlowStructItem"},
    InterfaceName{IID__ISQLSerializable, L"_ISQLSerializable"},
    InterfaceName{IID__IXmlSerializable, L"_IXmlSerializable"},
};

std::wstring braced(const GUID& id) {
    std::array<wchar_t, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::wstring classKey(const CreatableClass& named) { return L"Software\\Classes\\CLSID\\" + braced(named.id); }

std::wstring programId(const CreatableClass& named) { return std::wstring(L"Z7CashFlow.") + named.name; }

std::wstring programKey(const CreatableClass& named) { return L"Software\\Classes\\" + programId(named); }

std::wstring interfaceKey(const InterfaceName& named) { return L"Software\\Classes\\Interface\\" + braced(named.id); }

std::wstring libraryKey() { return L"Software\\Classes\\TypeLib\\" + braced(LIBID_Z7CashFlow); }

struct Entry {
    std::wstring key;
    const wchar_t* name; ///< a null pointer for the key's own value
    std::wstring value;
};

std::vector<Entry> entries(const std::wstring& path) {
    std::vector<Entry> all;
    const std::wstring library = braced(LIBID_Z7CashFlow);
    for (const CreatableClass& named : creatableClasses()) {
        const std::wstring key = classKey(named);
        all.push_back({key, nullptr, programId(named)});
        all.push_back({key + L"\\InprocServer32", nullptr, path});
        all.push_back({key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"});
        all.push_back({key + L"\\ProgID", nullptr, programId(named)});
        all.push_back({key + L"\\Programmable", nullptr, L""});
        all.push_back({key + L"\\TypeLib", nullptr, library});
        all.push_back({key + L"\\Version", nullptr, version});
        all.push_back({programKey(named), nullptr, programId(named)});
        all.push_back({programKey(named) + L"\\CLSID", nullptr, braced(named.id)});
    }
    for (const InterfaceName& named : interfaces) {
        const std::wstring key = interfaceKey(named);
        all.push_back({key, nullptr, named.name});
        all.push_back({key + L"\\ProxyStubClsid32", nullptr, marshaler});
        all.push_back({key + L"\\TypeLib", nullptr, library});
        all.push_back({key + L"\\TypeLib", L"Version", version});
    }
    const std::wstring libraryVersion = libraryKey() + L"\\" + version;
    all.push_back({libraryVersion, nullptr, L"Z7CashFlow cash-flow rows of vouchers"});
    all.push_back({libraryVersion + L"\\0\\" + wordSize, nullptr, path});
    all.push_back({libraryVersion + L"\\FLAGS", nullptr, L"0"});
    all.push_back({libraryVersion + L"\\HELPDIR", nullptr, path.substr(0, path.find_last_of(L'\\'))});
    return all;
}

LSTATUS write(HKEY root, const Entry& entry) {
    HKEY key = nullptr;
    LSTATUS result = RegCreateKeyExW(root, entry.key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    if (result == ERROR_SUCCESS) {
        const auto size = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
        result = RegSetValueExW(key, entry.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(entry.value.c_str()), size);
        RegCloseKey(key);
    }
    return result;
}

// A key that does not exist has been removed already, which is not a failure.
void keepFirst(LSTATUS& first, LSTATUS result) {
    if (first == ERROR_SUCCESS && result != ERROR_FILE_NOT_FOUND) {
        first = result;
    }
}

bool hasSubkeys(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return false;
    }
    DWORD count = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr);
    RegCloseKey(key);
    return count > 0;
}

HRESULT everywhere(LSTATUS (*action)(HKEY)) {
    const LSTATUS ofAll = action(HKEY_LOCAL_MACHINE);
    const LSTATUS ofUser = action(HKEY_CURRENT_USER);
    return HRESULT_FROM_WIN32(ofAll != ERROR_SUCCESS ? ofAll : ofUser);
}

} // namespace

LSTATUS registerBelow(HKEY root, const std::wstring& path) {
    for (const Entry& entry : entries(path)) {
        if (const LSTATUS result = write(root, entry); result != ERROR_SUCCESS) {
            return result;
        }
    }
    return ERROR_SUCCESS;
}

LSTATUS unregisterBelow(HKEY root) {
    LSTATUS first = ERROR_SUCCESS;
    for (const CreatableClass& named : creatableClasses()) {
        keepFirst(first, RegDeleteTreeW(root, classKey(named).c_str()));
    }
    for (const InterfaceName& named : interfaces) {
        keepFirst(first, RegDeleteTreeW(root, interfaceKey(named).c_str()));
    }
    const std::wstring languageKey = libraryKey() + L"\\" + version + L"\\0";
    keepFirst(first, RegDeleteTreeW(root, (languageKey + L"\\" + wordSize).c_str()));
    if (!hasSubkeys(root, languageKey)) {
        keepFirst(first, RegDeleteTreeW(root, libraryKey().c_str()));
        for (const CreatableClass& named : creatableClasses()) {
            keepFirst(first, RegDeleteTreeW(root, programKey(named).c_str()));
        }
    }
    return first;
}

HRESULT registerLibrary(const std::wstring& path) noexcept {
    return guarded(IID_IUnknown, [&] {
        LSTATUS result = registerBelow(HKEY_LOCAL_MACHINE, path);
        if (result == ERROR_ACCESS_DENIED) {
            result = registerBelow(HKEY_CURRENT_USER, path);
        } else if (result == ERROR_SUCCESS) {
            result = unregisterBelow(HKEY_CURRENT_USER); // for this user it would hide what was written
        }
        return HRESULT_FROM_WIN32(result);
    });
}

HRESULT unregisterLibrary() noexcept {
    return guarded(IID_IUnknown, [] { return everywhere(unregisterBelow); });
}

} // namespace z7::com
