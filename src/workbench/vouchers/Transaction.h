#pragma once

#include "workbench/vouchers/Refusal.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/visibility.h"

#include <functional>
#include <optional>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// A transaction that is rolled back by the destructor unless it has ended. The connection outlives it.
class Transaction {
public:
    /// Begins the transaction. Error of the database if one is open.
    explicit Transaction(Connection& connection) : connection_(connection) { connection_.BeginTrans(); }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Commits if keep is true, otherwise rolls back. If the commit fails, the destructor still rolls back.
    void end(bool keep);

private:
    Connection& connection_;
    bool open_ = true;
};

/// Runs a save in its own transaction, which is committed only if the save returns no refusal and keep returns true
/// after it. An error that concerns only this voucher becomes a refusal by explain, which is called while the
/// transaction is still open, unless another session holds the voucher. An error that concerns the database as a
/// whole passes through.
[[nodiscard]] std::optional<Refusal> saveInTransaction(Connection& connection, const std::function<bool()>& keep,
                                                       const std::function<std::optional<Refusal>()>& save,
                                                       const std::function<Refusal(const Error&)>& explain);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
