#include "adapters/terminal/printable.h"

#include <utf8proc.h>

#include <algorithm>

namespace z7::cashflow::terminal {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

struct Character {
    utf8proc_int32_t codePoint = -1; ///< -1 for a byte that begins no valid character
    std::size_t bytes = 1;
};

Character characterAt(std::string_view text, std::size_t position) noexcept {
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data() + position);
    utf8proc_int32_t codePoint = -1;
    const utf8proc_ssize_t length =
        utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size() - position), &codePoint);
    return length > 0 ? Character{codePoint, static_cast<std::size_t>(length)} : Character{};
}

bool mayBeShown(utf8proc_int32_t codePoint) noexcept {
    if (codePoint < 0) {
        return false;
    }
    switch (utf8proc_category(codePoint)) {
    case UTF8PROC_CATEGORY_CC: // control characters, the escape among them
    case UTF8PROC_CATEGORY_CF: // invisible marks, those of writing direction among them
    case UTF8PROC_CATEGORY_CS:
    case UTF8PROC_CATEGORY_CN:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
        return false;
    default:
        return true;
    }
}

std::size_t columnsOf(utf8proc_int32_t codePoint) noexcept {
    return codePoint < 0 ? 1 : static_cast<std::size_t>(std::max(0, utf8proc_charwidth(codePoint)));
}

} // namespace

std::string printable(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (text.substr(at, 2) == "\r\n") {
            shown += ' ';
            at += 2;
            continue;
        }
        const Character character = characterAt(text, at);
        if (character.codePoint == '\n' || character.codePoint == '\r' || character.codePoint == '\t') {
            shown += ' ';
        } else if (mayBeShown(character.codePoint)) {
            shown += text.substr(at, character.bytes);
        } else {
            shown += replacementCharacter;
        }
        at += character.bytes;
    }
    return shown;
}

std::size_t displayWidth(std::string_view text) {
    std::size_t columns = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = characterAt(text, at);
        columns += columnsOf(character.codePoint);
        at += character.bytes;
    }
    return columns;
}

std::string_view fitToWidth(std::string_view text, std::size_t columns) {
    std::size_t used = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        const Character character = characterAt(text, at);
        used += columnsOf(character.codePoint);
        if (used > columns) {
            break;
        }
        at += character.bytes;
    }
    return text.substr(0, at);
}

} // namespace z7::cashflow::terminal
