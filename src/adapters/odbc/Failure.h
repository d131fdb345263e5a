#pragma once

#include "adapters/odbc/nativeCalls.h"
#include "z7cashflow/support/Error.h"

#include <string>
#include <vector>

namespace z7::cashflow::odbc {

/// The source of the errors that come from a driver or from the server that it leads to.
inline constexpr const char* errorSource = "ODBC";

/// Numbers of the errors that this adapter itself decides, as the server's and the platform's users know them.
namespace errors {
inline constexpr int serverNotReached = 17; ///< no server, or the connection to it is lost
inline constexpr int lockTimeout = 1222;    ///< another session holds what is needed
inline constexpr int noTransactionToCommit = 3902;
inline constexpr int noTransactionToRollBack = 3903;
inline constexpr int transactionLost = 3930; ///< the server has ended the transaction; only a rollback is left
inline constexpr int driverNotFound = 3706;  ///< the connection string names no driver of this machine
inline constexpr int loginFailed = 18456;
inline constexpr int unspecified = -2147467259; ///< the driver gave no number of its own
inline constexpr int transactionExists = 3988;  ///< a transaction is open already
} // namespace errors

/// What a driver reports about a failed call, as one error: the number, state and text of the record that says most, the
/// server's before the driver's, with the texts of the others after it, and every secret masked. The makers' names in brackets
/// before a text are left out.
class Failure {
public:
    Failure(short handleType, Handle handle, const std::vector<std::string>& secrets);

    [[nodiscard]] const Error& error() const noexcept { return error_; }
    /// Whether it says that the connection to the server is lost.
    [[nodiscard]] bool connectionLost() const noexcept { return connectionLost_; }

private:
    Error error_;
    bool connectionLost_ = false;
};

} // namespace z7::cashflow::odbc
