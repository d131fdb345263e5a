#include "host/cli/Settings.h"

#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"

#include <toml++/toml.h>

#include <cstdlib>
#include <fstream>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestSettings = std::size_t{1} << 20;

[[noreturn]] void fail(const std::string& shownPath, std::size_t line, Language language, HostText reason,
                       const std::vector<std::string>& arguments) {
    throw Failure(exitCode::usage, HostText::settingsUnreadable,
                  {shownPath, std::to_string(line), hostText(language, reason, arguments)});
}

} // namespace

Settings readSettings(std::string_view text, const std::string& shownPath, Language language) {
    toml::table table;
    try {
        table = toml::parse(text);
    } catch (const toml::parse_error& error) {
        throw Failure(exitCode::usage, HostText::settingsUnreadable,
                      {shownPath, std::to_string(error.source().begin.line), std::string(error.description())});
    }
    Settings settings;
    for (const auto& [key, node] : table) {
        const std::string name(key.str());
        const std::size_t line = node.source().begin.line;
        std::optional<std::string>* target = name == "account"             ? &settings.account
                                             : name == "user"              ? &settings.user
                                             : name == "operator"          ? &settings.operatorName
                                             : name == "accounting_system" ? &settings.accountingSystem
                                                                           : nullptr;
        if (name == "guard") {
            settings.guard = node.value_exact<bool>();
            if (!settings.guard) {
                fail(shownPath, line, language, HostText::settingsNoTruth, {name});
            }
            continue;
        }
        if (target == nullptr && name != "language") {
            fail(shownPath, line, language, HostText::settingsBadKey, {name});
        }
        const auto value = node.value_exact<std::string>();
        if (!value) {
            fail(shownPath, line, language, HostText::settingsBadType, {name});
        }
        if (target != nullptr) {
            *target = *value;
        } else if (settings.language = readLanguage(*value); !settings.language) {
            fail(shownPath, line, language, HostText::settingsBadValue, {name, *value});
        }
    }
    return settings;
}

Settings readSettingsFile(const std::filesystem::path& path, Language language) {
    std::error_code ignored;
    std::ifstream file;
    if (std::filesystem::is_regular_file(path, ignored)) {
        file.open(path, std::ios::binary);
    }
    if (!file.is_open()) {
        throw Failure(exitCode::usage, HostText::settingsMissing, {path.string()});
    }
    std::string text(longestSettings + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (file.bad() || text.size() > longestSettings) {
        throw Failure(exitCode::usage, HostText::settingsMissing, {path.string()});
    }
    return readSettings(text, path.string(), language);
}

std::optional<std::filesystem::path> defaultSettingsPath() {
    // The host starts no thread, so nothing changes the environment meanwhile.
    const char* configHome = std::getenv("XDG_CONFIG_HOME"); // NOLINT(concurrency-mt-unsafe)
    if (configHome != nullptr && *configHome == '/') {
        return std::filesystem::path(configHome) / "z7cf" / "settings.toml";
    }
    const char* home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe)
    if (home != nullptr && *home != '\0') {
        return std::filesystem::path(home) / ".config" / "z7cf" / "settings.toml";
    }
    return std::nullopt;
}

} // namespace z7::cashflow::host
