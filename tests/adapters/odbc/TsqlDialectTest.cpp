// What is sent to a server that speaks Transact-SQL, and how its answers are understood, with a driver that answers
// from a script.

#include "adapters/odbc/TsqlDialect.h"

#include "adapters/odbc/OdbcReason.h"
#include "z7cashflow/support/Date.h"

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// The driver manager's constants, on Windows after the system's own types.
#ifdef _WIN32
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

namespace z7::cashflow::odbc {
namespace {

using shared::ColumnType;
using tsql::TableName;
using Lines = std::vector<std::string>;
using Answer = std::optional<std::vector<Variant>>; ///< the only row of a result; none for a statement without a result

class ScriptedDriver final : public Driver {
public:
    using Driver::execute;
    Fetched execute(const std::string& text, const std::vector<Variant>& values,
                    const ResultDescription& /*description*/) override {
        sent.push_back(text);
        sentValues = values;
        Fetched fetched;
        if (!answers.empty()) {
            if (const Answer row = answers.front()) {
                fetched.rows = rowsOf(*row);
            }
            answers.pop_front();
        }
        return fetched;
    }
    [[nodiscard]] std::vector<std::string> primaryKey(const std::string& database, const std::string& table) override {
        asked.push_back(database + "/" + table);
        return table == keyed ? std::vector<std::string>{"first", "second"} : std::vector<std::string>();
    }

    Lines sent;                      ///< the texts
    std::vector<Variant> sentValues; ///< of the last text
    Lines asked;                     ///< the tables whose key was asked for, each after its database
    std::deque<Answer> answers;      ///< to the next texts
    std::string keyed;               ///< the table that has a primary key

private:
    static std::unique_ptr<shared::RowSet> rowsOf(const std::vector<Variant>& row) {
        std::vector<shared::Column> columns;
        for (std::size_t i = 0; i < row.size(); ++i) {
            columns.push_back({"c" + std::to_string(i), ColumnType::any, 0});
        }
        auto rows = std::make_unique<shared::RowSet>(std::make_shared<const shared::ColumnList>(std::move(columns)));
        for (const Variant& value : row) {
            rows->add(value);
        }
        return rows;
    }
};

class TsqlDialectTest : public testing::Test {
protected:
    static ConnectionOptions optionsOf(std::optional<std::int16_t> year) {
        ConnectionOptions options;
        options.year = year;
        options.timeout = 1234;
        return options;
    }
    void start(const Answer& probed, std::optional<std::int16_t> year = std::nullopt) {
        driver.answers = {std::nullopt, probed};
        dialect.start(driver, optionsOf(year));
    }
    std::vector<std::string> keyOf(const std::string& definition, const std::string& keyed) {
        driver.keyed = keyed;
        driver.answers = {Answer({Variant(definition)})};
        return dialect.key(driver, {TableName::Place::account, "view"}, {});
    }
    [[nodiscard]] ResultColumn typed(short sqlType, std::size_t size = 0, int digits = 0) const {
        DriverColumn column;
        column.name = "amount";
        column.sqlType = sqlType;
        column.size = size;
        column.digits = static_cast<decltype(column.digits)>(digits);
        return dialect.resultColumn(column);
    }

    TsqlDialect dialect;
    ScriptedDriver driver;
    const std::vector<Variant> unchangedTexts{std::int32_t{0x73B0}, "现金"};
};

TEST_F(TsqlDialectTest, ASessionReadsDatesYearFirstAndWaitsForLocksAsLongAsItIsTold) {
    start(unchangedTexts);
    ASSERT_EQ(driver.sent.size(), 2U);
    EXPECT_TRUE(driver.sent[0].starts_with("set dateformat ymd ")) << driver.sent[0];
    EXPECT_TRUE(driver.sent[0].ends_with(" set lock_timeout 1234")) << driver.sent[0];
    for (const char* setting :
         {"xact_abort off", "implicit_transactions off", "textsize 2147483647", "ansi_nulls on"}) {
        EXPECT_NE(driver.sent[0].find(std::string("set ") + setting + " "), std::string::npos) << setting;
    }
}

TEST_F(TsqlDialectTest, ASessionOfAYearSetsItInTheSession) {
    start(unchangedTexts, 2013);
    EXPECT_EQ(driver.sent.back(), "exec sp_set_session_context N'iyear', 2013");
}

TEST_F(TsqlDialectTest, ADriverThatGarblesTextsIsRefused) {
    const std::vector<Answer> garbled{std::nullopt, std::vector<Variant>{std::int32_t{0xE7}, "现金"},
                                      std::vector<Variant>{std::int32_t{0x73B0}, "??"},
                                      std::vector<Variant>{Variant(), Variant()}};
    for (const Answer& answer : garbled) {
        try {
            start(answer);
            ADD_FAILURE() << "a garbled answer was accepted";
        } catch (const Error& error) {
            EXPECT_EQ(error.why().reason, ReasonId(OdbcReason::driverNotUtf8));
            EXPECT_EQ(error.sqlState(), "22021");
        }
    }
}

TEST_F(TsqlDialectTest, TransactionsAreBegunAndEndedByStatements) {
    dialect.begin(driver);
    dialect.commit(driver);
    dialect.rollback(driver);
    EXPECT_EQ(driver.sent,
              (Lines{"begin transaction", "commit transaction", "if @@trancount > 0 rollback transaction"}));
}

TEST_F(TsqlDialectTest, ATransactionExistsAsLongAsTheServerCountsOne) {
    const std::vector<std::pair<Answer, bool>> cases{{std::vector<Variant>{std::int32_t{1}}, true},
                                                     {std::vector<Variant>{std::int32_t{2}}, true},
                                                     {std::vector<Variant>{std::int32_t{0}}, false},
                                                     {std::nullopt, false}};
    for (const auto& [answer, exists] : cases) {
        driver.answers = {answer};
        EXPECT_EQ(dialect.inTransaction(driver), exists);
    }
    EXPECT_EQ(driver.sent.back(), "select @@trancount");
}

TEST_F(TsqlDialectTest, ABatchIsSentUnchangedAndItsOnlyTableIsTheTargetOfWrites) {
    const std::string batch = "select * from [Code] where ccode=N'1001'";
    driver.answers = {std::vector<Variant>{1.0}, std::vector<Variant>{1.0}, std::nullopt};
    const Fetched writable = dialect.run(driver, batch, true);
    EXPECT_EQ(driver.sent.back(), batch);
    ASSERT_TRUE(writable.target);
    EXPECT_EQ(writable.target->place, TableName::Place::account);
    EXPECT_EQ(writable.target->name, "Code");
    EXPECT_FALSE(dialect.run(driver, batch, false).target);
    EXPECT_FALSE(dialect.run(driver, batch, true).target) << "a statement without a result has no records to write";
}

TEST_F(TsqlDialectTest, ATextThatOnlyTheServerUnderstandsHasNoTargetOfWrites) {
    for (const char* batch :
         {"select a.ccode from code a, code b", "select top 1 with ties ccode from code order by 1"}) {
        driver.answers = {std::vector<Variant>{1.0}};
        EXPECT_FALSE(dialect.run(driver, batch, true).target) << batch;
    }
}

TEST_F(TsqlDialectTest, ErrorsOfTheServerGetTheirStateFromTheirNumber) {
    const std::vector<std::pair<int, std::string>> states{
        {207, "42S22"},  {208, "42S02"},  {515, "23000"},  {547, "23000"},  {2601, "23000"},
        {2627, "23000"}, {1205, "40001"}, {1222, "HYT00"}, {2714, "42S01"}, {50000, "S1000"}};
    for (const auto& [number, state] : states) {
        const Error explained = dialect.explained(Error(number, "server", "the server's words", "S1000"));
        EXPECT_EQ(explained.sqlState(), state) << number;
        EXPECT_EQ(explained.number(), number);
        EXPECT_EQ(explained.description(), "the server's words");
    }
    EXPECT_EQ(
        dialect.explained(Error(33557097, "server", "canceling statement due to lock timeout", "S1000")).sqlState(),
        "HYT00");
}

TEST_F(TsqlDialectTest, ColumnsHaveTheTypesOfTheServer) {
    struct Case {
        short sqlType;
        std::size_t size;
        int digits;
        ColumnType type;
        FetchAs fetchAs;
    };
    constexpr short dateTimeOffset = -155;
    const std::vector<Case> cases{{SQL_BIT, 1, 0, ColumnType::boolean, FetchAs::whole},
                                  {SQL_TINYINT, 3, 0, ColumnType::byte, FetchAs::whole},
                                  {SQL_SMALLINT, 5, 0, ColumnType::int16, FetchAs::whole},
                                  {SQL_INTEGER, 10, 0, ColumnType::int32, FetchAs::whole},
                                  {SQL_BIGINT, 19, 0, ColumnType::any, FetchAs::whole},
                                  {SQL_DECIMAL, 19, 4, ColumnType::money, FetchAs::real},
                                  {SQL_DECIMAL, 10, 4, ColumnType::money, FetchAs::real},
                                  {SQL_NUMERIC, 19, 4, ColumnType::money, FetchAs::real},
                                  {SQL_DECIMAL, 19, 2, ColumnType::real, FetchAs::real},
                                  {SQL_DECIMAL, 18, 4, ColumnType::real, FetchAs::real},
                                  {SQL_REAL, 7, 0, ColumnType::real, FetchAs::real},
                                  {SQL_FLOAT, 15, 0, ColumnType::real, FetchAs::real},
                                  {SQL_DOUBLE, 15, 0, ColumnType::real, FetchAs::real},
                                  {SQL_TYPE_DATE, 10, 0, ColumnType::date, FetchAs::date},
                                  {SQL_TYPE_TIMESTAMP, 23, 3, ColumnType::date, FetchAs::date},
                                  {SQL_DATETIME, 23, 3, ColumnType::date, FetchAs::date},
                                  {dateTimeOffset, 34, 7, ColumnType::date, FetchAs::date},
                                  {SQL_WVARCHAR, 40, 0, ColumnType::text, FetchAs::text},
                                  {SQL_GUID, 36, 0, ColumnType::text, FetchAs::text}};
    for (const Case& expected : cases) {
        const ResultColumn column = typed(expected.sqlType, expected.size, expected.digits);
        EXPECT_EQ(column.column.name, "amount");
        EXPECT_EQ(column.column.type, expected.type) << expected.sqlType << " " << expected.size;
        EXPECT_EQ(column.fetchAs, expected.fetchAs) << expected.sqlType;
    }
    EXPECT_FALSE(dialect.needsOrigins());
}

TEST_F(TsqlDialectTest, OnlyBoundedTextsHaveALength) {
    EXPECT_EQ(typed(SQL_WVARCHAR, 40).column.length, 40);
    EXPECT_EQ(typed(SQL_WVARCHAR, 8000).column.length, 8000);
    EXPECT_EQ(typed(SQL_WLONGVARCHAR, 8001).column.length, 0);
    EXPECT_EQ(typed(SQL_INTEGER, 10).column.length, 0);
}

TEST_F(TsqlDialectTest, TablesAreNamedWithTheirDatabaseAndInBrackets) {
    EXPECT_EQ(dialect.tableText({TableName::Place::account, "code"}), "[code]");
    EXPECT_EQ(dialect.tableText({TableName::Place::system, "ua_period"}), "zqsystem..[ua_period]");
    EXPECT_EQ(dialect.tableText({TableName::Place::temp, "a]b"}), "tempdb..[a]]b]");
    EXPECT_EQ(dialect.columnText("iYear"), "[iYear]");
}

TEST_F(TsqlDialectTest, OnlyDatesAreComparedInTheTypeOfTheColumn) {
    EXPECT_EQ(dialect.comparand(Date(2.5)), "cast(? as datetime)");
    EXPECT_EQ(dialect.comparand("2013-01-01"), "?");
    EXPECT_EQ(dialect.comparand(Variant()), "?");
    EXPECT_EQ(dialect.stored(1.25), Variant(1.25));
}

TEST_F(TsqlDialectTest, ATablesKeyIsItsPrimaryKey) {
    driver.keyed = "ua_period";
    EXPECT_EQ(dialect.key(driver, {TableName::Place::system, "ua_period"}, {}), (Lines{"first", "second"}));
    EXPECT_EQ(driver.asked, Lines{"zqsystem/ua_period"});
    EXPECT_EQ(driver.sent, Lines{});
}

TEST_F(TsqlDialectTest, WithoutAPrimaryKeyTheIdentityColumnIsTheKey) {
    std::vector<DriverColumn> columns(3);
    columns[1].name = "i_id";
    columns[1].identity = true;
    EXPECT_EQ(dialect.key(driver, {TableName::Place::account, "gl_accvouch"}, columns), Lines{"i_id"});
    EXPECT_EQ(driver.sent, Lines{});
}

TEST_F(TsqlDialectTest, TheKeyOfAViewOnOneTableIsTheTablesKey) {
    EXPECT_EQ(keyOf("create view v as select * from dbo.gl_accvouch where iyear=2013", "gl_accvouch"),
              (Lines{"first", "second"}));
    EXPECT_EQ(driver.sent, Lines{"select object_definition(object_id(N'[view]'))"});
    EXPECT_EQ(keyOf("create view v as select * from account.dbo.gl_accvouch", "account"), Lines{})
        << "the owner and the database stand before the table's name";
}

TEST_F(TsqlDialectTest, AViewOnSeveralTablesHasNoKey) {
    for (const char* definition : {"create view v as select * from code a join gl_accvouch b on a.ccode=b.ccode",
                                   "create view v as select * from code, gl_accvouch",
                                   "create view v as select * from code union select * from code",
                                   "create view v as select * from code where ccode in (select ccode from gl_accvouch)",
                                   "select 'unfinished", ""}) {
        EXPECT_EQ(keyOf(definition, "code"), Lines{}) << definition;
    }
    driver.answers = {std::nullopt};
    EXPECT_EQ(dialect.key(driver, {TableName::Place::account, "unknown"}, {}), Lines{});
}

TEST_F(TsqlDialectTest, AChangeReportsTheNumberOfRowsThatTheServerCounted) {
    driver.answers = {std::vector<Variant>{std::int32_t{3}}, std::nullopt};
    EXPECT_EQ(dialect.change(driver, "update code set bend=? where ccode=?", {true, "1001"}), 3);
    EXPECT_EQ(driver.sent.back(), "update code set bend=? where ccode=?; select @@rowcount as changed");
    EXPECT_EQ(driver.sentValues, (std::vector<Variant>{true, "1001"}));
    EXPECT_EQ(dialect.change(driver, "update code set bend=1", {}), -1)
        << "without an answer nothing is known to have changed";
}

} // namespace
} // namespace z7::cashflow::odbc
