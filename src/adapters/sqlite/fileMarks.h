#pragma once

#include <cstdint>

namespace z7::cashflow::sqlite {

/// What the files of an embedded database carry as their application number, so that no other file is taken for one.
inline constexpr std::int64_t accountMark = 0x5A374341; // "Z7CA"
inline constexpr std::int64_t systemMark = 0x5A375359;  // "Z7SY"

} // namespace z7::cashflow::sqlite
