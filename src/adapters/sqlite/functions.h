#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// The order of the collation z7_text: letter case and blanks at the end do not count. Negative, 0 or positive.
[[nodiscard]] int compareTexts(std::string_view a, std::string_view b);

/// Whether a text fits a pattern of "%", "_", "[set]" and "[^set]", without regard to letter case.
[[nodiscard]] bool isLike(std::string_view text, std::string_view pattern);

/// Gives a bare session of the database library what the schema needs: the text collation, the functions like and sum,
/// and the function that returns the session's year. An Error says that the library would lose rows of joins on texts.
/// The handle stays the caller's. Connection does this by itself; it is here for programs that look at the file without
/// a Connection, such as benchmarks.
void prepareSession(sqlite3* handle, std::optional<std::int16_t> year);

} // namespace z7::cashflow::sqlite
