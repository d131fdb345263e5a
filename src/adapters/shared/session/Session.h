#pragma once

#include "adapters/shared/recordset/Backend.h"

#include <functional>
#include <string>

namespace z7::cashflow::shared {

/// Called with the number of the session that runs a statement and the statement's text. An Error that it throws goes to the
/// caller in place of the statement, which then does not run.
using StatementObserver = std::function<void(int session, const std::string& text)>;

/// Who looks on when statements run; shared by a connection and the sessions of its pool.
struct Observers {
    StatementObserver statement;
};

/// One open session on a database, with its transaction. It is used on one thread.
class Session : public Runner {
public:
    /// Rolls back what is not committed and lets the database go. What still refers to the session gets error 3704 from
    /// then on.
    virtual void close() noexcept = 0;
    /// Counts from 1 in the order in which a connection's sessions were opened.
    [[nodiscard]] virtual int number() const noexcept = 0;

    /// Begins a transaction. Error of the database if one is open.
    virtual void begin() = 0;
    /// Makes the transaction's changes lasting, and ends it. Error of the database if none is open; if the database has taken it
    /// back by itself; or if its answer got lost, after which the changes may be lasting or not. In the last two cases only
    /// rollback ends it.
    virtual void commit() = 0;
    /// Takes the transaction's changes back, as far as they are not lasting or gone already, and ends it. Error of the database if
    /// none is open.
    virtual void rollback() = 0;
    /// True between begin and commit or rollback.
    [[nodiscard]] virtual bool inTransaction() const noexcept = 0;
    /// Whether the session can be handed to somebody else.
    [[nodiscard]] virtual bool isIdle() const noexcept = 0;
    /// Whether the line to the database is cut, so that only a new session can go on.
    [[nodiscard]] virtual bool isLost() const noexcept { return false; }
};

} // namespace z7::cashflow::shared
