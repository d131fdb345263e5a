#pragma once

#include "host/text/Language.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// What a settings file says; nothing for what it leaves out. See GlobalOptions for the meaning.
struct Settings {
    std::optional<std::string> account;
    std::optional<std::string> user;
    std::optional<std::string> operatorName;
    std::optional<std::string> accountingSystem;
    std::optional<Language> language;
    std::optional<bool> guard;
    std::map<std::string, std::string> statementGroups;
};

/// Reads TOML text with the keys account, user, operator, accounting_system and language, all texts, guard, which is
/// true or false, and statement_groups, a table of texts. Failure (usage) for text that is not TOML or nests too deep,
/// an unknown key or an unfit value; shownPath names the file in it, in the language given.
[[nodiscard]] Settings readSettings(std::string_view text, const std::string& shownPath, Language language);

/// Reads a settings file. Failure (usage) if it cannot be read or is longer than 64 KiB, or as readSettings.
[[nodiscard]] Settings readSettingsFile(const std::filesystem::path& path, Language language);

/// Where the user's settings file is if none is named: z7cf/settings.toml below XDG_CONFIG_HOME, or below .config in
/// the home folder. Nothing where neither is known.
[[nodiscard]] std::optional<std::filesystem::path> defaultSettingsPath();

} // namespace z7::cashflow::host
