#pragma once

#include "adapters/odbc/ConnectionOptions.h"
#include "adapters/odbc/Dialect.h"
#include "adapters/odbc/DriverConnection.h"
#include "adapters/shared/cache/LruCache.h"
#include "adapters/shared/session/Session.h"
#include "adapters/tsql/Shape.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::odbc {

/// The observers of a connection and its pool.
struct Observers : shared::Observers {
    std::function<void()> sessionLost; ///< called when a session finds its connection lost
};

/// One open session: a driver's connection, its dialect and its transaction. Used on one thread.
class Session final : public shared::Session, public Driver, public std::enable_shared_from_this<Session> {
public:
    Session(ConnectionOptions options, std::unique_ptr<Dialect> dialect, int number,
            std::shared_ptr<Environment> environment, std::shared_ptr<const Observers> observers);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() override;

    void close() noexcept override;
    [[nodiscard]] int number() const noexcept override { return number_; }

    /// Runs a Transact-SQL batch and fetches its complete first result.
    shared::Result run(const std::string& text, bool updatable) override;

    using Driver::execute;
    Fetched execute(const std::string& text, const std::vector<Variant>& values,
                    const ResultDescription& description) override;
    [[nodiscard]] std::vector<std::string> primaryKey(const std::string& database, const std::string& table) override;
    [[nodiscard]] Dialect& dialect() noexcept { return *dialect_; }

    /// Runs an action, unless the transaction is lost, and detects whether an error ends the transaction.
    void guarded(const std::function<void()>& action);

    void begin() override;
    void commit() override;
    void rollback() override;
    /// True between begin and commit or rollback, even if the server has ended the transaction.
    [[nodiscard]] bool inTransaction() const noexcept override { return transaction_ != Transaction::none; }
    [[nodiscard]] bool isLost() const noexcept override { return lost_; }
    /// Whether the session can be handed out again: it is connected, not in a transaction, and no text may have
    /// changed its settings.
    [[nodiscard]] bool isIdle() const noexcept override;

private:
    /// Gone: the server has rolled back. Unknown: the connection was lost during the commit.
    enum class Transaction { none, open, gone, unknown };
    static constexpr std::size_t mostShapes = 256;

    [[nodiscard]] DriverConnection& line();
    void requireTransactionAlive() const;
    void noteFailureInTransaction();
    [[noreturn]] void fail(short handleType, Handle handle);
    void loseLine();
    [[nodiscard]] bool mayAlterSession(const std::string& text);
    [[nodiscard]] Fetched readResults(Handle statement, short answer, const ResultDescription& description);
    [[nodiscard]] std::shared_ptr<const ResultShape> shapeOfResult(Handle statement, int count,
                                                                   const ResultDescription& description);

    ConnectionOptions options_;
    int number_;
    std::shared_ptr<const Observers> observers_;
    std::unique_ptr<Dialect> dialect_;
    std::unique_ptr<DriverConnection> line_;
    ResultReader reader_;
    std::vector<DriverColumn> described_;       ///< of the current result; kept to reuse its memory
    tsql::Shape shape_;                         ///< of the current text; kept to reuse its memory
    shared::LruCache<bool> alters_{mostShapes}; ///< by the shape of a text, whether it may change the session's state
    Transaction transaction_ = Transaction::none;
    bool lost_ = false;
    bool altered_ = false;      ///< a text ran that may have changed the session's state
    bool needsOrigins_ = false; ///< the records of the current text are to be written
};

} // namespace z7::cashflow::odbc
