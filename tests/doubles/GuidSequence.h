#pragma once

#include "z7cashflow/support/guid.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace z7::cashflow::test {

/// Predictable "random" bytes: the n-th call returns the number n, so that the n-th GUID text is text(n).
class GuidSequence {
public:
    [[nodiscard]] GuidSource source() const {
        return [count = count_]() -> std::optional<std::array<std::uint8_t, 16>> {
            ++*count;
            std::array<std::uint8_t, 16> bytes{};
            for (std::size_t i = 0; i < 4; ++i) {
                bytes.at(i) = static_cast<std::uint8_t>(*count >> (8 * i));
            }
            return bytes;
        };
    }
    /// The number of GUIDs requested.
    [[nodiscard]] std::uint32_t count() const { return *count_; }
    /// The text of the n-th GUID, counted from 1.
    [[nodiscard]] static std::string text(std::uint32_t n) {
        std::array<char, 9> digits{};
        std::snprintf(digits.data(), digits.size(), "%08X", static_cast<unsigned>(n));
        return digits.data() + std::string(32, '0');
    }

private:
    std::shared_ptr<std::uint32_t> count_ = std::make_shared<std::uint32_t>(0);
};

} // namespace z7::cashflow::test
