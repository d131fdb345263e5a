#include "adapters/odbc/utf8.h"

#include <cstdint>

namespace z7::cashflow::odbc {
namespace {

/// The length of the character that begins at a position, 0 if there is none.
std::size_t characterLength(std::string_view text, std::size_t at) noexcept {
    const auto byte = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : static_cast<unsigned char>(0);
    };
    const unsigned char first = byte(at);
    if (first < 0x80) {
        return 1;
    }
    const std::size_t length = first >= 0xC2 && first < 0xE0   ? 2
                               : first >= 0xE0 && first < 0xF0 ? 3
                               : first >= 0xF0 && first < 0xF5 ? 4
                                                               : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    const unsigned char second = byte(at + 1);
    const bool tooLongForm = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second >= 0xA0;
    const bool tooLarge = first == 0xF4 && second >= 0x90;
    return tooLongForm || surrogate || tooLarge ? 0 : length;
}

void append(std::string& text, std::uint32_t code) {
    const auto tail = [&text](std::uint32_t bits) { text += static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | (code >> 6U));
        tail(code);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0U | (code >> 12U));
        tail(code >> 6U);
        tail(code);
    } else {
        text += static_cast<char>(0xF0U | (code >> 18U));
        tail(code >> 12U);
        tail(code >> 6U);
        tail(code);
    }
}

} // namespace

std::size_t findBadUtf8(std::string_view text) noexcept {
    std::size_t at = 0;
    while (at < text.size()) {
        if (static_cast<unsigned char>(text[at]) < 0x80) { // most characters are
            ++at;
            continue;
        }
        const std::size_t length = characterLength(text, at);
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return std::string_view::npos;
}

std::u16string widened(std::string_view utf8) {
    std::u16string wide;
    wide.reserve(utf8.size());
    std::size_t at = 0;
    while (at < utf8.size()) {
        const std::size_t length = characterLength(utf8, at);
        if (length == 0) {
            wide += u'\xFFFD';
            ++at;
            continue;
        }
        constexpr unsigned leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
        std::uint32_t code = static_cast<unsigned char>(utf8[at]) & leadBits[length];
        for (std::size_t i = 1; i < length; ++i) {
            code = (code << 6U) | (static_cast<unsigned char>(utf8[at + i]) & 0x3FU);
        }
        if (code >= 0x10000) {
            code -= 0x10000;
            wide += static_cast<char16_t>(0xD800U + (code >> 10U));
            code = 0xDC00U + (code & 0x3FFU);
        }
        wide += static_cast<char16_t>(code);
        at += length;
    }
    return wide;
}

std::string narrowed(std::u16string_view utf16) {
    std::string text;
    text.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        std::uint32_t code = utf16[i];
        const bool high = code >= 0xD800 && code < 0xDC00;
        if (high && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] < 0xE000) {
            code = 0x10000U + ((code - 0xD800U) << 10U) + (utf16[i + 1] - 0xDC00U);
            ++i;
        } else if (code >= 0xD800 && code < 0xE000) {
            code = 0xFFFD;
        }
        append(text, code);
    }
    return text;
}

} // namespace z7::cashflow::odbc
