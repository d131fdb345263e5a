#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::tsql {

/// A literal of a statement: a number, or a text between quotes. It points into the statement's text.
struct Literal {
    enum class Kind { number, text };
    Kind kind = Kind::number;
    std::string_view source;    ///< the whole literal as written: 12.5, 'it''s', N'现金'
    std::string_view body;      ///< the number, or what stands between the quotes
    bool doubledQuotes = false; ///< whether the body holds quotes that are written twice

    /// The text that the literal means, each doubled quote once; a number as written.
    [[nodiscard]] std::string value() const;
};

/// A statement apart from its literals. Two statements with the same key differ in their literals' values only.
struct Shape {
    std::string key; ///< the statement's text, each literal replaced by one byte: 1 for a number, 2 for a text
    std::vector<Literal> literals;
};

/// Finds the shape of a statement or a batch in one pass over its text. The literals point into the text.
/// Error 105 for a quote that is not closed, 113 for a comment that is not, 102 for a byte that no statement holds.
[[nodiscard]] Shape shapeOf(std::string_view statement);
/// The same into a shape that is used again, which spares its memory.
void shapeOf(std::string_view statement, Shape& shape);

} // namespace z7::cashflow::tsql
