#pragma once

#include "workbench/vouchers/Refusal.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"

#include <functional>
#include <optional>

namespace z7::cashflow::workbench {

/// A transaction that is rolled back unless it was ended. The connection outlives it.
class Transaction {
public:
    explicit Transaction(Connection& connection) : connection_(connection) { connection_.BeginTrans(); }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Commits, or rolls back if nothing is to be kept. If the commit fails, the rollback is still to come.
    void end(bool keep);

private:
    Connection& connection_;
    bool open_ = true;
};

/// Runs a save in a transaction of its own, which is committed only if the save returns no refusal and "keep" then says
/// that the changes are to be kept. An error of the save that concerns this voucher alone is returned in the words of
/// "explain", which is asked while the transaction is still open, unless another session holds the voucher; one of the
/// database as a whole comes out.
[[nodiscard]] std::optional<Refusal> saveInTransaction(Connection& connection, const std::function<bool()>& keep,
                                                       const std::function<std::optional<Refusal>()>& save,
                                                       const std::function<Refusal(const Error&)>& explain);

} // namespace z7::cashflow::workbench
