#include "adapters/sqlite/TableLoader.h"

#include "adapters/sqlite/EmbeddedDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace z7::cashflow::sqlite {
namespace {

using conformance::errorOf;

class TableLoaderTest : public ::testing::Test {
protected:
    void SetUp() override { connection_ = database_.open(); }
    template <class Action> static std::pair<std::string, std::string> refusal(Action&& action) {
        try {
            action();
        } catch (const LoadError& error) {
            EXPECT_NE(error.description().find(error.reason()), std::string::npos);
            return {error.column(), error.reason()};
        }
        ADD_FAILURE() << "no error came out";
        return {};
    }
    EmbeddedDatabase database_;
    std::unique_ptr<Connection> connection_;
};

TEST_F(TableLoaderTest, lists_tables_and_columns) {
    const std::vector<std::string> names = tableNames(*connection_);
    EXPECT_EQ(names.size(), 11U);
    EXPECT_NE(std::find(names.begin(), names.end(), "gl_accvouch"), names.end());
    EXPECT_NE(std::find(names.begin(), names.end(), "ua_period"), names.end());
    const std::vector<TableColumn> columns = tableColumns(*connection_, "GL_CASHITEMDATASOURCE");
    ASSERT_EQ(columns.size(), 8U);
    EXPECT_EQ(columns[1].name, "bDataStyle");
    EXPECT_EQ(columns[1].type, cursor::ColumnType::byte);
    EXPECT_FALSE(columns[1].nullable);
    EXPECT_TRUE(columns[1].hasDefault);
    EXPECT_EQ(columns[2].length, 40);
    EXPECT_TRUE(columns[5].nullable);
    EXPECT_TRUE(columns[7].hasDefault) << "iID comes by itself";
    EXPECT_EQ(tableColumns(*connection_, "zqsystem..ua_period").size(), 5U);
    EXPECT_EQ(errorOf([&] { static_cast<void>(tableColumns(*connection_, "nosuch")); }).number(), 208);
}

TEST_F(TableLoaderTest, loads_rows) {
    TableLoader loader(*connection_, "gl_accvouch",
                       {"IYEAR", "iperiod", "isignseq", "ino_id", "inid", "ccode", "md", "dbill_date", "cdigest"});
    loader.add({"2013", "1", "2", "5", "1", "1001", "100.25", "2013-1-5", "摘要"});
    loader.add({"2013", "1", "2", "5", "2", "1001", std::nullopt, std::nullopt, std::nullopt});
    EXPECT_EQ(loader.count(), 2);
    const auto rows = connection_->Execute("select * from gl_accvouch order by inid");
    EXPECT_EQ(rows->Fields().Item("md"), Variant(100.25));
    EXPECT_EQ(rows->Fields().Item("mc"), Variant(0.0)) << "the default of a column that is not named";
    EXPECT_EQ(rows->Fields().Item("dbill_date"), Variant(Date::fromCivil(2013, 1, 5)));
    rows->MoveNext();
    EXPECT_EQ(rows->Fields().Item("md"), Variant());
    TableLoader periods(*connection_, "ua_period", {"cacc_id", "iyear", "iid", "dbegin", "dend"});
    periods.add({"001", "2013", "1", "2013-01-01", "2013-01-31"});
    EXPECT_EQ(connection_->Execute("select * from zqsystem..ua_period")->RecordCount(), 1);
}

TEST_F(TableLoaderTest, tells_column_and_reason) {
    EXPECT_EQ(refusal([&] { TableLoader(*connection_, "code", {"iyear", "nosuch"}); }).first, "nosuch");
    EXPECT_EQ(refusal([&] { TableLoader(*connection_, "code", {"iyear", "ccode", "IYEAR"}); }).first, "IYEAR");
    EXPECT_EQ(refusal([&] { TableLoader(*connection_, "code", {"iyear"}); }).first, "ccode");
    TableLoader loader(*connection_, "code", {"iyear", "ccode", "bend", "ccode_name"});
    const std::string longName(121, 'x');
    for (const auto& [row, column] : std::vector<std::pair<std::vector<std::optional<std::string_view>>, std::string>>{
             {{"2013", "1", "1"}, ""},
             {{"20x3", "1", "1", "n"}, "iyear"},
             {{"2,013", "1", "1", "n"}, "iyear"},
             {{"2013.5", "1", "1", "n"}, "iyear"},
             {{"40000", "1", "1", "n"}, "iyear"},
             {{"", "1", "1", "n"}, "iyear"},
             {{std::nullopt, "1", "1", "n"}, "iyear"},
             {{"2013", "1", "2", "n"}, "bend"},
             {{"2013", "1", "yes", "n"}, "bend"},
             {{"2013", "1", "1", longName}, "ccode_name"}}) {
        const auto [name, reason] = refusal([&, r = row] { loader.add(r); });
        EXPECT_EQ(name, column) << reason;
        EXPECT_FALSE(reason.empty());
    }
    EXPECT_EQ(loader.count(), 0);
    loader.add({"2013", "1", "TRUE", "n"});
    const auto [name, reason] = refusal([&] { loader.add({"2013", "1", "0", "m"}); });
    EXPECT_NE(reason.find("UNIQUE"), std::string::npos);
    EXPECT_EQ(loader.count(), 1);
    TableLoader dates(*connection_, "zqsystem..ua_period", {"cacc_id", "iyear", "iid", "dbegin", "dend"});
    EXPECT_EQ(refusal([&] { dates.add({"1", "2013", "1", "2013-02-30", "2013-03-01"}); }).first, "dbegin");
}

TEST_F(TableLoaderTest, works_inside_the_callers_transaction) {
    connection_->BeginTrans();
    TableLoader loader(*connection_, "fitemss98", {"citemcode"});
    loader.add({"1"});
    connection_->RollbackTrans();
    EXPECT_EQ(connection_->Execute("select * from fitemss98")->RecordCount(), 0);
    connection_->Close();
    EXPECT_EQ(errorOf([&] { loader.add({"1"}); }).number(), 3704);
}

} // namespace
} // namespace z7::cashflow::sqlite
