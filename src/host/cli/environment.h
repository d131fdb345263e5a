#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// What the program asks the system about its user.
namespace z7::cashflow::host {

/// A variable of the environment in UTF-8; nothing if it is not set.
[[nodiscard]] std::optional<std::string> environmentVariable(const std::string& name);

/// The folder in which programs keep the user's settings; nothing if the environment names none.
[[nodiscard]] std::optional<std::filesystem::path> settingsFolder();

/// Whether the system itself, apart from variables of the environment, addresses the user in Chinese. False where there
/// are only variables.
[[nodiscard]] bool isSystemChinese();

/// Whether users other than the owner may read or write a file. False if that is not known.
[[nodiscard]] bool isOpenToOthers(const std::filesystem::path& file);

} // namespace z7::cashflow::host
