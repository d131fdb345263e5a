#include "ServerDouble.h"

#include "adapters/odbc/databaseKeyword.h"
#include "adapters/shared/session/PooledConnection.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <utility>

namespace z7::cashflow::host {
namespace {

using Answer = std::vector<std::vector<Variant>>;

std::unique_ptr<shared::RowSet> rowSet(const std::vector<std::string>& columns, const Answer& rows) {
    std::vector<shared::Column> described;
    for (const std::string& name : columns) {
        described.push_back({name, shared::ColumnType::any, 0});
    }
    auto set = std::make_unique<shared::RowSet>(std::make_shared<const shared::ColumnList>(std::move(described)));
    for (const auto& row : rows) {
        for (const Variant& value : row) {
            set->add(value);
        }
    }
    return set;
}

/// The text between the first "before" and the next "after".
std::string between(const std::string& text, const std::string& before, const std::string& after) {
    const std::size_t begin = text.find(before);
    if (begin == std::string::npos) {
        return {};
    }
    const std::size_t from = begin + before.size();
    return text.substr(from, text.find(after, from) - from);
}

std::string withoutBrackets(std::string name) {
    std::erase_if(name, [](char c) { return c == '[' || c == ']'; });
    return name;
}

/// A statement without leading comments.
std::string withoutComments(std::string text) {
    while (text.starts_with("--") || text.starts_with('\n')) {
        text.erase(0, text.find('\n') + 1);
    }
    return text;
}

ServerDouble::Column columnOf(const std::string& line) {
    std::istringstream words(line);
    ServerDouble::Column column;
    words >> column.name >> column.type;
    column.name = withoutBrackets(column.name);
    if (const std::size_t open = column.type.find('('); open != std::string::npos) {
        column.length = 2 * std::stoi(column.type.substr(open + 1));
        column.type.erase(open);
    }
    column.nullable = line.find("not null") == std::string::npos;
    column.numbered = line.find("identity(") != std::string::npos;
    column.filled = line.find("default") != std::string::npos;
    return column;
}

ServerDouble::Table tableOf(const std::string& statement) {
    ServerDouble::Table table;
    std::istringstream lines(statement);
    std::string line;
    std::getline(lines, line); // create table x (
    while (std::getline(lines, line) && !line.starts_with(")")) {
        if (line.find_first_not_of(' ') == 4 && !line.starts_with("    primary key")) {
            table.columns.push_back(columnOf(line));
        }
    }
    return table;
}

} // namespace

/// One session.
class DoubleSession final : public shared::Session, public std::enable_shared_from_this<DoubleSession> {
public:
    DoubleSession(ServerDouble& server, const std::string& connectionString, int number)
        : server_(server), number_(number) {
        const std::string database = odbc::databaseNamed(connectionString).value_or(server_.loginDatabase);
        server_.note("open " + database);
        if (!server_.content.contains(database)) {
            throw Error(4060, "double", "Cannot open database \"" + database + "\".", "42000");
        }
        database_ = database;
        ++server_.open_;
    }
    ~DoubleSession() override { close(); }
    DoubleSession(const DoubleSession&) = delete;
    DoubleSession& operator=(const DoubleSession&) = delete;

    shared::Result run(const std::string& text, bool updatable) override;
    [[nodiscard]] int number() const noexcept override { return number_; }
    void begin() override {
        call("begin");
        before_ = server_.content;
    }
    void commit() override {
        call("commit");
        before_.reset();
    }
    void rollback() override {
        call("rollback");
        undo();
    }
    [[nodiscard]] bool inTransaction() const noexcept override { return before_.has_value(); }
    [[nodiscard]] bool isIdle() const noexcept override { return false; }
    void close() noexcept override {
        if (!database_.empty()) {
            --server_.open_;
            database_.clear();
            undo();
        }
    }

    /// Adds a row to the table of a query.
    void insert(const std::string& query, const std::vector<std::string>& values) {
        const std::string table = withoutBrackets(between(query, " from ", " where"));
        call("row " + table);
        if (server_.refusedRows.contains(values.front())) {
            throw Error(2627, "double", "Violation of PRIMARY KEY constraint.", "23000");
        }
        this->table(table).rows.push_back(values);
    }

private:
    void call(const std::string& event) {
        if (database_.empty()) {
            throw Error(3704, "double", "The line is cut.", "08003");
        }
        try {
            server_.note(event);
        } catch (const Error&) {
            if (server_.cutsLine_) {
                close();
            }
            throw;
        }
    }
    void undo() {
        if (before_) {
            server_.content = *std::exchange(before_, std::nullopt);
        }
    }

    /// A table by its name, in the session's database or in the one given.
    ServerDouble::Table& table(const std::string& name) {
        const std::size_t dots = name.find("..");
        auto& tables = server_.content.at(dots == std::string::npos ? database_ : name.substr(0, dots));
        const std::string plain = dots == std::string::npos ? name : name.substr(dots + 2);
        const auto found = std::find_if(tables.begin(), tables.end(), [&plain](const auto& entry) {
            return asciiLower(entry.first) == asciiLower(plain);
        });
        if (found == tables.end()) {
            throw Error(208, "double", "Invalid object name '" + name + "'.", "42S02");
        }
        return found->second;
    }

    shared::Result answer(const std::string& statement);
    shared::Result catalogueOf(const std::string& statement);
    bool define(const std::string& statement);

    ServerDouble& server_;
    int number_;
    std::string database_;                        ///< empty if closed
    std::optional<ServerDouble::Content> before_; ///< the server's content when the transaction began
};

namespace {

class RowCounter final : public shared::RowWriter {
public:
    RowCounter(std::shared_ptr<DoubleSession> session, std::string query)
        : session_(std::move(session)), query_(std::move(query)) {}
    void insert(const std::vector<shared::Change>& changes) override {
        std::vector<std::string> values;
        for (const shared::Change& change : changes) {
            values.push_back(change.value.isNull() ? "(null)" : toText(change.value));
        }
        session_->insert(query_, values);
    }
    void update(const shared::RowSet&, std::size_t, const std::vector<shared::Change>&) override {
        ADD_FAILURE() << "nothing is updated while an account is made";
    }

private:
    std::shared_ptr<DoubleSession> session_;
    std::string query_;
};

class DoubleConnection final : public shared::PooledConnection {
public:
    explicit DoubleConnection(ServerDouble& server)
        : PooledConnection(std::make_shared<shared::SessionPool>([&server](const std::string& text, int number) {
                               return std::make_shared<DoubleSession>(server, text, number);
                           }),
                           std::make_shared<shared::Observers>()) {}
};

} // namespace

shared::Result DoubleSession::run(const std::string& text, bool updatable) {
    const std::string statement = withoutComments(text);
    call(statement.substr(0, statement.find('\n')));
    if (!updatable) {
        return answer(statement);
    }
    std::vector<std::string> columns;
    std::istringstream names(between(statement, "select ", " from"));
    for (std::string name; std::getline(names >> std::ws, name, ',');) {
        columns.push_back(withoutBrackets(name));
    }
    return {rowSet(columns, {}), std::make_shared<RowCounter>(shared_from_this(), statement)};
}

shared::Result DoubleSession::answer(const std::string& statement) {
    const auto one = [](const Variant& value) { return shared::Result{rowSet({"x"}, {{value}}), nullptr}; };
    const auto known = [&one](bool there) { return one(there ? Variant(std::int32_t{5}) : Variant()); };
    const std::string quoted = between(statement, "(N'", "')");
    if (statement == "select db_name() as name") {
        return one(Variant(database_));
    }
    if (statement.starts_with("select db_id(")) {
        return known(server_.content.contains(quoted));
    }
    if (statement.starts_with("select object_id(")) {
        return known(server_.content.at(database_).contains(quoted));
    }
    if (statement.starts_with("select 1 as same")) {
        return {rowSet({"same"}, server_.ignoresLetterCase || server_.caseBlind_.contains(database_)
                                     ? Answer{{Variant(std::int32_t{1})}}
                                     : Answer{}),
                nullptr};
    }
    if (statement.starts_with("select count(*) as found")) {
        const auto& rows = table(withoutBrackets(between(statement, " from ", " where"))).rows;
        const bool found = std::any_of(rows.begin(), rows.end(), [&statement](const auto& row) {
            return std::all_of(row.begin(), row.end(), [&statement](const std::string& value) {
                return statement.find("N'" + value + "'") != std::string::npos;
            });
        });
        return one(Variant(std::int32_t{found ? 1 : 0}));
    }
    if (statement == "select version from z7_schema_version") {
        if (!server_.schemaVersion) {
            throw Error(208, "double", "Invalid object name 'z7_schema_version'.", "42S02");
        }
        return {rowSet({"version"}, {{Variant(std::int32_t{*server_.schemaVersion})}}), nullptr};
    }
    if (statement == "select top 1 iRun from z7_run_row") {
        return {rowSet({"iRun"}, table("z7_run_row").rows.empty() ? Answer{} : Answer{{Variant(std::int32_t{1})}}),
                nullptr};
    }
    if (statement.starts_with("select cdefault from accinformation")) {
        return {rowSet({"cdefault"}, {}), nullptr};
    }
    if (statement == "select name from sys.tables" || statement.starts_with("select c.name as name")) {
        return catalogueOf(statement);
    }
    EXPECT_TRUE(define(statement)) << "a statement that the test does not know: " << statement;
    return {};
}

shared::Result DoubleSession::catalogueOf(const std::string& statement) {
    Answer rows;
    if (statement == "select name from sys.tables") {
        for (const auto& [name, table] : server_.content.at(database_)) {
            if (!table.columns.empty()) {
                rows.push_back({Variant(name)});
            }
        }
        return {rowSet({"name"}, rows), nullptr};
    }
    const std::string name = withoutBrackets(between(statement, "object_id(N'", "')"));
    EXPECT_EQ(name.starts_with("zqsystem.."), statement.find(" zqsystem.sys.columns") != std::string::npos);
    for (const ServerDouble::Column& column : table(name).columns) {
        rows.push_back({Variant(column.name), Variant(column.type),
                        Variant(std::int16_t(static_cast<std::int16_t>(column.length))), Variant(column.nullable),
                        Variant(column.numbered), Variant(std::int32_t{column.filled ? 1 : 0})});
    }
    return {rowSet({"name", "type", "length", "nullable", "numbered", "filled"}, rows), nullptr};
}

/// Runs a statement without a result; false if the statement is unknown.
bool DoubleSession::define(const std::string& statement) {
    std::istringstream words(statement);
    std::string verb;
    std::string kind;
    std::string name;
    words >> verb >> kind >> name;
    name = withoutBrackets(name);
    if (verb == "use") {
        database_ = withoutBrackets(kind);
        return server_.content.contains(database_);
    }
    if (kind == "database") {
        EXPECT_FALSE(before_) << "no database is made or dropped within a transaction";
        EXPECT_NE(name, database_) << "the session itself works in the database that it drops";
        if (statement.ends_with(" collate Chinese_PRC_CI_AS")) {
            server_.caseBlind_.insert(name);
        }
        verb == "create" ? static_cast<void>(server_.content[name]) : static_cast<void>(server_.content.erase(name));
        return true;
    }
    if (verb == "create" && (kind == "table" || kind == "view")) {
        EXPECT_TRUE(before_) << "tables are made within the transaction";
        return server_.content.at(database_)
            .emplace(name, kind == "table" ? tableOf(statement) : ServerDouble::Table{})
            .second;
    }
    if (statement.starts_with("select * into sales_voucher from gl_accvouch where 1=0")) {
        ServerDouble::Table copy = table("gl_accvouch");
        copy.rows.clear();
        return server_.content.at(database_).emplace("sales_voucher", std::move(copy)).second;
    }
    return statement.starts_with("create index ") || statement.starts_with("set identity_insert ") ||
           statement.starts_with("delete from accinformation where ");
}

ServerDouble::ServerDouble() : content{{"master", {}}, {"tempdb", {}}} {}

ServerDouble::~ServerDouble() { EXPECT_EQ(open_, 0U) << "a session is left open"; }

std::function<std::unique_ptr<Connection>()> ServerDouble::connections() {
    return [this] { return std::make_unique<DoubleConnection>(*this); };
}

void ServerDouble::note(const std::string& event) {
    journal_.push_back(event);
    if (++calls_ == failAt_) {
        throw cutsLine_ ? Error(17, "double", "The line to the server was cut.", "08S01")
                        : Error(262, "double", "Permission denied.", "42000");
    }
}

} // namespace z7::cashflow::host
