#pragma once

#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/TableLoader.h"
#include "adapters/tsql/Rewriting.h"

#include <string>

namespace z7::cashflow::sqlite {

/// How a literal reaches a prepared statement: converted to the column that it is compared with or goes into.
struct LiteralBinding {
    int literal = 0;
    bool negative = false;
    bool assigned = false; ///< it goes into the column, so it has to fit
    cursor::ColumnType type = cursor::ColumnType::any;
    int length = 0;
    std::string column; ///< for messages
};

/// Binds a literal as the server would read it: a text for a date column in any year-first form, a text for a number column
/// as its number, a number for a text column as it is written. The empty text is 0, or 1900-01-01.
/// Error 241 for a text that is no date, 8114 for one that is no number, 8115 for a number out of the column's range, 8152 for a
/// text that is too long to go into its column.
void bindLiteral(Statement& statement, int position, const LiteralBinding& binding, const tsql::Literal& literal);

} // namespace z7::cashflow::sqlite
