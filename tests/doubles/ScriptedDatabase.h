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
    /// The types of columns by name, spelled as in columns; an unlisted column has the type of its values.
    std::map<std::string, shared::ColumnType> types;
};

/// The journal of a ScriptedDatabase and the rules by which its sessions answer.
class ScriptedDatabase {
public:
    ScriptedDatabase();
    ~ScriptedDatabase();
    ScriptedDatabase(const ScriptedDatabase&) = delete;
    ScriptedDatabase& operator=(const ScriptedDatabase&) = delete;

    /// The session that a host would pass in; open, and named "main" in the journal.
    [[nodiscard]] Connection& connection() noexcept { return *connection_; }
    /// A session for the library to open itself, initially closed. The journal uses the given name, and its
    /// Open, BeginTrans, CommitTrans and RollbackTrans are recorded as statements; the trace also contains its
    /// Close.
    [[nodiscard]] std::unique_ptr<Connection> newConnection(const std::string& name);
    [[nodiscard]] static std::string connectionString() { return "db=scripted;user=tester"; }

    // Rules for answers. A rule for the exact text takes precedence over a rule for its beginning; of two rules
    // of the same kind the later one applies.
    void answer(const std::string& text, Table table);
    void answerPrefix(const std::string& prefix, Table table);
    /// Returns the tables one after another; the last one is repeated.
    void answerInTurn(const std::string& text, std::vector<Table> tables);
    /// The function is called each time.
    void answerWith(const std::string& prefix, std::function<Table(const std::string& text)> make);
    /// A statement without a result.
    void accept(const std::string& text) { answer(text, {}); }
    void acceptPrefix(const std::string& prefix) { answerPrefix(prefix, {}); }
    void fail(const std::string& text, const Error& error);
    void failPrefix(const std::string& prefix, const Error& error);
    /// The n-th statement from now, counted from 1 over all sessions, raises the error.
    void failStatement(std::size_t n, const Error& error);
    /// The next Update of a recordset raises the error.
    void failUpdate(const Error& error) { updateFailure_ = error; }

    /// All statements in their order: "main: text" for Execute, "main(cursor,lock): text" for a recordset
    /// opened on the session passed in, "own(cursor,lock,location): text" for one opened by connection string.
    [[nodiscard]] const std::vector<std::string>& statements() const noexcept { return statements_; }
    /// Only the texts of the statements.
    [[nodiscard]] const std::vector<std::string>& texts() const noexcept { return texts_; }
    /// The statements, and "AddNew", "field = text", "Update", "Filter text", "Close".
    [[nodiscard]] const std::vector<std::string>& trace() const noexcept { return trace_; }
    void clearJournal();
    /// Sources of the recordsets that are currently open.
    [[nodiscard]] std::vector<std::string> openRecordsets() const;
    /// Sources of the recordsets that were destroyed without being closed.
    [[nodiscard]] const std::vector<std::string>& droppedRecordsets() const noexcept { return dropped_; }
    /// The number of statements, of any session, that begin with a text.
    [[nodiscard]] std::size_t countOf(const std::string& prefix) const;
    /// The number of statements without a matching rule. Each has already failed the test.
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
