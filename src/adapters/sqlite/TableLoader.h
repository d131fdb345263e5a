#pragma once

#include "adapters/shared/loading/TableLoader.h"

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {

class Connection;
struct TableShape;

using shared::LoadError;

/// A column of a table as the database declares it.
struct TableColumn : shared::TableColumn {
    std::string declaredType; ///< such as "nvarchar(40)"
};

/// The tables (views are none) of the account's database and of the system database, by their plain names, in the order
/// of the alphabet.
[[nodiscard]] std::vector<std::string> tableNames(Connection& connection);

/// The columns of a table or a view in their order. The name is looked for without regard to case, in the account's
/// database, then in the system database; "tempdb..X" and "zqsystem..X" name the place. Error 208 if there is no such
/// table.
[[nodiscard]] std::vector<TableColumn> tableColumns(Connection& connection, const std::string& table);

/// Puts rows of texts into one table or view. The connection must outlive it.
class TableLoader final : public shared::TableLoader {
public:
    /// Error 208 if there is no such table, LoadError if a column is unknown or named twice, or if one that must have a
    /// value is not named.
    TableLoader(Connection& connection, const std::string& table, const std::vector<std::string>& columns);
    ~TableLoader() override;

private:
    struct Target;

    TableLoader(std::unique_ptr<Target> target, const std::vector<std::string>& columns);
    void insert(const std::vector<Variant>& values) override;

    std::unique_ptr<Target> target_;
};

/// The tables of an account's session for loading. The connection must outlive it.
class AccountTables final : public LoadableTables {
public:
    explicit AccountTables(Connection& connection) : connection_(connection) {}

    [[nodiscard]] std::vector<std::string> names() override;
    [[nodiscard]] std::unique_ptr<RowLoader> loader(const std::string& table,
                                                    const std::vector<std::string>& columns) override;

private:
    Connection& connection_;
};

} // namespace z7::cashflow::sqlite
