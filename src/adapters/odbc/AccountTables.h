#pragma once

#include "adapters/shared/loading/TableLoader.h"
#include "z7cashflow/ports/Connection.h"

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::odbc {

/// The tables of an account's session on a server that speaks Transact-SQL: those of its own database, and those of the
/// suite's in the system database. Rows are written by recordsets, and so with parameters, on the session itself and in
/// its transaction.
///
/// The system database belongs to all accounts. A row of it that is there already, every given value the same, counts
/// as added and is left alone, so that an account can be made anew in another database.
class AccountTables final : public LoadableTables {
public:
    explicit AccountTables(Connection& connection) : connection_(connection) {}

    [[nodiscard]] std::vector<std::string> names() override;
    /// An identity column takes its numbers from the rows if they name it. Of such tables only the one whose loader was
    /// made last can be filled.
    [[nodiscard]] std::unique_ptr<RowLoader> loader(const std::string& table,
                                                    const std::vector<std::string>& columns) override;

private:
    struct Found;

    [[nodiscard]] Found find(const std::string& table);

    Connection& connection_;
    std::string numbering_; ///< the table that takes its numbers from the rows, as it stands in a statement
};

} // namespace z7::cashflow::odbc
