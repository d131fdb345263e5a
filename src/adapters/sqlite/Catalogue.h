#pragma once

#include "adapters/shared/loading/TableLoader.h"
#include "adapters/tsql/Rewriting.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// A column of a table, as declared.
struct TableColumn : shared::TableColumn {
    std::string declaredType; ///< such as "nvarchar(40)"
};

/// The columns of a table or a view, as declared.
struct TableShape {
    std::vector<TableColumn> columns;
    std::vector<std::string> key; ///< the columns of the primary key; empty if there is none, and for a view

    /// The position of a column, case-insensitive, or -1.
    [[nodiscard]] int find(std::string_view name) const;
};

/// The tables known to one session, read on first use. Tables of tempdb come and go, so they are read each time.
class Catalogue {
public:
    explicit Catalogue(sqlite3* handle) : handle_(handle) {}

    /// A null pointer (no columns) if the table does not exist.
    [[nodiscard]] std::shared_ptr<const TableShape> table(const tsql::TableName& name);
    /// The column to which a literal belongs, or a null pointer if it cannot be determined. Valid as long as
    /// the shape is held.
    [[nodiscard]] const TableColumn* column(const tsql::ColumnUse& use, std::shared_ptr<const TableShape>& holder);
    void forget() { tables_.clear(); }

private:
    [[nodiscard]] TableShape read(const tsql::TableName& name) const;

    sqlite3* handle_;
    std::unordered_map<std::string, std::shared_ptr<const TableShape>> tables_;
};

} // namespace z7::cashflow::sqlite
