#pragma once

#include <cstddef>
#include <string_view>

namespace z7::cashflow {

/// The length in bytes of the name that a text begins with, 0 if it begins with none. A name is regular, a letter of
/// any script or "_" before letters, decimal digits, "_", "$", "#" and "@", or is enclosed in brackets, where a closing
/// one is doubled. A table of a session begins with "#". No name is longer than 128 characters, holds a control
/// character or is broken UTF-8.
[[nodiscard]] std::size_t nameLength(std::string_view text);

/// The length in bytes of the name of a table that a text begins with, 0 if it begins with none: "t", "owner.t",
/// "base.owner.t" or "base..t".
[[nodiscard]] std::size_t tableNameLength(std::string_view text);

} // namespace z7::cashflow
