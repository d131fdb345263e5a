#pragma once

#include "adapters/shared/recordset/Backend.h"
#include "z7cashflow/support/visibility.h"

#include <functional>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// Called with the number of the session that runs a statement and the statement's text. An Error that it throws goes
/// to the caller in place of the statement, which then does not run.
using StatementObserver = std::function<void(int session, const std::string& text)>;

/// Statement observers, shared by a connection and the sessions of its pool.
struct Observers {
    StatementObserver statement; ///< empty if nobody observes
};

/// One open session on a database, with its transaction. It is used on one thread.
class Session : public Runner {
public:
    /// Rolls back what is not committed and closes the session; whatever still refers to it gets error 3704.
    virtual void close() noexcept = 0;
    /// Counted from 1, in the order in which a connection's sessions were opened.
    [[nodiscard]] virtual int number() const noexcept = 0;

    /// Begins a transaction. Error of the database if one is open.
    virtual void begin() = 0;
    /// Commits. Error of the database if no transaction is open, if the database already rolled it back, or if the
    /// reply was lost (outcome unknown); in the last two cases call rollback.
    virtual void commit() = 0;
    /// Rolls back and ends the transaction. Error of the database if none is open.
    virtual void rollback() = 0;
    /// True between begin and commit or rollback.
    [[nodiscard]] virtual bool inTransaction() const noexcept = 0;
    /// Whether the session can be handed out again.
    [[nodiscard]] virtual bool isIdle() const noexcept = 0;
    /// Whether the connection to the database is lost, so that a new session is needed.
    [[nodiscard]] virtual bool isLost() const noexcept { return false; }
};

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
