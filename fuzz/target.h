#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

/// Runs one input. A finding ends the process: by a sanitizer, an uncaught exception, or a violated property.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace z7::cashflow::fuzz {

/// Ends the process, with the reason on standard error, unless a property holds.
inline void require(bool holds, std::string_view property) {
    if (!holds) {
        std::cerr << "does not hold: " << property << std::endl;
        std::abort();
    }
}

/// An input as text.
inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return size == 0 ? std::string_view() : std::string_view(reinterpret_cast<const char*>(data), size);
}

} // namespace z7::cashflow::fuzz
