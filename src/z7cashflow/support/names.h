#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The length in bytes of the name with which a text begins, 0 if there is none. A name is either regular (a letter
/// of any script or "_" followed by letters, decimal digits, "_", "$", "#" and "@") or enclosed in brackets, where
/// a closing bracket is doubled. A temporary table of a session begins with "#". A name has at most 128 characters
/// and contains no control characters or invalid UTF-8.
[[nodiscard]] std::size_t nameLength(std::string_view text);

/// The length in bytes of the table name with which a text begins, 0 if there is none: "t", "owner.t",
/// "base.owner.t" or "base..t".
[[nodiscard]] std::size_t tableNameLength(std::string_view text);

} // namespace z7::cashflow

Z7_PUBLIC_END
