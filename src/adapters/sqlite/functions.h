#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// Compares by the collation z7_text, which ignores letter case and trailing blanks. Negative, 0 or positive.
[[nodiscard]] int compareTexts(std::string_view a, std::string_view b);

/// Whether a text matches a pattern of "%", "_", "[set]" and "[^set]", without regard to letter case.
[[nodiscard]] bool isLike(std::string_view text, std::string_view pattern);

/// Prepares a bare session of the database library for the schema: the text collation, the functions like and sum,
/// and the function that returns the session's year. Raises an Error if the library would lose rows in joins of
/// texts. The caller keeps the handle. Connection does this itself; this is for programs that use the file without
/// a Connection, such as benchmarks.
void prepareSession(sqlite3* handle, std::optional<std::int16_t> year);

} // namespace z7::cashflow::sqlite
