#pragma once

#include "z7cashflow/support/visibility.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Returns 16 new random bytes, or nothing if none are available. Replaceable, so that a test or a host can
/// make texts that repeat.
using GuidSource = std::function<std::optional<std::array<std::uint8_t, 16>>()>;

/// A generator that is seeded with 256 random bits of the operating system at its first use. It produces unique
/// names and is not suitable for secrets.
[[nodiscard]] GuidSource systemGuidSource();

/// A text of upper-case hexadecimal digits, new each time, that is safe as a part of a table's name. It has at most 40
/// characters and always ends in eight zeros. Empty if the source fails or raises an Error.
[[nodiscard]] std::string guidText(const GuidSource& source);

} // namespace z7::cashflow

Z7_PUBLIC_END
