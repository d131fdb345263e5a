#include "adapters/terminal/printable.h"

#include <utf8proc.h>

#include <algorithm>

namespace z7::cashflow::terminal {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";
constexpr utf8proc_int32_t joiner = 0x200D;
constexpr std::size_t wide = 2;

struct Character {
    utf8proc_int32_t codePoint = -1; ///< -1 for a byte that does not begin a valid character
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
    case UTF8PROC_CATEGORY_CC: // control characters, including escape
    case UTF8PROC_CATEGORY_CF: // invisible marks, including those of writing direction
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

bool isPictograph(utf8proc_int32_t codePoint) noexcept {
    return codePoint >= 0 && utf8proc_get_property(codePoint)->boundclass == UTF8PROC_BOUNDCLASS_EXTENDED_PICTOGRAPHIC;
}

/// Iterates over the code points of a text and recognizes where user-perceived characters end.
class SignWalk {
public:
    explicit SignWalk(std::string_view text) noexcept : text_(text), character_(characterAt(text, 0)) {}
    [[nodiscard]] bool atEnd() const noexcept { return at_ >= text_.size(); }
    [[nodiscard]] std::size_t at() const noexcept { return at_; }
    [[nodiscard]] Character character() const noexcept { return character_; }
    /// Moves to the next code point; true if a new character begins with it.
    bool advance() noexcept {
        const utf8proc_int32_t last = character_.codePoint;
        at_ += character_.bytes;
        if (atEnd()) {
            return true;
        }
        character_ = characterAt(text_, at_);
        if (last < 0 || character_.codePoint < 0) {
            state_ = 0;
            return true;
        }
        return utf8proc_grapheme_break_stateful(last, character_.codePoint, &state_) != 0;
    }
    /// Whether the code point joins the pictographs before and after it.
    [[nodiscard]] bool joins() const noexcept {
        SignWalk next = *this;
        return character_.codePoint == joiner && !next.advance() && isPictograph(next.character_.codePoint);
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
    Character character_;
    utf8proc_int32_t state_ = 0;
};

/// The first character of a text that is not empty, with its columns; characters joined into one take the columns
/// of one.
struct Sign {
    std::size_t bytes = 0;
    std::size_t columns = 0;
};

Sign firstSign(std::string_view text) noexcept {
    SignWalk walk(text);
    std::size_t columns = 0;
    do {
        columns += columnsOf(walk.character().codePoint);
    } while (!walk.advance());
    return {walk.at(), std::min(columns, wide)};
}

} // namespace

std::string printable(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    for (SignWalk walk(text); !walk.atEnd(); walk.advance()) {
        const utf8proc_int32_t codePoint = walk.character().codePoint;
        if (text.substr(walk.at(), 2) == "\r\n") {
            continue; // the line feed after it becomes the blank
        }
        if (codePoint == '\n' || codePoint == '\r' || codePoint == '\t') {
            shown += ' ';
        } else if (mayBeShown(codePoint) || walk.joins()) {
            shown += text.substr(walk.at(), walk.character().bytes);
        } else {
            shown += replacementCharacter;
        }
    }
    return shown;
}

std::string_view firstCharacter(std::string_view text) {
    return text.empty() ? text : text.substr(0, firstSign(text).bytes);
}

std::size_t displayWidth(std::string_view text) {
    std::size_t columns = 0;
    while (!text.empty()) {
        const Sign sign = firstSign(text);
        columns += sign.columns;
        text.remove_prefix(sign.bytes);
    }
    return columns;
}

std::string_view fitToWidth(std::string_view text, std::size_t columns) {
    std::size_t at = 0;
    while (at < text.size()) {
        const Sign sign = firstSign(text.substr(at));
        if (sign.columns > columns) {
            break;
        }
        columns -= sign.columns;
        at += sign.bytes;
    }
    return text.substr(0, at);
}

} // namespace z7::cashflow::terminal
