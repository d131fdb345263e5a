#include "z7cashflow/support/guid.h"

#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string_view>

namespace z7::cashflow {

namespace {

constexpr std::string_view hexadecimal = "0123456789ABCDEF";

void appendWord(std::string& text, std::uint32_t value) {
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += hexadecimal[value >> static_cast<unsigned>(shift) & 0xFU];
    }
}

// A lone digit is a number and gets its leading zero; a lone letter is none and stays one character.
void appendByte(std::string& text, std::uint8_t value) {
    if (value < 10 || value > 15) {
        text += hexadecimal[value >> 4U];
    }
    text += hexadecimal[value & 0xFU];
}

std::string assemble(const std::array<std::uint8_t, 16>& bytes) {
    // The text is laid out over 20 bytes, of which a GUID fills 16; the rest stays zero.
    std::array<std::uint8_t, 20> area{};
    std::copy(bytes.begin(), bytes.end(), area.begin());

    std::string text;
    text.reserve(40);
    for (std::size_t word = 0; word < 3; ++word) {
        std::uint32_t value = 0;
        for (std::size_t byte = 4; byte-- > 0;) {
            value = value << 8U | area[word * 4 + byte];
        }
        appendWord(text, value);
    }
    for (std::size_t byte = 12; byte < area.size(); ++byte) {
        appendByte(text, area[byte]);
    }
    return text;
}

std::mt19937_64 seededGenerator() {
    std::random_device device;
    std::array<std::uint32_t, 8> entropy{};
    std::generate(entropy.begin(), entropy.end(), [&] { return device(); });
    std::seed_seq seed(entropy.begin(), entropy.end());
    return std::mt19937_64(seed);
}

} // namespace

GuidSource systemGuidSource() {
    auto generator = std::make_shared<std::optional<std::mt19937_64>>();
    return [generator]() -> std::optional<std::array<std::uint8_t, 16>> {
        try {
            if (!*generator) {
                *generator = seededGenerator();
            }
        } catch (const std::exception&) { // the caller reports that no randomness is available
            return std::nullopt;
        }
        std::array<std::uint8_t, 16> bytes{};
        for (std::size_t at = 0; at < bytes.size(); at += 8) {
            const std::uint64_t word = (**generator)();
            for (std::size_t byte = 0; byte < 8; ++byte) {
                bytes[at + byte] = static_cast<std::uint8_t>(word >> (8 * byte));
            }
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
