#include "adapters/memory/Connection.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace z7::cashflow::memory {
namespace {

using shared::ColumnType;

Variant i32(int number) { return Variant(std::int32_t{number}); }

template <class Action> int errorOf(Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

class Memory : public ::testing::Test {
protected:
    Memory() {
        const auto columns = std::make_shared<const shared::ColumnList>(
            std::vector<shared::Column>{{"inid", ColumnType::int32, 0}, {"ccode", ColumnType::text, 0}});
        tables_->insert({"lines", {columns, {{i32(1), "1001"}, {i32(2), "6001"}, {i32(2), "6002"}}}});
        connection_.Open("memory");
    }
    std::shared_ptr<Recordset> open(const std::string& statement) {
        const auto records = connection_.createRecordset();
        records->Open(statement, &connection_, CursorType::keyset, LockType::optimistic);
        return records;
    }
    std::string codes() {
        std::string text;
        for (const auto records = connection_.Execute("select * from lines"); !records->atEnd(); records->MoveNext()) {
            text += toText(records->Fields().Item("ccode")) + ";";
        }
        return text;
    }

    std::shared_ptr<Tables> tables_ = std::make_shared<Tables>();
    Connection connection_{tables_};
};

TEST_F(Memory, WalksAndFiltersTheRecordsOfATable) {
    EXPECT_EQ(codes(), "1001;6001;6002;");
    const auto records = open("SELECT * FROM Lines");
    records->Filter("inid=2");
    EXPECT_EQ(records->RecordCount(), 2);
    EXPECT_EQ(records->Fields().Item("ccode"), Variant("6001"));
}

TEST_F(Memory, WritesNewAndChangedRecords) {
    const auto records = open("select * from lines");
    records->Fields().Item("ccode", "1002");
    records->Update();
    records->AddNew();
    records->Fields().Item("inid", i32(4));
    records->Fields().Item("ccode", "7001");
    records->Update();
    EXPECT_EQ(codes(), "1002;6001;6002;7001;");
}

TEST_F(Memory, MakesAndDropsATableWithTheColumnsOfAnother) {
    connection_.Execute("select inid,ccode into copies  from Lines where 1=0");
    EXPECT_EQ(errorOf([&] { connection_.Execute("select inid into COPIES from lines where 1=0"); }), errors::keyExists);
    const auto records = open("select * from copies");
    EXPECT_EQ(records->RecordCount(), 0);
    records->AddNew();
    records->Fields().Item("ccode", "1001");
    records->Update();
    EXPECT_EQ(connection_.Execute("select * from copies")->RecordCount(), 1);
    connection_.Execute("drop table copies");
    EXPECT_EQ(errorOf([&] { connection_.Execute("select * from copies"); }), errors::unknownObject);
    EXPECT_EQ(errorOf([&] { connection_.Execute("drop table copies"); }), errors::unknownObject);
}

TEST_F(Memory, RefusesToChangeARecordThatAnotherHasChanged) {
    const auto records = open("select * from lines");
    tables_->at("lines").records.front()[1] = "1009";
    records->Fields().Item("ccode", "1002");
    EXPECT_EQ(errorOf([&] { records->Update(); }), 3197);
    EXPECT_EQ(codes(), "1009;6001;6002;");
}

TEST_F(Memory, RollsBackWhatWasWritten) {
    connection_.BeginTrans();
    EXPECT_EQ(errorOf([&] { connection_.BeginTrans(); }), 3988);
    const auto records = open("select * from lines");
    records->Fields().Item("ccode", "1002");
    records->Update();
    EXPECT_EQ(codes(), "1002;6001;6002;");
    connection_.RollbackTrans();
    EXPECT_EQ(codes(), "1001;6001;6002;");
    EXPECT_EQ(errorOf([&] { connection_.RollbackTrans(); }), 3903);
    EXPECT_EQ(errorOf([&] { connection_.CommitTrans(); }), 3902);
}

TEST_F(Memory, KeepsWhatIsCommittedAndDropsWhatIsOpenWhenItCloses) {
    connection_.BeginTrans();
    open("select * from lines")->AddNew();
    connection_.CommitTrans();
    connection_.BeginTrans();
    const auto records = open("select * from lines");
    records->Fields().Item("ccode", "1002");
    records->Update();
    connection_.Close();
    connection_.Open("memory");
    EXPECT_EQ(codes(), "1001;6001;6002;");
}

TEST_F(Memory, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(errorOf([&] { connection_.Execute("delete from lines"); }), errors::badSyntax);
    EXPECT_EQ(errorOf([&] { connection_.Execute("select * from nothing"); }), errors::unknownObject);
    connection_.Close();
    EXPECT_EQ(errorOf([&] { connection_.Execute("select * from lines"); }), 3704);
}

std::string textOf(const std::string& file) {
    std::ifstream stream(std::string(Z7_SOURCE_DIR) + "/" + file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

TEST(MemoryAdapter, IsShownInTheGuideAsCompiledHere) {
    const std::string guide = textOf("docs/adding-an-adapter.md");
    for (const char* file : {"tests/adapters/memory/Session.h", "tests/adapters/memory/Session.cpp",
                             "tests/adapters/memory/Connection.h"}) {
        EXPECT_NE(guide.find("```cpp\n" + textOf(file) + "```\n"), std::string::npos) << file;
    }
}

} // namespace
} // namespace z7::cashflow::memory
