#pragma once

#include "adapters/shared/cache/LruCache.h"
#include "adapters/shared/session/Session.h"
#include "adapters/sqlite/Catalogue.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/LiteralBinding.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/openFile.h"
#include "adapters/tsql/Rewriting.h"
#include "adapters/tsql/RewritingCache.h"
#include "adapters/tsql/transaction.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {

class TempDatabase;

/// Statement observers.
struct Observers : shared::Observers {
    shared::StatementObserver rewritten;
};

/// The origins of a query's columns, if they are columns of tables; needed to write its records.
struct ColumnOrigin {
    std::string database;
    std::string table;
    std::string column;
};

/// One open session: a handle of the database library with the account's companion files attached, its prepared
/// statements, and its transaction. It is used on one thread.
class Session final : public shared::Session, public std::enable_shared_from_this<Session> {
public:
    /// The maximum number of statement shapes, and of own texts, that a session keeps prepared.
    static constexpr std::size_t mostPrepared = 128;

    Session(const ConnectionOptions& options, int number, std::shared_ptr<const Observers> observers);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() override;

    void close() noexcept override;
    [[nodiscard]] int number() const noexcept override { return number_; }

    /// Runs a Transact-SQL batch and fetches its complete first result.
    shared::Result run(const std::string& text, bool updatable) override;
    /// Runs one statement in the embedded database's own dialect with values, and returns the number of rows
    /// changed, including those changed by triggers.
    std::int64_t runOwn(const std::string& sql, const std::vector<Variant>& values);

    void begin() override;
    void commit() override;
    void rollback() override;
    /// Sets whether each commit waits for the disk (the default). Turning it on again waits for everything
    /// committed meanwhile; raises an error of the database if the disk fails. Not within a transaction.
    void waitForDisk(bool wait);
    [[nodiscard]] bool inTransaction() const noexcept override { return inTransaction_; }
    [[nodiscard]] bool isIdle() const noexcept override;

    [[nodiscard]] Catalogue& catalogue();
    /// Attaches tempdb to the session; this is not done until a statement refers to it.
    void useTempDatabase();
    [[nodiscard]] sqlite3* nativeHandle() const { return handle(); }

private:
    /// A step of a batch with what is needed to run it again.
    struct PreparedStep {
        tsql::Step step;
        std::unique_ptr<Statement> statement;
        std::vector<LiteralBinding> bindings;
        std::shared_ptr<const shared::ColumnList> columns;
        std::vector<ColumnOrigin> origins; ///< for a query whose records can be written
        int preparations = 0;              ///< how often the library has prepared it again
    };

    [[nodiscard]] sqlite3* handle() const;
    void prepare(PreparedStep& step);
    void readColumns(PreparedStep& step);
    void bind(PreparedStep& step, const std::vector<tsql::Literal>& literals);
    void observe(const Statement& statement) const;
    void observe(const std::string& sql) const;
    void runText(const std::string& sql);
    [[nodiscard]] tsql::TextRunner textRunner();

    std::unique_ptr<shared::RowSet> fetch(PreparedStep& step);
    void runInto(PreparedStep& step, const std::vector<tsql::Literal>& literals);
    [[nodiscard]] std::string columnText(const PreparedStep& step, int column) const;
    void runStep(PreparedStep& step, const std::vector<tsql::Literal>& literals, bool updatable,
                 shared::Result& result);
    void requireTransactionAlive() const;
    /// Raises an Error if the account's file was deleted or replaced after it was opened.
    void requireInPlace() const;
    /// Raises an Error if a file that is read without locks was changed.
    void requireUnchanged() const;

    std::shared_ptr<const TempDatabase> tempDatabase_; ///< outlives the handle; null until it is needed
    Handle handle_;
    std::filesystem::path file_;
    std::vector<UnlockedFile> unlocked_;
    bool readOnly_ = false;
    int number_;
    std::shared_ptr<const Observers> observers_;
    Explanation lockedRemark_;
    std::optional<Catalogue> catalogue_;
    tsql::RewritingCache<PreparedStep> rewritings_{mostPrepared};
    shared::LruCache<std::unique_ptr<Statement>> own_{mostPrepared};
    bool inTransaction_ = false;
};

} // namespace z7::cashflow::sqlite
