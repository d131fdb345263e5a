#include "adapters/tsql/tokens.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::tsql {
namespace {

// Bytes that are not allowed outside the texts of a statement are refused everywhere, because in the key of a shape
// some of them represent literals.
std::size_t readableUpTo(std::string_view text, std::size_t from, std::size_t end) {
    for (; from < end; ++from) {
        if (byteClass(text[from]) == ByteClass::invalid) {
            raiseInvalidByte(text[from]);
        }
    }
    return end;
}

bool isDigitAt(std::string_view text, std::size_t at) noexcept {
    return at < text.size() && byteClass(text[at]) == ByteClass::digit;
}

std::size_t skipDigits(std::string_view text, std::size_t at) noexcept {
    while (isDigitAt(text, at)) {
        ++at;
    }
    return at;
}

/// The length of a symbol of more than one byte, or 1.
std::size_t symbolLength(std::string_view rest) noexcept {
    for (const std::string_view symbol : {"<=", ">=", "<>", "!=", "!<", "!>"}) {
        if (rest.starts_with(symbol)) {
            return 2;
        }
    }
    return 1;
}

} // namespace

std::size_t skipComment(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("--")) {
        const std::size_t end = text.find('\n', at);
        return readableUpTo(text, at, end == std::string_view::npos ? text.size() : end + 1);
    }
    if (!rest.starts_with("/*")) {
        return at;
    }
    const std::size_t begin = at;
    std::size_t depth = 0;
    while (at < text.size()) {
        if (text.substr(at).starts_with("/*")) {
            ++depth;
            at += 2;
        } else if (text.substr(at).starts_with("*/")) {
            at += 2;
            if (--depth == 0) {
                return readableUpTo(text, begin, at);
            }
        } else {
            ++at;
        }
    }
    raiseError(TsqlReason::commentNotClosed);
}

std::size_t skipQuotedName(std::string_view text, std::size_t at) {
    const char close = text[at] == '[' ? ']' : text[at];
    for (std::size_t end = text.find(close, at + 1); end != std::string_view::npos; end = text.find(close, end + 2)) {
        if (end + 1 >= text.size() || text[end + 1] != close) {
            return readableUpTo(text, at, end + 1);
        }
    }
    raiseError(TsqlReason::nameNotClosed, {shortened(text.substr(at + 1))});
}

std::size_t scanNumber(std::string_view text, std::size_t at, Literal& literal) noexcept {
    const std::size_t begin = at;
    at = skipDigits(text, at);
    if (at < text.size() && text[at] == '.') {
        at = skipDigits(text, at + 1);
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const std::size_t sign = at + 1 < text.size() && (text[at + 1] == '+' || text[at + 1] == '-') ? 1 : 0;
        if (isDigitAt(text, at + 1 + sign)) {
            at = skipDigits(text, at + 1 + sign);
        }
    }
    literal = {Literal::Kind::number, text.substr(begin, at - begin), text.substr(begin, at - begin), false};
    return at;
}

std::size_t scanText(std::string_view text, std::size_t from, std::size_t quote, Literal& literal) {
    bool doubled = false;
    for (std::size_t end = text.find('\'', quote + 1); end != std::string_view::npos; end = text.find('\'', end + 2)) {
        if (end + 1 >= text.size() || text[end + 1] != '\'') {
            literal = {Literal::Kind::text, text.substr(from, end + 1 - from), text.substr(quote + 1, end - quote - 1),
                       doubled};
            return end + 1;
        }
        doubled = true;
    }
    raiseError(TsqlReason::textNotClosed, {shortened(text.substr(quote + 1))});
}

Tokens::Tokens(std::string_view text) : lowered_(asciiLower(text)) {
    std::size_t at = skipBlanks(text, 0);
    while (at < text.size()) {
        const std::size_t begin = at;
        Token token;
        Literal literal;
        const ByteClass kind = byteClass(text[at]);
        if (kind == ByteClass::quote ||
            ((text[at] == 'N' || text[at] == 'n') && at + 1 < text.size() && text[at + 1] == '\'')) {
            at = scanText(text, at, kind == ByteClass::quote ? at : at + 1, literal);
            token.kind = Token::Kind::literal;
        } else if (kind == ByteClass::digit || (kind == ByteClass::dot && isDigitAt(text, at + 1))) {
            at = scanNumber(text, at, literal);
            token.kind = Token::Kind::literal;
        } else if (kind == ByteClass::name) {
            at = skipName(text, at);
            token.kind = Token::Kind::identifier;
        } else if (kind == ByteClass::bracket) {
            at = skipQuotedName(text, at);
            token.kind = Token::Kind::quotedIdentifier;
        } else if (kind == ByteClass::invalid) {
            raiseInvalidByte(text[at]);
        } else if (const std::size_t comment = skipComment(text, at); comment != at) {
            at = skipBlanks(text, comment);
            continue;
        } else {
            at += symbolLength(text.substr(at));
            token.kind = Token::Kind::symbol;
        }
        token.text = text.substr(begin, at - begin);
        token.lower = std::string_view(lowered_).substr(begin, at - begin);
        if (token.kind == Token::Kind::literal) {
            token.literal = static_cast<int>(literals.size());
            literals.push_back(literal);
        }
        tokens.push_back(token);
        at = skipBlanks(text, at);
    }
    tokens.emplace_back();
}

void raiseInvalidByte(char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    raiseSyntaxError(std::string("\\x") + digits[value / 16] + digits[value % 16]);
}

void raiseSyntaxError(std::string_view near) {
    if (near.empty()) {
        raiseError(TsqlReason::syntaxAtEnd);
    }
    raiseError(TsqlReason::syntaxNear, {shortened(near)});
}

void raiseError(TsqlReason reason, std::vector<std::string> arguments, const char* sqlState) {
    throw Error("Transact-SQL", {reason, std::move(arguments)}, sqlState);
}

} // namespace z7::cashflow::tsql
