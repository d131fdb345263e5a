#include "adapters/tsql/Shape.h"

#include "adapters/tsql/tokens.h"

namespace z7::cashflow::tsql {

std::string Literal::value() const {
    if (!doubledQuotes) {
        return std::string(body);
    }
    std::string text;
    text.reserve(body.size());
    for (std::size_t i = 0; i < body.size(); ++i) {
        text += body[i];
        if (body[i] == '\'') {
            ++i; // the second quote of a pair
        }
    }
    return text;
}

Shape shapeOf(std::string_view statement) {
    Shape shape;
    shapeOf(statement, shape);
    return shape;
}

void shapeOf(std::string_view text, Shape& shape) {
    shape.key.clear();
    shape.literals.clear();
    std::size_t copied = 0; // the text before this position is already in the key
    std::size_t at = 0;
    Literal literal;
    const auto mask = [&](std::size_t from, std::size_t end) {
        shape.key.append(text, copied, from - copied);
        shape.key += literal.kind == Literal::Kind::number ? '\x01' : '\x02';
        shape.literals.push_back(literal);
        copied = at = end;
    };
    while (at < text.size()) {
        switch (byteClass(text[at])) {
        case ByteClass::name:
            if ((text[at] == 'N' || text[at] == 'n') && at + 1 < text.size() && text[at + 1] == '\'') {
                mask(at, scanText(text, at, at + 1, literal));
            } else {
                at = skipName(text, at);
            }
            break;
        case ByteClass::quote:
            mask(at, scanText(text, at, at, literal));
            break;
        case ByteClass::dot:
            if (at + 1 >= text.size() || byteClass(text[at + 1]) != ByteClass::digit) {
                ++at;
                break;
            }
            [[fallthrough]];
        case ByteClass::digit:
            mask(at, scanNumber(text, at, literal));
            break;
        case ByteClass::bracket:
            at = skipQuotedName(text, at);
            break;
        case ByteClass::dash:
        case ByteClass::slash: {
            const std::size_t comment = skipComment(text, at);
            at = comment == at ? at + 1 : comment;
            break;
        }
        case ByteClass::invalid:
            raiseInvalidByte(text[at]);
        case ByteClass::blank:
        case ByteClass::symbol:
            ++at;
            break;
        }
    }
    shape.key.append(text, copied, text.size() - copied);
}

} // namespace z7::cashflow::tsql
