#include "host/cli/Settings.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/Failure.h"
#include "host/cli/environment.h"
#include "host/cli/exitCode.h"
#include "host/cli/readText.h"

#include <toml++/toml.h>

#include <algorithm>
#include <functional>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestSettings = std::size_t{64} << 10U;

/// Each dot of a dotted key nests a table, and the parser recurses into tables. A file with more dots than this is
/// refused before it is parsed.
constexpr std::ptrdiff_t mostDots = 500;

bool isTooDeep(std::string_view text) {
    std::ptrdiff_t dots = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        const std::size_t first = line.find_first_not_of(" \t");
        if (first != std::string_view::npos && line[first] != '#') {
            dots += std::count(line.begin(), line.end(), '.');
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return dots > mostDots;
}

[[noreturn]] void fail(const std::string& shownPath, std::size_t line, Language language, HostText reason,
                       const std::vector<std::string>& arguments) {
    throw Failure(exit_code::usage, HostText::settingsUnreadable,
                  {shownPath, std::to_string(line), hostText(language, reason, arguments)});
}

/// The setting of a key that takes any text; null for any other key.
std::optional<std::string>* textSetting(Settings& settings, const std::string& name) {
    if (name == "account") {
        return &settings.account;
    }
    if (name == "user") {
        return &settings.user;
    }
    if (name == "operator") {
        return &settings.operatorName;
    }
    return name == "accounting_system" ? &settings.accountingSystem : nullptr;
}

/// Stores the value of one key. refuse raises a Failure.
void take(Settings& settings, const std::string& name, const toml::node& node,
          const std::function<void(HostText, const std::vector<std::string>&)>& refuse) {
    if (name == "guard") {
        settings.guard = node.value_exact<bool>();
        if (!settings.guard) {
            refuse(HostText::settingsNoTruth, {name});
        }
        return;
    }
    if (name == "statement_groups") {
        const toml::table* const groups = node.as_table();
        if (groups == nullptr) {
            refuse(HostText::settingsBadGroups, {name});
            return;
        }
        for (const auto& [code, groupNode] : *groups) {
            const auto groupName = groupNode.value_exact<std::string>();
            if (!groupName || code.str().empty()) {
                refuse(HostText::settingsBadGroups, {name});
            }
            settings.statementGroups[std::string(code.str())] = *groupName;
        }
        return;
    }
    std::optional<std::string>* const target = textSetting(settings, name);
    if (target == nullptr && name != "language") {
        refuse(HostText::settingsBadKey, {name});
    }
    const auto value = node.value_exact<std::string>();
    if (!value) {
        refuse(HostText::settingsBadType, {name});
    }
    if (target != nullptr) {
        *target = *value;
    } else if (settings.language = readLanguage(*value); !settings.language) {
        refuse(HostText::settingsBadValue, {name, *value});
    }
}

} // namespace

Settings readSettings(std::string_view text, const std::string& shownPath, Language language) {
    if (isTooDeep(text)) {
        throw Failure(exit_code::usage, HostText::settingsTooDeep, {shownPath});
    }
    toml::table table;
    try {
        table = toml::parse(text);
    } catch (const toml::parse_error& error) {
        fail(shownPath, error.source().begin.line, language, HostText::settingsNoToml, {});
    }
    Settings settings;
    for (const auto& [key, node] : table) {
        const std::size_t line = node.source().begin.line;
        take(settings, std::string(key.str()), node, [&](HostText reason, const std::vector<std::string>& arguments) {
            fail(shownPath, line, language, reason, arguments);
        });
    }
    return settings;
}

Settings readSettingsFile(const std::filesystem::path& path, Language language) {
    const TextRead read = readText(path, longestSettings);
    if (read.outcome == TextRead::Outcome::tooLong) {
        throw Failure(exit_code::usage, HostText::settingsTooLong, {sqlite::utf8Of(path)});
    }
    if (read.outcome == TextRead::Outcome::unreadable) {
        throw Failure(exit_code::usage, HostText::settingsMissing, {sqlite::utf8Of(path)});
    }
    return readSettings(read.text, sqlite::utf8Of(path), language);
}

std::optional<std::filesystem::path> defaultSettingsPath() {
    const auto folder = settingsFolder();
    return folder ? std::optional(*folder / "z7cf" / "settings.toml") : std::nullopt;
}

} // namespace z7::cashflow::host
