#pragma once

#include "adapters/shared/recordset/Column.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/tsql/Shape.h"

namespace z7::cashflow::sqlite {

/// How a literal reaches a prepared statement: as a value of the column that it is compared with or goes into.
struct LiteralBinding {
    int literal = 0;
    bool negative = false;
    bool assigned = false; ///< it goes into the column, so it has to fit
    shared::Column column{{}, shared::ColumnType::any, 0};
};

/// Binds a literal as the server would read it, with the errors of tsql::literalValue. A text is borrowed from the
/// literal where that can be: it has to live until the statement is reset.
void bindLiteral(Statement& statement, int position, const LiteralBinding& binding, const tsql::Literal& literal);

} // namespace z7::cashflow::sqlite
