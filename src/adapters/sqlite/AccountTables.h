#pragma once

#include "z7cashflow/ports/LoadableTables.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::sqlite {

class Connection;

/// The tables of an account for loading: those of the account's database and of the system database, by plain name.
/// Names are case-insensitive and looked up in the account's database first; "tempdb..X" and "zqsystem..X" name the
/// database. The connection must outlive this object and its loaders.
class AccountTables final : public LoadableTables {
public:
    /// The connection is open.
    explicit AccountTables(Connection& connection) : connection_(connection) {}

    [[nodiscard]] std::vector<std::string> names() override;
    [[nodiscard]] std::unique_ptr<RowLoader> loader(const std::string& table,
                                                    const std::vector<std::string>& columns) override;

private:
    Connection& connection_;
};

} // namespace z7::cashflow::sqlite

Z7_PUBLIC_END
