#include "host/cli/environment.h"

#include "host/windows/wideText.h"

#include <windows.h>

namespace z7::cashflow::host {

namespace {

std::optional<std::wstring> wideVariable(const std::wstring& name) {
    std::wstring value;
    for (DWORD needed = GetEnvironmentVariableW(name.c_str(), nullptr, 0); needed > value.size();) {
        value.resize(needed); // with its ending zero
        needed = GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
        if (needed < value.size()) {
            value.resize(needed);
            return value;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> environmentVariable(const std::string& name) {
    const auto value = wideVariable(wideText(name));
    return value ? std::optional(utf8Text(*value)) : std::nullopt;
}

std::optional<std::filesystem::path> settingsFolder() {
    const auto folder = wideVariable(L"APPDATA");
    return folder && !folder->empty() ? std::optional<std::filesystem::path>(*folder) : std::nullopt;
}

bool isSystemChinese() { return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_CHINESE; }

bool isOpenToOthers(const std::filesystem::path& /*file*/) {
    return false; // rights are lists with inheritance, and a user's folders are closed to other users
}

} // namespace z7::cashflow::host
