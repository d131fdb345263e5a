#pragma once

#include "z7cashflow/ports/Connection.h"

#include <functional>
#include <optional>
#include <string>

namespace z7::cashflow::host {

/// Why a voucher was refused.
struct Refusal {
    int number = 0; ///< 10008 to 10011, 10020, or the number of a conversion, a document or a statement that failed
    std::string description; ///< the reason in the user's language, as the library gives it
};

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
/// that concerns this voucher alone is returned; one of the database as a whole comes out.
[[nodiscard]] std::optional<Refusal> saveInTransaction(Connection& connection, bool keep,
                                                       const std::function<void()>& save);

} // namespace z7::cashflow::host
