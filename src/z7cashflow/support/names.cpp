#include "z7cashflow/support/names.h"

#include <utf8proc.h>

#include <algorithm>
#include <string_view>

namespace z7::cashflow {
namespace {

constexpr std::size_t mostCharacters = 128;

struct Character {
    utf8proc_int32_t code = -1; ///< negative for the end of the text and for broken UTF-8
    std::size_t size = 0;
};

Character characterAt(std::string_view text, std::size_t at) {
    Character character;
    if (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) {
        return {static_cast<unsigned char>(text[at]), 1};
    }
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    const auto size = utf8proc_iterate(bytes + at, static_cast<utf8proc_ssize_t>(text.size() - at), &character.code);
    character.size = size > 0 ? static_cast<std::size_t>(size) : 0;
    return character;
}

bool isLetter(utf8proc_int32_t code) {
    if (code < 0x80) {
        return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z');
    }
    const utf8proc_category_t category = utf8proc_category(code);
    return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO;
}

bool isNameStart(utf8proc_int32_t code) { return code == '_' || isLetter(code); }

bool isNamePart(utf8proc_int32_t code) {
    constexpr std::string_view signs = "$#@";
    return isNameStart(code) || utf8proc_category(code) == UTF8PROC_CATEGORY_ND ||
           (code > 0 && code < 0x80 && signs.find(static_cast<char>(code)) != std::string_view::npos);
}

// Whether a text is a name of ASCII letters and "_", as nearly all are.
bool isPlainName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    });
}

std::size_t regularLength(std::string_view text) {
    std::size_t at = text.starts_with("##") ? 2 : text.starts_with('#') ? 1 : 0;
    std::size_t count = at;
    for (bool first = true;; first = false) {
        const Character character = characterAt(text, at);
        if (character.code < 0 || !(first ? isNameStart(character.code) : isNamePart(character.code))) {
            // A name that ends within a broken character is none.
            const bool broken = at < text.size() && character.code < 0;
            return first || broken || count > mostCharacters ? 0 : at;
        }
        at += character.size;
        ++count;
    }
}

std::size_t bracketedLength(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 1; at < text.size(); ++count) {
        const Character character = characterAt(text, at);
        if (character.code < 0 || utf8proc_category(character.code) == UTF8PROC_CATEGORY_CC) {
            return 0;
        }
        at += character.size;
        if (character.code == ']') {
            if (!text.substr(at).starts_with(']')) {
                return count == 0 || count > mostCharacters ? 0 : at;
            }
            ++at; // its double
        }
    }
    return 0;
}

} // namespace

std::size_t nameLength(std::string_view text) {
    if (text.size() <= mostCharacters && isPlainName(text)) {
        return text.size();
    }
    return text.starts_with('[') ? bracketedLength(text) : regularLength(text);
}

std::size_t tableNameLength(std::string_view text) {
    constexpr int mostParts = 3;
    std::size_t length = nameLength(text);
    for (int part = 1; length != 0 && part < mostParts && text.substr(length).starts_with('.'); ++part) {
        std::size_t dots = 1;
        if (part == 1 && text.substr(length).starts_with("..")) {
            dots = 2;
            ++part;
        }
        const std::size_t next = nameLength(text.substr(length + dots));
        if (next == 0) {
            return 0;
        }
        length += dots + next;
    }
    return length;
}

} // namespace z7::cashflow
