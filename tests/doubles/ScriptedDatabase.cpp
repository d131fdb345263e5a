#include "doubles/ScriptedDatabase.h"

#include "doubles/ScriptedRecordset.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace z7::cashflow::test {

/// The session passed in by the host, on which the library may only run statements.
class ScriptedConnection final : public Connection {
public:
    explicit ScriptedConnection(ScriptedDatabase& database) : database_(database) {}

    void Open(const std::string&) override { forbid("Open"); }
    void Close() override { forbid("Close"); }
    [[nodiscard]] ObjectState State() const override { return ObjectState::open; }
    [[nodiscard]] std::string ConnectionString() const override { return ScriptedDatabase::connectionString(); }
    std::shared_ptr<Recordset> Execute(const std::string& commandText) override {
        return execute(database_, *this, "main", commandText);
    }
    [[nodiscard]] std::shared_ptr<Recordset> createRecordset() override {
        return std::make_shared<ScriptedRecordset>(database_, this, "main");
    }
    void BeginTrans() override { forbid("BeginTrans"); }
    void CommitTrans() override { forbid("CommitTrans"); }
    void RollbackTrans() override { forbid("RollbackTrans"); }

    static std::shared_ptr<Recordset> execute(ScriptedDatabase& database, Connection& on, const std::string& session,
                                              const std::string& commandText) {
        const Table table = database.run(session, commandText);
        auto records = std::make_shared<ScriptedRecordset>(database, &on, session);
        if (!table.columns.empty()) {
            records->fill(commandText, table, false);
        }
        return records;
    }

private:
    static void forbid(const char* operation) {
        ADD_FAILURE() << "the library must not call " << operation << " on the host's session";
    }

    ScriptedDatabase& database_;
};

/// A session that the library opens itself. Its use is recorded in the journal like a statement.
class ScriptedOwnConnection final : public Connection {
public:
    ScriptedOwnConnection(ScriptedDatabase& database, std::string name) : database_(database), name_(std::move(name)) {}
    ~ScriptedOwnConnection() override {
        if (open_) {
            database_.note(name_ + ": dropped");
        }
    }
    ScriptedOwnConnection(const ScriptedOwnConnection&) = delete;
    ScriptedOwnConnection& operator=(const ScriptedOwnConnection&) = delete;

    void Open(const std::string& connectionString) override {
        EXPECT_EQ(connectionString, ScriptedDatabase::connectionString());
        database_.run(name_, "Open");
        open_ = true;
    }
    void Close() override {
        needOpen();
        open_ = false;
        database_.note(name_ + ": Close");
    }
    [[nodiscard]] ObjectState State() const override { return open_ ? ObjectState::open : ObjectState::closed; }
    [[nodiscard]] std::string ConnectionString() const override { return ScriptedDatabase::connectionString(); }
    std::shared_ptr<Recordset> Execute(const std::string& commandText) override {
        needOpen();
        return ScriptedConnection::execute(database_, *this, name_, commandText);
    }
    [[nodiscard]] std::shared_ptr<Recordset> createRecordset() override {
        return std::make_shared<ScriptedRecordset>(database_, this, name_);
    }
    void BeginTrans() override { transaction("BeginTrans"); }
    void CommitTrans() override { transaction("CommitTrans"); }
    void RollbackTrans() override { transaction("RollbackTrans"); }

private:
    void needOpen() const {
        if (!open_) {
            throw Error(errors::objectClosed, "ScriptedDatabase", "the connection is closed");
        }
    }
    void transaction(const char* operation) {
        needOpen();
        database_.run(name_, operation);
    }

    ScriptedDatabase& database_;
    std::string name_;
    bool open_ = false;
};

std::unique_ptr<Connection> ScriptedDatabase::newConnection(const std::string& name) {
    for (const char* operation : {"Open", "BeginTrans", "CommitTrans", "RollbackTrans"}) {
        if (std::none_of(rules_.begin(), rules_.end(), [&](const Rule& rule) { return rule.text == operation; })) {
            accept(operation);
        }
    }
    return std::make_unique<ScriptedOwnConnection>(*this, name);
}

ScriptedDatabase::ScriptedDatabase() : connection_(std::make_unique<ScriptedConnection>(*this)) {}

ScriptedDatabase::~ScriptedDatabase() {
    EXPECT_TRUE(open_.empty()) << "a recordset outlives its database: " << open_.begin()->second;
}

void ScriptedDatabase::answer(const std::string& text, Table table) {
    rules_.push_back({text, false, [table = std::move(table)](const std::string&) { return table; }});
}

void ScriptedDatabase::answerPrefix(const std::string& prefix, Table table) {
    rules_.push_back({prefix, true, [table = std::move(table)](const std::string&) { return table; }});
}

void ScriptedDatabase::answerInTurn(const std::string& text, std::vector<Table> tables) {
    auto next = std::make_shared<std::size_t>(0);
    rules_.push_back({text, false, [tables = std::move(tables), next](const std::string&) {
                          const std::size_t turn = std::min(*next, tables.size() - 1);
                          ++*next;
                          return tables.at(turn);
                      }});
}

void ScriptedDatabase::answerWith(const std::string& prefix, std::function<Table(const std::string&)> make) {
    rules_.push_back({prefix, true, std::move(make)});
}

void ScriptedDatabase::fail(const std::string& text, const Error& error) {
    rules_.push_back({text, false, [error](const std::string&) -> Table { throw Error(error); }});
}

void ScriptedDatabase::failPrefix(const std::string& prefix, const Error& error) {
    rules_.push_back({prefix, true, [error](const std::string&) -> Table { throw Error(error); }});
}

void ScriptedDatabase::failStatement(std::size_t n, const Error& error) {
    statementFailure_.emplace(statements_.size() + n, error);
}

void ScriptedDatabase::clearJournal() {
    if (statementFailure_) {
        const std::size_t run = statements_.size();
        statementFailure_->first = statementFailure_->first > run ? statementFailure_->first - run : 0;
    }
    statements_.clear();
    texts_.clear();
    trace_.clear();
}

std::vector<std::string> ScriptedDatabase::openRecordsets() const {
    std::vector<std::string> sources;
    for (const auto& [recordset, source] : open_) {
        sources.push_back(source);
    }
    return sources;
}

std::size_t ScriptedDatabase::countOf(const std::string& prefix) const {
    return static_cast<std::size_t>(
        std::count_if(texts_.begin(), texts_.end(), [&](const auto& text) { return text.starts_with(prefix); }));
}

Table ScriptedDatabase::run(const std::string& session, const std::string& text) {
    statements_.push_back(session + ": " + text);
    texts_.push_back(text);
    trace_.push_back(session + ": " + text);
    if (statementFailure_ && statementFailure_->first == statements_.size()) {
        throw Error(statementFailure_->second);
    }
    for (const bool prefix : {false, true}) {
        const auto found = std::find_if(rules_.rbegin(), rules_.rend(), [&](const Rule& rule) {
            return rule.prefix == prefix && (prefix ? text.starts_with(rule.text) : text == rule.text);
        });
        if (found != rules_.rend()) {
            return found->make(text);
        }
    }
    ++unknownStatements_;
    ADD_FAILURE() << "a statement that the test does not know, on " << session << ":\n" << text;
    throw Error(99999, "ScriptedDatabase", "unknown statement: " + text);
}

} // namespace z7::cashflow::test
