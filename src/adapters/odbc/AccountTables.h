#pragma once

#include "adapters/shared/loading/TableLoader.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::odbc {

/// The tables of an account on a server that speaks Transact-SQL: those of its own database, and those of the suite
/// in the system database. Rows are written by recordsets, and so with parameters, on the session itself and in its
/// transaction.
///
/// The system database is shared by all accounts. A row that already exists there with the same values counts as
/// added and is left unchanged, so that an account can be created again in another database.
class AccountTables final : public LoadableTables {
public:
    /// The connection is open and outlives this object and its loaders.
    explicit AccountTables(Connection& connection) : connection_(connection) {}

    [[nodiscard]] std::vector<std::string> names() override;
    /// An identity column gets its numbers from the rows if they name it. Of such tables only the one whose
    /// loader was created last can be filled.
    [[nodiscard]] std::unique_ptr<RowLoader> loader(const std::string& table,
                                                    const std::vector<std::string>& columns) override;

private:
    struct Found;

    [[nodiscard]] Found find(const std::string& table);

    Connection& connection_;
    std::string numbering_; ///< the table, in statement form, whose identity column gets its numbers from the rows
};

} // namespace z7::cashflow::odbc

Z7_PUBLIC_END
