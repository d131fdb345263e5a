#pragma once

#include "adapters/shared/loading/TableLoader.h"
#include "adapters/tsql/Rewriting.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// A column of a table as the database declares it.
struct TableColumn : shared::TableColumn {
    std::string declaredType; ///< such as "nvarchar(40)"
};

/// The columns of a table or a view as the database declares them.
struct TableShape {
    std::vector<TableColumn> columns;
    std::vector<std::string> key; ///< the columns of the primary key; empty without one, and for a view

    /// The position of a column, looked for without regard to case, or -1.
    [[nodiscard]] int find(std::string_view name) const;
};

/// What one session knows of the tables, read when it is first asked for. Tables of tempdb come and go, so they are
/// read anew each time.
class Catalogue {
public:
    explicit Catalogue(sqlite3* handle) : handle_(handle) {}

    /// Nothing (no columns) if there is no such table.
    [[nodiscard]] std::shared_ptr<const TableShape> table(const tsql::TableName& name);
    /// The column that a literal belongs to, or a null pointer if it cannot be told. Valid while the shape is held.
    [[nodiscard]] const TableColumn* column(const tsql::ColumnUse& use, std::shared_ptr<const TableShape>& holder);
    void forget() { tables_.clear(); }

private:
    [[nodiscard]] TableShape read(const tsql::TableName& name) const;

    sqlite3* handle_;
    std::unordered_map<std::string, std::shared_ptr<const TableShape>> tables_;
};

} // namespace z7::cashflow::sqlite
