#include "adapters/sqlite/AccountTables.h"

#include "adapters/shared/loading/TableLoader.h"
#include "adapters/sqlite/Catalogue.h"
#include "adapters/sqlite/EmbeddedDatabase.h"
#include "adapters/sqlite/Session.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace z7::cashflow::sqlite {
namespace {

using conformance::errorOf;

class AccountTablesTest : public ::testing::Test {
protected:
    using Reason = shared::DatabaseReason;
    using Columns = std::vector<std::string>;
    void SetUp() override {
        connection_ = database_.open();
        tables_ = std::make_unique<AccountTables>(*connection_);
    }
    /// The refusal that an action raises.
    template <class Action> static shared::LoadError refusal(Action&& action) {
        try {
            action();
        } catch (const shared::LoadError& error) {
            return error;
        }
        ADD_FAILURE() << "no error came out";
        return {"", "", {}, {Reason::rowRefused}};
    }
    EmbeddedDatabase database_;
    std::unique_ptr<Connection> connection_;
    std::unique_ptr<AccountTables> tables_;
};

TEST_F(AccountTablesTest, ListsTablesAndColumns) {
    const std::vector<std::string> names = tables_->names();
    EXPECT_EQ(names.size(), 13U);
    EXPECT_NE(std::find(names.begin(), names.end(), "z7_run_row"), names.end());
    EXPECT_NE(std::find(names.begin(), names.end(), "gl_accvouch"), names.end());
    EXPECT_NE(std::find(names.begin(), names.end(), "ua_period"), names.end());
    Session session(parseConnectionString(database_.connectionString(std::nullopt, 0)), 1,
                    std::make_shared<const Observers>());
    using Place = tsql::TableName::Place;
    const std::vector<TableColumn> columns =
        session.catalogue().table({Place::account, "GL_CASHITEMDATASOURCE"})->columns;
    ASSERT_EQ(columns.size(), 8U);
    EXPECT_EQ(columns[1].name, "bDataStyle");
    EXPECT_EQ(columns[1].type, shared::ColumnType::byte);
    EXPECT_FALSE(columns[1].nullable);
    EXPECT_TRUE(columns[1].hasDefault);
    EXPECT_EQ(columns[2].length, 40);
    EXPECT_TRUE(columns[5].nullable);
    EXPECT_TRUE(columns[7].hasDefault) << "iID comes by itself";
    EXPECT_EQ(session.catalogue().table({Place::system, "ua_period"})->columns.size(), 5U);
    EXPECT_EQ(errorOf([&] { static_cast<void>(tables_->loader("nosuch", {"a"})); }).number(), 208);
}

TEST_F(AccountTablesTest, LoadsRows) {
    const auto loader = tables_->loader(
        "gl_accvouch", {"IYEAR", "iperiod", "isignseq", "ino_id", "inid", "ccode", "md", "dbill_date", "cdigest"});
    loader->add({"2013", "1", "2", "5", "1", "1001", "100.25", "2013-1-5", "摘要"});
    loader->add({"2013", "1", "2", "5", "2", "1001", std::nullopt, std::nullopt, std::nullopt});
    EXPECT_EQ(loader->count(), 2);
    const auto rows = connection_->Execute("select * from gl_accvouch order by inid");
    EXPECT_EQ(rows->Fields().Item("md"), Variant(100.25));
    EXPECT_EQ(rows->Fields().Item("mc"), Variant(0.0)) << "the default of a column that is not named";
    EXPECT_EQ(rows->Fields().Item("dbill_date"), Variant(Date::fromCivil(2013, 1, 5)));
    rows->MoveNext();
    EXPECT_EQ(rows->Fields().Item("md"), Variant());
    const auto periods = tables_->loader("ua_period", {"cacc_id", "iyear", "iid", "dbegin", "dend"});
    periods->add({"001", "2013", "1", "2013-01-01", "2013-01-31"});
    EXPECT_EQ(connection_->Execute("select * from zqsystem..ua_period")->RecordCount(), 1);
}

TEST_F(AccountTablesTest, ReportsAWrongColumn) {
    const shared::LoadError unknown = refusal([&] { static_cast<void>(tables_->loader("code", {"iyear", "nosuch"})); });
    EXPECT_EQ(unknown.fault().reason, Reason::columnUnknown);
    EXPECT_EQ(unknown.columns(), Columns{"nosuch"});
    EXPECT_EQ(unknown.fault().arguments, std::vector<std::string>{"code"});
    EXPECT_EQ(unknown.description(), "code.nosuch: table \"code\" has no such column");
    const shared::LoadError twice = refusal([&] {
        static_cast<void>(tables_->loader("code", {"iyear", "ccode", "IYEAR"}));
    });
    EXPECT_EQ(twice.fault().reason, Reason::columnTwice);
    EXPECT_EQ(twice.columns(), Columns{"IYEAR"});
    const shared::LoadError missing = refusal([&] { static_cast<void>(tables_->loader("code", {"iyear"})); });
    EXPECT_EQ(missing.fault().reason, Reason::columnMissing);
    EXPECT_EQ(missing.columns(), Columns{"ccode"});
}

TEST_F(AccountTablesTest, ReportsColumnAndReason) {
    const auto loader = tables_->loader("code", {"iyear", "ccode", "bend", "ccode_name"});
    const std::string longName(121, 'x');
    struct Case {
        std::vector<std::optional<std::string_view>> row;
        std::string column;
        Reason reason;
        std::vector<std::string> arguments;
    };
    const std::string least = "-32768";
    const std::string greatest = "32767";
    for (const Case& bad :
         std::vector<Case>{{{"2013", "1", "1"}, "", Reason::valueCountWrong, {"3", "4"}},
                           {{"20x3", "1", "1", "n"}, "iyear", Reason::notAWholeNumber, {"20x3", least, greatest}},
                           {{"2,013", "1", "1", "n"}, "iyear", Reason::notAWholeNumber, {"2,013", least, greatest}},
                           {{"2013.5", "1", "1", "n"}, "iyear", Reason::notAWholeNumber, {"2013.5", least, greatest}},
                           {{"40000", "1", "1", "n"}, "iyear", Reason::notAWholeNumber, {"40000", least, greatest}},
                           {{"", "1", "1", "n"}, "iyear", Reason::notAWholeNumber, {"", least, greatest}},
                           {{std::nullopt, "1", "1", "n"}, "iyear", Reason::columnWithoutValue, {}},
                           {{"2013", "1", "2", "n"}, "bend", Reason::notATruth, {"2"}},
                           {{"2013", "1", "yes", "n"}, "bend", Reason::notATruth, {"yes"}},
                           {{"2013", "1", "1", longName},
                            "ccode_name",
                            Reason::textTooLong,
                            {std::string(60, 'x') + "...", "120"}}}) {
        const shared::LoadError error = refusal([&] { loader->add(bad.row); });
        EXPECT_EQ(error.columns(), bad.column.empty() ? Columns() : Columns{bad.column}) << error.description();
        EXPECT_EQ(error.fault().reason, bad.reason) << error.description();
        EXPECT_EQ(error.fault().arguments, bad.arguments) << error.description();
        for (const std::string& argument : bad.arguments) {
            EXPECT_NE(error.description().find(argument), std::string::npos) << error.description();
        }
    }
    EXPECT_EQ(loader->count(), 0);
    loader->add({"2013", "1", "TRUE", "n"});
    const shared::LoadError again = refusal([&] { loader->add({"2013", "1", "0", "m"}); });
    EXPECT_EQ(again.fault().reason, Reason::keyTaken);
    EXPECT_EQ(again.columns(), (Columns{"iyear", "ccode"}));
    EXPECT_EQ(again.description(), "code: the key iyear, ccode is in the table already");
    EXPECT_EQ(loader->count(), 1);
    const auto dates = tables_->loader("zqsystem..ua_period", {"cacc_id", "iyear", "iid", "dbegin", "dend"});
    const shared::LoadError date = refusal([&] { dates->add({"1", "2013", "1", "2013-02-30", "2013-03-01"}); });
    EXPECT_EQ(date.columns(), Columns{"dbegin"});
    EXPECT_EQ(date.fault().reason, Reason::notADate);
    const auto amounts =
        tables_->loader("gl_accvouch", {"iyear", "iperiod", "isignseq", "ino_id", "inid", "ccode", "md"});
    EXPECT_EQ(refusal([&] {
                  amounts->add({"2013", "1", "2", "5", "1", "1001", "1,000"});
              })
                  .fault()
                  .reason,
              Reason::notANumber);
    EXPECT_EQ(refusal([&] {
                  amounts->add({"2013", "1", "2", "5", "1", "1001", "1e99"});
              })
                  .fault()
                  .reason,
              Reason::numberTooLarge);
    EXPECT_EQ(refusal([&] {
                  amounts->add({"2013", "1", "2", "5", "1", "1001", "0.12345"});
              })
                  .fault()
                  .reason,
              Reason::amountTooFine);
}

TEST_F(AccountTablesTest, WorksInsideTheCallersTransaction) {
    connection_->BeginTrans();
    const auto loader = tables_->loader("fitemss98", {"citemcode"});
    loader->add({"1"});
    connection_->RollbackTrans();
    EXPECT_EQ(connection_->Execute("select * from fitemss98")->RecordCount(), 0);
    connection_->Close();
    EXPECT_EQ(errorOf([&] { loader->add({"1"}); }).number(), 3704);
}

} // namespace
} // namespace z7::cashflow::sqlite
