#include "adapters/odbc/Session.h"

#include "adapters/odbc/OdbcReason.h"
#include "adapters/odbc/Parameters.h"
#include "adapters/odbc/RecordWriter.h"
#include "adapters/odbc/databaseError.h"
#include "adapters/odbc/utf8.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/conversions.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace z7::cashflow::odbc {
namespace {

/// Refuses a text that a driver would truncate or garble.
void requireWholeText(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) {
        raisePlatformError(Reason::zeroByte, {shortened(text.substr(0, text.find('\0')))});
    }
    if (const std::size_t bad = findBadUtf8(text); bad != std::string_view::npos) {
        raisePlatformError(Reason::invalidUtf8, {std::to_string(bad + 1), shortened(text.substr(0, bad))});
    }
}

/// Whether a text may change the state of its session: leave a transaction open, switch the database, settings or
/// user, or create temporary tables.
bool namesWhatAlters(const std::string& text) {
    static constexpr std::array<std::string_view, 6> beginnings = {"select", "insert", "update",
                                                                   "delete", "drop",   "if"};
    static constexpr std::array<std::string_view, 17> words = {
        "begin",   "commit", "rollback", "save",   "tran",  "transaction", "exec", "execute", "use",
        "declare", "revert", "setuser",  "create", "alter", "statistics",  "dbcc", "open"};
    const auto isOneOf = [](const auto& list, std::string_view word) {
        return std::find(list.begin(), list.end(), word) != list.end();
    };
    try {
        const tsql::Tokens tokens(text);
        bool alters = !isOneOf(beginnings, tokens.tokens.front().lower); // other words may be procedures
        bool updates = false;
        for (const tsql::Token& token : tokens.tokens) {
            if (token.lower == "update") {
                updates = true;
            } else if (token.lower == "set") { // each update has one; any other is a setting
                alters = alters || !updates;
                updates = false;
            }
            const bool ofItsOwn = token.literal < 0 && token.lower.find('#') != std::string_view::npos;
            alters = alters || ofItsOwn || isOneOf(words, token.lower);
        }
        return alters;
    } catch (const Error&) { // a text that cannot be parsed may do anything
        return true;
    }
}

/// Whether a driver does not support a call at all.
bool tellsMissingFeature(const Error& error) { return error.sqlState() == "IM001" || error.sqlState() == "HYC00"; }

/// The error of a call that found the connection lost, which not every driver reports by number and state: FreeTDS
/// has "Unknown error" and "Unexpected EOF from the server".
Error tellingCutLine(const Error& error) {
    if (error.sqlState().starts_with("08")) {
        return error;
    }
    const bool numbered = error.number() != errors::unspecified;
    return {numbered ? error.number() : errors::serverNotReached, error.source(),
            numbered ? error.asCause() : Explanation{OdbcReason::connectionLostWith, {}, {error.asCause()}}, "08S01"};
}

} // namespace

Session::Session(ConnectionOptions options, std::unique_ptr<Dialect> dialect, int number,
                 std::shared_ptr<Environment> environment, std::shared_ptr<const Observers> observers)
    : options_(std::move(options)), number_(number), observers_(std::move(observers)), dialect_(std::move(dialect)),
      line_(std::make_unique<DriverConnection>(std::move(environment), options_)) {
    dialect_->start(*this, options_);
}

Session::~Session() { close(); }

void Session::close() noexcept {
    transaction_ = Transaction::none;
    line_.reset();
}

DriverConnection& Session::line() {
    if (line_ == nullptr) {
        if (lost_) {
            throw Error(errorSource, {OdbcReason::connectionLost}, "08003");
        }
        raisePlatformError(shared::DatabaseReason::objectClosed);
    }
    return *line_;
}

shared::Result Session::run(const std::string& text, bool updatable) {
    if (line_ == nullptr && !lost_) {
        raisePlatformError(shared::DatabaseReason::objectClosed);
    }
    if (observers_->statement) {
        observers_->statement(number_, text);
    }
    requireWholeText(text);
    altered_ = altered_ || mayAlterSession(text);
    needsOrigins_ = updatable || dialect_->needsOrigins();
    Fetched fetched;
    guarded([&] { fetched = dialect_->run(*this, text, updatable); });
    shared::Result result;
    result.rows = std::move(fetched.rows);
    if (result.rows != nullptr && fetched.target) {
        result.writer = std::make_shared<RecordWriter>(shared_from_this(), *fetched.target, fetched.shape->columns);
    }
    return result;
}

void Session::guarded(const std::function<void()>& action) {
    requireTransactionAlive();
    try {
        action();
    } catch (const Error&) {
        noteFailureInTransaction();
        throw;
    }
}

bool Session::mayAlterSession(const std::string& text) {
    constexpr std::size_t longestKept = std::size_t{64} * 1024;
    if (text.size() > longestKept) {
        return namesWhatAlters(text);
    }
    try {
        tsql::shapeOf(text, shape_);
    } catch (const Error&) { // a text that cannot be parsed may do anything
        return true;
    }
    if (const bool* known = alters_.find(shape_.key)) {
        return *known;
    }
    return alters_.insert(shape_.key, namesWhatAlters(text));
}

Fetched Session::execute(const std::string& text, const std::vector<Variant>& values,
                         const ResultDescription& description) {
    for (const Variant& value : values) {
        if (const auto* given = value.get<std::string>()) {
            requireWholeText(*given);
        }
    }
    Handle const statement = line().freshStatement();
    Parameters parameters(values);
    if (!parameters.bind(statement)) {
        fail(SQL_HANDLE_STMT, statement);
    }
    return readResults(statement, executeDirect(statement, text), description);
}

Fetched Session::readResults(Handle statement, short answer, const ResultDescription& description) {
    Fetched fetched;
    while (true) {
        if (answer != SQL_NO_DATA && !SQL_SUCCEEDED(answer)) {
            fail(SQL_HANDLE_STMT, statement);
        }
        const std::optional<int> count =
            answer == SQL_NO_DATA || fetched.rows != nullptr ? 0 : ResultReader::columnCount(statement);
        if (!count) {
            fail(SQL_HANDLE_STMT, statement);
        }
        if (*count > 0) {
            fetched.shape = shapeOfResult(statement, *count, description);
            fetched.rows = reader_.read(statement, *fetched.shape);
            if (fetched.rows == nullptr) {
                fail(SQL_HANDLE_STMT, statement);
            }
        }
        // An error of a later statement is reported only when its result is requested.
        answer = SQLMoreResults(statement);
        if (answer == SQL_NO_DATA) {
            return fetched;
        }
    }
}

std::shared_ptr<const ResultShape> Session::shapeOfResult(Handle statement, int count,
                                                          const ResultDescription& description) {
    described_.resize(static_cast<std::size_t>(count));
    int position = 0;
    for (DriverColumn& column : described_) {
        if (!SQL_SUCCEEDED(describeColumn(statement, ++position, column))) {
            fail(SQL_HANDLE_STMT, statement);
        }
    }
    auto* const known = description.known;
    if (known != nullptr && *known != nullptr && (*known)->described == described_) {
        return *known;
    }
    auto shape = std::make_shared<ResultShape>();
    shape->described = described_;
    shape->columns = described_;
    for (position = 0; needsOrigins_ && position < count; ++position) {
        describeOrigin(statement, position + 1, shape->columns[static_cast<std::size_t>(position)]);
    }
    if (description.correct) {
        description.correct(shape->columns);
    }
    std::vector<shared::Column> list;
    for (const DriverColumn& column : shape->columns) {
        ResultColumn result = dialect_->resultColumn(column);
        shape->fetchAs.push_back(result.fetchAs);
        list.push_back(std::move(result.column));
    }
    shape->list = std::make_shared<const shared::ColumnList>(std::move(list));
    if (known != nullptr) {
        *known = shape;
    }
    return shape;
}

std::vector<std::string> Session::primaryKey(const std::string& database, const std::string& table) {
    constexpr int nameColumn = 4;
    constexpr int sequenceColumn = 5;
    Handle const statement = line().freshStatement();
    std::vector<std::pair<std::int64_t, std::string>> parts;
    SQLRETURN answer = primaryKeys(statement, database, table);
    if (!SQL_SUCCEEDED(answer) &&
        !tellsMissingFeature(databaseError(SQL_HANDLE_STMT, statement, options_.secrets).error)) {
        fail(SQL_HANDLE_STMT, statement);
    }
    TextReader name;
    while (SQL_SUCCEEDED(answer) && (answer = SQLFetch(statement)) != SQL_NO_DATA) {
        SQLSMALLINT sequence = 0;
        SQLLEN length = 0;
        // Part of a key would find more records than the one.
        if (!SQL_SUCCEEDED(answer) || name.read(statement, nameColumn) == TextReader::Outcome::failed ||
            !SQL_SUCCEEDED(SQLGetData(statement, sequenceColumn, SQL_C_SSHORT, &sequence, 0, &length))) {
            fail(SQL_HANDLE_STMT, statement);
        }
        parts.emplace_back(sequence, name.text());
    }
    line().dropStatement(); // a driver without this catalogue may leave it in any state
    std::sort(parts.begin(), parts.end());
    std::vector<std::string> names;
    names.reserve(parts.size());
    for (auto& [sequence, part] : parts) {
        names.push_back(std::move(part));
    }
    return names;
}

void Session::fail(short handleType, Handle handle) {
    const DatabaseError reported = databaseError(handleType, handle, options_.secrets);
    const Error error = dialect_->explained(reported.error);
    if (reported.connectionLost || line().isDead()) {
        loseLine();
        throw tellingCutLine(error);
    }
    line().dropStatement();
    throw error;
}

void Session::loseLine() {
    lost_ = true;
    line_.reset();
    if (transaction_ == Transaction::open) {
        transaction_ = Transaction::gone;
    }
    if (observers_->sessionLost) {
        observers_->sessionLost();
    }
}

void Session::noteFailureInTransaction() {
    if (transaction_ != Transaction::open) {
        return;
    }
    bool standing = true;
    ignoringErrors([&] { standing = dialect_->inTransaction(*this); }); // the first error is the one that counts
    if (!standing) {
        transaction_ = Transaction::gone;
    }
}

void Session::requireTransactionAlive() const {
    ReasonId reason = Reason::none;
    if (transaction_ == Transaction::gone) {
        reason = lost_ ? ReasonId(OdbcReason::lostInTransaction) : shared::DatabaseReason::transactionRolledBack;
    } else if (transaction_ == Transaction::unknown) {
        reason = OdbcReason::lostInCommit;
    }
    if (reason != Reason::none) {
        throw Error(errors::transactionLost, errorSource, {reason}, "25000");
    }
}

void Session::begin() {
    if (inTransaction()) {
        throw Error(errors::transactionExists, errorSource, {shared::DatabaseReason::transactionOpen}, "25000");
    }
    dialect_->begin(*this);
    transaction_ = Transaction::open;
}

void Session::commit() {
    if (!inTransaction()) {
        throw Error(errors::noTransactionToCommit, errorSource, {shared::DatabaseReason::noTransactionToCommit},
                    "25000");
    }
    requireTransactionAlive();
    try {
        guarded([this] { dialect_->commit(*this); });
    } catch (const Error& error) {
        if (!lost_) {
            throw;
        }
        transaction_ = Transaction::unknown;
        throw Error(error.number(), error.source(), {OdbcReason::commitUnknown, {}, {error.asCause()}},
                    error.sqlState());
    }
    transaction_ = Transaction::none;
}

void Session::rollback() {
    if (!inTransaction()) {
        throw Error(errors::noTransactionToRollBack, errorSource, {shared::DatabaseReason::noTransactionToRollBack},
                    "25000");
    }
    const bool standing = transaction_ == Transaction::open;
    transaction_ = Transaction::none; // if it fails the connection is lost, and the server rolls back
    if (standing) {
        dialect_->rollback(*this);
    }
}

bool Session::isIdle() const noexcept {
    return line_ != nullptr && !lost_ && !altered_ && !inTransaction() && !line_->isDead();
}

} // namespace z7::cashflow::odbc
