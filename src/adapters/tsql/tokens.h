#pragma once

#include "adapters/tsql/Shape.h"
#include "adapters/tsql/TsqlReason.h"
#include "z7cashflow/support/visibility.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

/// The tokens of a Transact-SQL text, and the scanning shared by the lexer and the shape.
namespace z7::cashflow::tsql {

struct Token {
    enum class Kind { identifier, quotedIdentifier, literal, symbol, end };
    Kind kind = Kind::end;
    std::string_view text;  ///< as written; a quoted identifier includes its brackets
    std::string_view lower; ///< of an identifier in lower case; points into Tokens::lowered
    int literal = -1;       ///< index of the literal
};

/// The tokens of a text. They point into the text and into this object, which must not be moved.
struct Tokens {
    explicit Tokens(std::string_view text);
    Tokens(const Tokens&) = delete;
    Tokens& operator=(const Tokens&) = delete;

    std::vector<Token> tokens; ///< the last one is the end
    std::vector<Literal> literals;

private:
    std::string lowered_;
};

/// Classes of bytes for scanning.
enum class ByteClass : unsigned char { blank, name, digit, quote, bracket, dash, slash, dot, symbol, invalid };
constexpr std::array<ByteClass, 256> makeByteClasses() {
    std::array<ByteClass, 256> classes{};
    for (std::size_t i = 0; i < classes.size(); ++i) {
        const bool letter = (i >= 'a' && i <= 'z') || (i >= 'A' && i <= 'Z') || i >= 0x80;
        classes[i] = letter                 ? ByteClass::name
                     : i >= '0' && i <= '9' ? ByteClass::digit
                     : i < 0x20 || i == 127 ? ByteClass::invalid
                                            : ByteClass::symbol;
    }
    for (const char c : {'_', '@', '#', '$'}) {
        classes[static_cast<unsigned char>(c)] = ByteClass::name;
    }
    for (const char c : {' ', '\t', '\r', '\n', '\f', '\v'}) {
        classes[static_cast<unsigned char>(c)] = ByteClass::blank;
    }
    classes['\''] = ByteClass::quote;
    classes['['] = ByteClass::bracket;
    classes['"'] = ByteClass::bracket;
    classes['-'] = ByteClass::dash;
    classes['/'] = ByteClass::slash;
    classes['.'] = ByteClass::dot;
    return classes;
}
inline constexpr std::array<ByteClass, 256> byteClasses = makeByteClasses();
[[nodiscard]] inline ByteClass byteClass(char c) noexcept { return byteClasses[static_cast<unsigned char>(c)]; }

/// Each of these takes a text and the position where an element begins, and returns the position after it.
[[nodiscard]] inline std::size_t skipBlanks(std::string_view text, std::size_t at) noexcept {
    while (at < text.size() && byteClass(text[at]) == ByteClass::blank) {
        ++at;
    }
    return at;
}
[[nodiscard]] inline std::size_t skipName(std::string_view text, std::size_t at) noexcept {
    while (at < text.size() && (byteClass(text[at]) == ByteClass::name || byteClass(text[at]) == ByteClass::digit)) {
        ++at;
    }
    return at;
}
/// A comment, if one begins here; otherwise the same position. Error 113 if it is not closed, 102 for a byte that
/// is not allowed in a statement.
[[nodiscard]] std::size_t skipComment(std::string_view text, std::size_t at);
/// A name in brackets or double quotes. Error 105 if it is not closed, 102 for a byte that is not allowed in a
/// statement.
[[nodiscard]] std::size_t skipQuotedName(std::string_view text, std::size_t at);
/// A number begins with a digit, or with a point followed by a digit.
[[nodiscard]] std::size_t scanNumber(std::string_view text, std::size_t at, Literal& literal) noexcept;
/// A text begins at its quote, or at "from" if it has the prefix N.
[[nodiscard]] std::size_t scanText(std::string_view text, std::size_t from, std::size_t quote, Literal& literal);

/// Raises "Incorrect syntax near '\x1F'." for a byte that is not allowed in a statement.
[[noreturn]] void raiseInvalidByte(char byte);
/// "Incorrect syntax near 'x'."
[[noreturn]] void raiseSyntaxError(std::string_view near);
[[noreturn]] void raiseError(TsqlReason reason, std::vector<std::string> arguments = {},
                             const char* sqlState = "42000");

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
