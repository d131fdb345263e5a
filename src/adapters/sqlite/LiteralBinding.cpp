#include "adapters/sqlite/LiteralBinding.h"

#include "adapters/tsql/literalValue.h"

#include <charconv>
#include <cstdint>
#include <system_error>

namespace z7::cashflow::sqlite {
namespace {

using shared::ColumnType;

bool isPlainText(const tsql::Literal& literal, ColumnType type) {
    return literal.kind == tsql::Literal::Kind::text && !literal.doubledQuotes &&
           (type == ColumnType::text || type == ColumnType::any);
}

/// A whole number in an expression keeps its 64 bits.
bool bindWhole(Statement& statement, int position, bool negative, std::string_view digits) {
    std::int64_t whole = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, whole);
    if (error != std::errc() || stop != end) {
        return false;
    }
    statement.bind(position, negative ? -whole : whole);
    return true;
}

} // namespace

void bindLiteral(Statement& statement, int position, const LiteralBinding& binding, const tsql::Literal& literal) {
    const shared::Column& column = binding.column;
    if (isPlainText(literal, column.type)) {
        if (binding.assigned) {
            tsql::requireLength(literal.body, column);
        }
        statement.bindBorrowed(position, literal.body);
        return;
    }
    const bool number = literal.kind == tsql::Literal::Kind::number;
    if (number && column.type == ColumnType::any && bindWhole(statement, position, binding.negative, literal.body)) {
        return;
    }
    statement.bind(position, tsql::literalValue(literal, binding.negative, column, binding.assigned));
}

} // namespace z7::cashflow::sqlite
