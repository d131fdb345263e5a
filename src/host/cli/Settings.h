#pragma once

#include "host/text/Language.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// The contents of a settings file; empty optionals for keys that it leaves out. See GlobalOptions for their
/// meaning.
struct Settings {
    std::optional<std::string> account;
    std::optional<std::string> user;
    std::optional<std::string> operatorName;
    std::optional<std::string> accountingSystem;
    std::optional<Language> language;
    std::optional<bool> guard;
    std::map<std::string, std::string> statementGroups;
};

/// Reads TOML text with the keys account, user, operator, accounting_system and language (texts), guard (true or
/// false) and statement_groups (a table of texts). Failure (usage) for text that is not TOML or nests too deeply,
/// an unknown key, or an invalid value; shownPath is the file's name in the message, in the given language.
[[nodiscard]] Settings readSettings(std::string_view text, const std::string& shownPath, Language language);

/// Reads a settings file. Failure (usage) if it cannot be read, is longer than 64 KiB, or for any reason of
/// readSettings.
[[nodiscard]] Settings readSettingsFile(const std::filesystem::path& path, Language language);

/// The default location of the user's settings file: z7cf/settings.toml in the folder of settings, which is
/// XDG_CONFIG_HOME or .config in the home folder, on Windows APPDATA. Empty if none is known.
[[nodiscard]] std::optional<std::filesystem::path> defaultSettingsPath();

} // namespace z7::cashflow::host
