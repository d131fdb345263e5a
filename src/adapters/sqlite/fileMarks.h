#pragma once

#include <cstdint>

namespace z7::cashflow::sqlite {

/// The application numbers of the files of an embedded database, by which they are distinguished from other files.
inline constexpr std::int64_t accountMark = 0x5A374341; // "Z7CA"
inline constexpr std::int64_t systemMark = 0x5A375359;  // "Z7SY"

} // namespace z7::cashflow::sqlite
