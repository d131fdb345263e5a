#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"

#include <functional>
#include <optional>

namespace z7::cashflow::host {

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

/// Runs a save in a transaction of its own, which is kept only if asked for and rolled back if the save raises an error. An error
/// that concerns this voucher alone is returned (10008 to 10011, 10020, or that of a conversion, a document or a statement that
/// failed); one of the database as a whole comes out.
[[nodiscard]] std::optional<Error> saveInTransaction(Connection& connection, bool keep,
                                                     const std::function<void()>& save);

} // namespace z7::cashflow::host
