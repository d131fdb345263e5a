#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::tsql {

/// A literal of a statement: a number or a quoted text. It points into the statement's text.
struct Literal {
    /// A number or a quoted text.
    enum class Kind { number, text };
    Kind kind = Kind::number;   ///< which of them
    std::string_view source;    ///< the whole literal as written: 12.5, 'it''s', N'现金'
    std::string_view body;      ///< the number, or the text between the quotes
    bool doubledQuotes = false; ///< whether the body contains doubled quotes

    /// The literal's value: a text with each doubled quote reduced to one, a number as written.
    [[nodiscard]] std::string value() const;
};

/// A statement without its literals. Two statements with the same key differ only in the values of their literals.
struct Shape {
    std::string key; ///< the statement's text, each literal replaced by one byte: 1 for a number, 2 for a text
    std::vector<Literal> literals; ///< in the order of the text
};

/// Finds the shape of a statement or a batch in one pass. The literals point into the text. Error 105 for an
/// unclosed quote, 113 for an unclosed comment, 102 for a byte that is not allowed in a statement.
[[nodiscard]] Shape shapeOf(std::string_view statement);
/// The same, reusing the memory of a shape.
void shapeOf(std::string_view statement, Shape& shape);

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
