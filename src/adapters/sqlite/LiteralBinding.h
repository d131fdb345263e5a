#pragma once

#include "adapters/shared/recordset/Column.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/tsql/Shape.h"

namespace z7::cashflow::sqlite {

/// How a literal is bound to a prepared statement: as a value of the column with which it is compared or to which
/// it is assigned.
struct LiteralBinding {
    int literal = 0;
    bool negative = false;
    bool assigned = false; ///< it is assigned to the column, so it must fit
    shared::Column column{{}, shared::ColumnType::any, 0};
};

/// Binds a literal as the server would interpret it, with the errors of tsql::literalValue. A text is borrowed from
/// the literal if possible: it must live until the statement is reset.
void bindLiteral(Statement& statement, int position, const LiteralBinding& binding, const tsql::Literal& literal);

} // namespace z7::cashflow::sqlite
