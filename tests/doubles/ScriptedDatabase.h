#pragma once

#include "adapters/shared/recordset/Column.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Recordset.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/Variant.h"

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::test {

/// The records of one answer. Without columns it is a statement without a result.
struct Table {
    std::vector<std::string> columns;
    std::vector<std::vector<Variant>> rows;
    /// The types of columns, by their names as in columns; a column that is not listed has the type of its values.
    std::map<std::string, shared::ColumnType> types;
};

/// The journal of a ScriptedDatabase and what stands behind its sessions.
class ScriptedDatabase {
public:
    ScriptedDatabase();
    ~ScriptedDatabase();
    ScriptedDatabase(const ScriptedDatabase&) = delete;
    ScriptedDatabase& operator=(const ScriptedDatabase&) = delete;

    /// The session that a host would hand in; open, and named "main" in the journal.
    [[nodiscard]] Connection& connection() noexcept { return *connection_; }
    /// A session for the library to open by itself, closed at first. In the journal it goes by the name, and its Open,
    /// BeginTrans, CommitTrans and RollbackTrans count as statements of these texts; the trace has also its Close.
    [[nodiscard]] std::unique_ptr<Connection> newConnection(const std::string& name);
    [[nodiscard]] static std::string connectionString() { return "db=scripted;user=tester"; }

    // Answers. A rule for the exact text goes before a rule for its beginning; of two rules of a kind the later one
    // counts.
    void answer(const std::string& text, Table table);
    void answerPrefix(const std::string& prefix, Table table);
    /// Gives the tables one after another; the last stays.
    void answerInTurn(const std::string& text, std::vector<Table> tables);
    /// The table is asked for each time.
    void answerWith(const std::string& prefix, std::function<Table(const std::string& text)> make);
    /// A statement without a result.
    void accept(const std::string& text) { answer(text, {}); }
    void acceptPrefix(const std::string& prefix) { answerPrefix(prefix, {}); }
    void fail(const std::string& text, const Error& error);
    void failPrefix(const std::string& prefix, const Error& error);
    /// The n-th statement from now on, counted from 1 over all sessions, raises the error.
    void failStatement(std::size_t n, const Error& error);
    /// The next Update of a recordset raises the error.
    void failUpdate(const Error& error) { updateFailure_ = error; }

    /// All statements in their order: "main: text" for Execute, "main(cursor,lock): text" for a recordset opened on the
    /// handed session, "own(cursor,lock,location): text" for one opened on a connection string.
    [[nodiscard]] const std::vector<std::string>& statements() const noexcept { return statements_; }
    /// The texts of the statements alone.
    [[nodiscard]] const std::vector<std::string>& texts() const noexcept { return texts_; }
    /// Statements and besides them "AddNew", "field = text", "Update", "Filter text", "Close".
    [[nodiscard]] const std::vector<std::string>& trace() const noexcept { return trace_; }
    void clearJournal();
    /// Sources of the recordsets that are open at the moment.
    [[nodiscard]] std::vector<std::string> openRecordsets() const;
    /// Sources of the recordsets that went out of use without having been closed.
    [[nodiscard]] const std::vector<std::string>& droppedRecordsets() const noexcept { return dropped_; }
    /// The number of statements, their sessions left aside, that begin with a text.
    [[nodiscard]] std::size_t countOf(const std::string& prefix) const;
    /// How many statements were answered by no rule. Each has failed the test already.
    [[nodiscard]] std::size_t unknownStatements() const noexcept { return unknownStatements_; }

private:
    friend class ScriptedConnection;
    friend class ScriptedOwnConnection;
    friend class ScriptedRecordset;

    struct Rule {
        std::string text;
        bool prefix = false;
        std::function<Table(const std::string&)> make;
    };

    Table run(const std::string& session, const std::string& text);
    void note(const std::string& event) { trace_.push_back(event); }

    std::unique_ptr<Connection> connection_;
    std::vector<Rule> rules_;
    std::vector<std::string> statements_;
    std::vector<std::string> texts_;
    std::vector<std::string> trace_;
    std::map<const void*, std::string> open_;
    std::vector<std::string> dropped_;
    std::optional<std::pair<std::size_t, Error>> statementFailure_;
    std::optional<Error> updateFailure_;
    std::size_t unknownStatements_ = 0;
};

} // namespace z7::cashflow::test
