#pragma once

#include <filesystem>
#include <string_view>

namespace z7::cashflow::host {

/// Failure (usage) if there is anything of that name.
void requireNewFile(const std::filesystem::path& file);

/// Writes a file that is not there yet. Failure (usage) if something of that name is, (database) if it cannot be
/// written; a file that was begun is taken away then.
void writeNewFile(const std::filesystem::path& file, std::string_view text);

} // namespace z7::cashflow::host
