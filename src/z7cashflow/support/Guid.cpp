#include "z7cashflow/support/Guid.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/Format.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string_view>

namespace z7::cashflow {

namespace {

std::string hexadecimal(std::uint32_t value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(text.begin(), digits[value % 16]);
        value /= 16;
    } while (value != 0);
    return text;
}

std::string assemble(const std::array<std::uint8_t, 16>& bytes) {
    // The text is laid out over 20 bytes, of which a GUID fills 16; the rest stays zero.
    std::array<std::uint8_t, 20> area{};
    std::copy(bytes.begin(), bytes.end(), area.begin());

    std::string text;
    for (std::size_t word = 0; word < 3; ++word) {
        std::uint32_t value = 0;
        for (std::size_t byte = 4; byte-- > 0;) {
            value = value << 8U | area[word * 4 + byte];
        }
        const std::string digits = hexadecimal(value);
        text += std::string(8 - digits.size(), '0') + digits;
    }
    for (std::size_t byte = 12; byte < area.size(); ++byte) {
        // A lone digit gets its zero; a lone letter is no number and stays one character.
        text += format(hexadecimal(area[byte]), "00");
    }
    return text;
}

} // namespace

GuidSource systemGuidSource() {
    auto opened = std::make_shared<std::unique_ptr<std::random_device>>();
    return [opened]() -> std::optional<std::array<std::uint8_t, 16>> {
        std::array<std::uint8_t, 16> bytes{};
        try {
            if (!*opened) {
                *opened = std::make_unique<std::random_device>();
            }
            for (std::size_t at = 0; at < bytes.size(); at += 4) {
                const std::uint32_t word = (**opened)();
                for (std::size_t byte = 0; byte < 4; ++byte) {
                    bytes[at + byte] = static_cast<std::uint8_t>(word >> (8 * byte));
                }
            }
        } catch (const std::exception&) { // no source of randomness is told as such, not as a failure
            return std::nullopt;
        }
        // Version 4, variant 1, as the operating system marks its random identifiers.
        bytes[7] = static_cast<std::uint8_t>((bytes[7] & 0x0FU) | 0x40U);
        bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);
        return bytes;
    };
}

std::string guidText(const GuidSource& source) {
    std::string text;
    ignoringErrors([&] {
        if (const auto bytes = source ? source() : std::nullopt) {
            text = assemble(*bytes);
        }
    });
    return text;
}

} // namespace z7::cashflow
