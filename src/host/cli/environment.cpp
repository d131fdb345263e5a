#include "host/cli/environment.h"

#include <cstdlib>

namespace z7::cashflow::host {

namespace fs = std::filesystem;

std::optional<std::string> environmentVariable(const std::string& name) {
    // The host changes nothing in the environment.
    const char* value = std::getenv(name.c_str()); // NOLINT(concurrency-mt-unsafe)
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::optional<fs::path> settingsFolder() {
    const auto configHome = environmentVariable("XDG_CONFIG_HOME");
    if (configHome && configHome->starts_with('/')) {
        return fs::path(*configHome);
    }
    const auto home = environmentVariable("HOME");
    return home && !home->empty() ? std::optional(fs::path(*home) / ".config") : std::nullopt;
}

bool isSystemChinese() { return false; }

bool isOpenToOthers(const fs::path& file) {
    std::error_code failure;
    const fs::perms rights = fs::status(file, failure).permissions();
    return !failure && (rights & (fs::perms::others_read | fs::perms::others_write)) != fs::perms::none;
}

} // namespace z7::cashflow::host
