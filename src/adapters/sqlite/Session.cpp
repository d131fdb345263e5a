#include "adapters/sqlite/Session.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/sqlite/RecordWriter.h"
#include "adapters/sqlite/TempDatabase.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/tsql/declaredType.h"
#include "adapters/tsql/tokens.h"
#include "adapters/tsql/transaction.h"
#include "z7cashflow/support/Error.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace z7::cashflow::sqlite {
namespace {

std::string orEmpty(const char* text) { return text == nullptr ? std::string() : std::string(text); }

bool namesTempDatabase(const tsql::Step& step) {
    using Place = tsql::TableName::Place;
    return step.target.place == Place::temp ||
           std::any_of(step.tables.begin(), step.tables.end(),
                       [](const tsql::TableName& table) { return table.place == Place::temp; });
}

} // namespace

Session::Session(const ConnectionOptions& options, int number, std::shared_ptr<const Observers> observers)
    : number_(number),
      observers_(std::move(observers)), lockedRemark_{SqliteReason::locked,
                                                      {utf8Of(options.database), std::to_string(options.timeout)}} {
    OpenAccount opened = openAccount(options);
    handle_ = std::move(opened.handle);
    file_ = std::move(opened.file);
    unlocked_ = std::move(opened.unlocked);
    readOnly_ = opened.readOnly;
    catalogue_.emplace(handle_.get());
}

Session::~Session() { close(); }

void Session::close() noexcept {
    rewritings_.clear();
    own_.clear();
    catalogue_.reset();
    inTransaction_ = false;
    handle_.reset(); // rolls back an open transaction
    tempDatabase_.reset();
}

sqlite3* Session::handle() const {
    if (handle_ == nullptr) {
        raisePlatformError(shared::DatabaseReason::objectClosed);
    }
    return handle_.get();
}

Catalogue& Session::catalogue() {
    static_cast<void>(handle());
    return *catalogue_;
}

void Session::useTempDatabase() {
    if (tempDatabase_ == nullptr) {
        auto temp = TempDatabase::of(file_);
        temp->attachTo(handle());
        tempDatabase_ = std::move(temp);
    }
}

shared::Result Session::run(const std::string& text, bool updatable) {
    static_cast<void>(handle());
    if (observers_->statement) {
        observers_->statement(number_, text);
    }
    requireTransactionAlive();
    const std::shared_ptr<std::vector<PreparedStep>> steps = rewritings_.stepsOf(text);
    const std::vector<tsql::Literal> literals = rewritings_.literals();
    shared::Result result;
    bool guardHolds = true;
    for (PreparedStep& step : *steps) {
        if (!guardHolds) {
            guardHolds = true;
            continue;
        }
        if (namesTempDatabase(step.step)) {
            useTempDatabase();
        }
        if (step.step.kind == tsql::Step::Kind::guard) {
            prepare(step);
            bind(step, literals);
            const StatementReset reset(*step.statement);
            const bool found = step.statement->step(lockedRemark_) && sqlite3_column_int(step.statement->get(), 0) != 0;
            guardHolds = found == step.step.runNextIfFound;
        } else {
            runStep(step, literals, updatable, result);
        }
    }
    requireUnchanged();
    return result;
}

void Session::prepare(PreparedStep& step) {
    if (step.statement != nullptr) {
        return;
    }
    step.bindings.clear();
    for (const tsql::Parameter& parameter : step.step.parameters) {
        LiteralBinding binding;
        binding.literal = parameter.literal;
        binding.negative = parameter.negative;
        binding.assigned = parameter.use == tsql::Parameter::Use::assign;
        std::shared_ptr<const TableShape> holder;
        const TableColumn* column =
            parameter.use == tsql::Parameter::Use::plain ? nullptr : catalogue().column(parameter.column, holder);
        if (column != nullptr) {
            binding.column = {column->name, column->type, column->length};
        }
        step.bindings.push_back(std::move(binding));
    }
    auto statement = std::make_unique<Statement>(handle(), step.step.sql);
    step.statement = std::move(statement);
    readColumns(step);
}

void Session::readColumns(PreparedStep& step) {
    sqlite3_stmt* statement = step.statement->get();
    const int count = sqlite3_column_count(statement);
    std::vector<shared::Column> columns;
    step.origins.clear();
    for (int i = 0; i < count; ++i) {
        std::string name = orEmpty(sqlite3_column_name(statement, i));
        std::string type = orEmpty(sqlite3_column_decltype(statement, i));
        const tsql::ResultItem* item =
            tsql::itemOf(step.step.items, static_cast<std::size_t>(i), static_cast<std::size_t>(count));
        if (item != nullptr) {
            name = item->unnamed ? std::string() : name;
            type = item->castType.empty() ? type : item->castType;
        }
        columns.push_back(tsql::declaredColumn(std::move(name), type));
        if (step.step.writable) {
            step.origins.push_back({orEmpty(sqlite3_column_database_name(statement, i)),
                                    orEmpty(sqlite3_column_table_name(statement, i)),
                                    orEmpty(sqlite3_column_origin_name(statement, i))});
        }
    }
    step.columns = std::make_shared<const shared::ColumnList>(std::move(columns));
}

void Session::bind(PreparedStep& step, const std::vector<tsql::Literal>& literals) {
    int position = 0;
    for (const LiteralBinding& binding : step.bindings) {
        bindLiteral(*step.statement, ++position, binding, literals[static_cast<std::size_t>(binding.literal)]);
    }
    observe(*step.statement);
}

void Session::observe(const Statement& statement) const {
    if (observers_->rewritten) {
        observers_->rewritten(number_, statement.expanded());
    }
}

void Session::observe(const std::string& sql) const {
    if (observers_->rewritten) {
        observers_->rewritten(number_, sql);
    }
}

void Session::runText(const std::string& sql) {
    observe(sql);
    executeScript(handle(), sql, lockedRemark_);
}

tsql::TextRunner Session::textRunner() {
    // An observer that refuses statements must not prevent the session from rolling back.
    return {[this](const std::string& sql) { runText(sql); },
            [this](const std::string& sql) { executeScript(handle(), sql); }};
}

void Session::runStep(PreparedStep& step, const std::vector<tsql::Literal>& literals, bool updatable,
                      shared::Result& result) {
    prepare(step);
    if (step.step.kind == tsql::Step::Kind::queryInto) {
        runInto(step, literals);
        return;
    }
    bind(step, literals);
    if (step.step.kind == tsql::Step::Kind::query) {
        std::unique_ptr<shared::RowSet> rows = fetch(step);
        if (result.rows == nullptr) {
            result.rows = std::move(rows);
            if (updatable && step.step.writable) {
                result.writer = std::make_shared<RecordWriter>(shared_from_this(), step.step.target, step.origins);
            }
        }
        return;
    }
    {
        const StatementReset reset(*step.statement);
        while (step.statement->step(lockedRemark_)) {
        }
    }
    if (step.step.kind == tsql::Step::Kind::drop) {
        catalogue().forget();
    }
}

std::unique_ptr<shared::RowSet> Session::fetch(PreparedStep& step) {
    const StatementReset reset(*step.statement);
    sqlite3_stmt* statement = step.statement->get();
    bool row = step.statement->step(lockedRemark_);
    const int preparations = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0);
    if (preparations != step.preparations) { // another session has changed the tables meanwhile
        step.preparations = preparations;
        readColumns(step);
    }
    auto rows = std::make_unique<shared::RowSet>(step.columns);
    const int columns = step.columns->count();
    while (row) {
        for (int i = 0; i < columns; ++i) {
            switch (sqlite3_column_type(statement, i)) {
            case SQLITE_NULL:
                rows->addNull();
                break;
            case SQLITE_INTEGER:
                rows->addInteger(sqlite3_column_int64(statement, i));
                break;
            case SQLITE_FLOAT:
                rows->addReal(sqlite3_column_double(statement, i));
                break;
            default: {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                rows->addText({text, static_cast<std::size_t>(sqlite3_column_bytes(statement, i))});
                break;
            }
            }
        }
        row = step.statement->step(lockedRemark_);
    }
    return rows;
}

void Session::runInto(PreparedStep& step, const std::vector<tsql::Literal>& literals) {
    std::vector<std::string> columns;
    columns.reserve(static_cast<std::size_t>(step.columns->count()));
    for (int i = 0; i < step.columns->count(); ++i) {
        columns.push_back(columnText(step, i));
    }
    tsql::fillNewTable(step.step, columns, textRunner(), [&](const std::string& insert) {
        PreparedStep copy;
        copy.step = step.step;
        copy.step.kind = tsql::Step::Kind::change;
        copy.step.sql = insert;
        shared::Result none;
        runStep(copy, literals, false, none);
    });
}

std::string Session::columnText(const PreparedStep& step, int column) const {
    const std::string& name = (*step.columns)[column].name;
    if (name.empty()) {
        tsql::raiseError(tsql::TsqlReason::columnUnnamed);
    }
    std::string text = tsql::quotedName(name);
    sqlite3_stmt* statement = step.statement->get();
    const char* table = sqlite3_column_table_name(statement, column);
    if (table == nullptr) {
        const tsql::ResultItem* item = itemOf(step.step.items, column, step.columns->count());
        return item == nullptr || item->castType.empty() ? text : text + ' ' + item->castType;
    }
    const char* type = nullptr;
    const char* collation = nullptr;
    int notNull = 0;
    int inKey = 0;
    int automatic = 0;
    const int code = sqlite3_table_column_metadata(handle(), sqlite3_column_database_name(statement, column), table,
                                                   sqlite3_column_origin_name(statement, column), &type, &collation,
                                                   &notNull, &inKey, &automatic);
    if (code != SQLITE_OK) {
        raiseDatabaseError(handle());
    }
    text += ' ' + orEmpty(type);
    if (collation != nullptr && orEmpty(collation) != "BINARY") {
        text += " COLLATE " + orEmpty(collation);
    }
    return notNull != 0 || inKey != 0 ? text + " NOT NULL" : text;
}

std::int64_t Session::runOwn(const std::string& sql, const std::vector<Variant>& values) {
    sqlite3* const database = handle();
    requireTransactionAlive();
    std::unique_ptr<Statement>* known = own_.find(sql);
    if (known == nullptr) {
        known = &own_.insert(sql, std::make_unique<Statement>(database, sql));
    }
    Statement& statement = **known;
    int position = 0;
    for (const Variant& value : values) {
        ++position;
        if (const auto* text = value.get<std::string>()) {
            statement.bindBorrowed(position, *text); // the values live longer than the run
        } else {
            statement.bind(position, value);
        }
    }
    observe(statement);
    const auto before = sqlite3_total_changes64(database);
    const StatementReset reset(statement);
    while (statement.step(lockedRemark_)) {
    }
    return sqlite3_total_changes64(database) - before;
}

void Session::begin() {
    if (inTransaction_) {
        raiseDatabaseError(SQLITE_ERROR, {shared::DatabaseReason::transactionOpen});
    }
    if (readOnly_) {
        raiseDatabaseError(SqliteReason::fileReadOnly, {utf8Of(file_)});
    }
    tsql::beginTransaction(textRunner());
    inTransaction_ = true;
    try {
        requireInPlace();
    } catch (const Error&) {
        ignoringErrors([this] { rollback(); });
        throw;
    }
}

void Session::commit() {
    requireTransactionAlive();
    if (!inTransaction_) {
        raiseDatabaseError(SQLITE_ERROR, {shared::DatabaseReason::noTransactionToCommit});
    }
    requireInPlace();
    runText("COMMIT");
    inTransaction_ = false;
    requireInPlace(); // it may have been removed during the commit
}

void Session::rollback() {
    if (!inTransaction_) {
        raiseDatabaseError(SQLITE_ERROR, {shared::DatabaseReason::noTransactionToRollBack});
    }
    inTransaction_ = false;
    if (sqlite3_get_autocommit(handle()) == 0) { // otherwise the database has already rolled back
        runText("ROLLBACK");
    }
}

void Session::waitForDisk(bool wait) {
    executeScript(handle(), std::string("PRAGMA main.synchronous = ") + (wait ? "FULL" : "NORMAL"));
    if (!wait) {
        return;
    }
    // What was meanwhile moved to the account's file is on the disk; what is still in the log is not.
    sqlite3_file* log = nullptr;
    const bool known = sqlite3_file_control(handle(), "main", SQLITE_FCNTL_JOURNAL_POINTER, &log) == SQLITE_OK;
    if (known && log != nullptr && log->pMethods != nullptr) {
        const int code = log->pMethods->xSync(log, SQLITE_SYNC_NORMAL);
        if (code != SQLITE_OK) {
            raiseDatabaseError(SQLITE_IOERR_FSYNC, {Reason::verbatim, {sqlite3_errstr(code)}});
        }
    }
}

bool Session::isIdle() const noexcept {
    return handle_ != nullptr && !inTransaction_ && sqlite3_get_autocommit(handle_.get()) != 0;
}

void Session::requireTransactionAlive() const {
    if (inTransaction_ && sqlite3_get_autocommit(handle()) != 0) {
        raiseDatabaseError(SQLITE_ABORT_ROLLBACK, {shared::DatabaseReason::transactionRolledBack});
    }
}

void Session::requireInPlace() const {
    for (const char* name : {"main", "zqsystem"}) {
        int moved = 0;
        if (sqlite3_file_control(handle(), name, SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0) {
            raiseDatabaseError(SqliteReason::fileMoved, {orEmpty(sqlite3_db_filename(handle(), name))});
        }
    }
}

void Session::requireUnchanged() const {
    for (const UnlockedFile& file : unlocked_) {
        if (!file.isUnchanged()) {
            raiseDatabaseError(SqliteReason::fileChanged, {utf8Of(file.path())});
        }
    }
}

} // namespace z7::cashflow::sqlite
