#include "adapters/sqlite/Session.h"
#include "adapters/shared/cache/LruCache.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/sqlite/EmbeddedDatabase.h"
#include "adapters/sqlite/SqliteReason.h"
#include "adapters/sqlite/TempDatabase.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/openFile.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

using conformance::errorOf;

std::size_t preparedCount(const Session& session) {
    std::size_t count = 0;
    for (sqlite3_stmt* next = nullptr; (next = sqlite3_next_stmt(session.nativeHandle(), next)) != nullptr;) {
        ++count;
    }
    return count;
}

class SessionTest : public ::testing::Test {
protected:
    [[nodiscard]] std::string text() const { return database_.connectionString(std::int16_t{2013}, 0); }
    EmbeddedDatabase database_;
};

TEST_F(SessionTest, ShapesAreBoundedAndSurviveHostileOnes) {
    const auto session =
        std::make_shared<Session>(parseConnectionString(text()), 1, std::make_shared<const Observers>());
    for (int i = 0; i < 1000; ++i) {
        session->run("select ccode as a" + std::to_string(i) + " from code", false);
    }
    EXPECT_EQ(preparedCount(*session), Session::mostPrepared);
    for (int i = 0; i < 1000; ++i) {
        session->run("select ccode from code where iyear=" + std::to_string(i) + " and ccode=N'" + std::to_string(i) +
                         "'",
                     false);
    }
    EXPECT_EQ(preparedCount(*session), Session::mostPrepared);
    EXPECT_EQ(errorOf([&] { session->run("select nosuch from code", false); }).sqlState(), "42S22");
    EXPECT_EQ(errorOf([&] { session->run("select nosuch from code", false); }).sqlState(), "42S22")
        << "a failed one is tried anew";
}

TEST_F(SessionTest, ErrorsOfItsFunctionsKeepTheirReasons) {
    const auto connection = database_.open();
    connection->Execute("insert into fitemss98 (citemcode,citemname) values(N'1',N'abcdef')");
    const auto reasonOf = [&](const std::string& statement) {
        return errorOf([&] { connection->Execute(statement); }).why();
    };
    const Explanation cast = reasonOf("select cast(citemname as int) as a from fitemss98");
    EXPECT_EQ(cast.reason, shared::DatabaseReason::columnValueBad);
    EXPECT_EQ(cast.arguments, (std::vector<std::string>{"cast", "abcdef"}));
    EXPECT_EQ(reasonOf("select sum(citemname) as a from fitemss98").reason, SqliteReason::sumOfTexts);
    EXPECT_EQ(reasonOf("select nothing from fitemss98").reason, Reason::verbatim) << "the words of the library";
    const Error error = errorOf([&] { connection->Execute("select sum(citemname) as a from fitemss98"); });
    EXPECT_EQ(error.number(), SQLITE_ERROR);
    EXPECT_EQ(error.description(), "A text cannot be summed");
}

TEST_F(SessionTest, ARowThatNeedsTheYearIsRefusedWithoutOne) {
    const auto connection = std::make_unique<Connection>();
    connection->Open(database_.connectionString(std::nullopt, 0));
    const Error error = errorOf([&] { connection->Execute("insert into gl_v_cashtable (RowGuid) values(N'G')"); });
    EXPECT_EQ(error.why().reason, SqliteReason::yearMissing);
}

TEST_F(SessionTest, LiteralsOfTheTextAreNotMixedUp) {
    const auto connection = database_.open();
    connection->Execute("insert into fitemss98 (citemcode,citemname) values(N'1',N'abcdef')");
    EXPECT_EQ(connection->Execute("select cast(citemname as nvarchar(2)) as a from fitemss98")->Fields().Item(0),
              Variant("ab"));
    EXPECT_EQ(connection->Execute("select cast(citemname as nvarchar(3)) as a from fitemss98")->Fields().Item(0),
              Variant("abc"));
    EXPECT_EQ(connection->Execute("select cast(citemname as nvarchar(2)) as a from fitemss98")->Fields().Item(0),
              Variant("ab"));
}

TEST_F(SessionTest, RecordsetsOnATextReuseOneSession) {
    const auto connection = database_.open();
    std::vector<int> sessions;
    connection->onStatement([&](int session, const std::string&) { sessions.push_back(session); });
    for (int i = 0; i < 3; ++i) {
        const auto records = connection->createRecordset();
        records->Open("select * from code", connection->ConnectionString(), CursorType::forwardOnly,
                      LockType::readOnly);
    }
    EXPECT_EQ(sessions, (std::vector<int>{2, 2, 2}));
    EXPECT_EQ(connection->sessionNumber(), 1);
}

TEST_F(SessionTest, ObserversSeeBothTexts) {
    const auto connection = database_.open();
    std::vector<std::string> texts;
    std::vector<std::string> rewritten;
    connection->onStatement([&](int, const std::string& statement) { texts.push_back(statement); });
    connection->onRewrittenStatement([&](int, const std::string& statement) { rewritten.push_back(statement); });
    connection->BeginTrans();
    connection->Execute("select * from code where  ccode=N'it''s' and iyear=2013");
    connection->CommitTrans();
    EXPECT_EQ(texts, std::vector<std::string>{"select * from code where  ccode=N'it''s' and iyear=2013"});
    EXPECT_EQ(rewritten, (std::vector<std::string>{
                             "BEGIN", "DELETE FROM main.accinformation WHERE 0",
                             "SELECT * FROM main.\"code\" WHERE \"ccode\" = 'it''s' AND \"iyear\" = 2013", "COMMIT"}));
    connection->onStatement([](int, const std::string&) { throw Error(1, "Test", "stop"); });
    EXPECT_EQ(errorOf([&] { connection->Execute("delete from code"); }).description(), "stop");
    connection->onStatement({});
    connection->Execute("delete from code");
    EXPECT_EQ(texts.size(), 1U);
}

TEST_F(SessionTest, TheRewrittenTextRunsOnABareSession) {
    const auto connection = database_.open();
    std::vector<std::string> rewritten;
    connection->onRewrittenStatement([&](int, const std::string& statement) { rewritten.push_back(statement); });
    connection->Execute("insert into gl_v_cashtable (iPeriod,iSignSeq,csign,iNo_id,cCashItem,ccode,md) "
                        "values(1,2,N'',5,N'A',N'1',12.5)");
    connection->Execute(
        "insert into zqsystem..ua_period (cacc_id,iyear,iid,dbegin,dend) values('1',2013,1,'2013-1-1','2013-1-31')");
    connection->Execute("select sum(md) from gl_v_cashtable where csign like N'%'");
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(database_.file().string().c_str(), &handle), SQLITE_OK);
    prepareSession(handle, std::int16_t{2013});
    const auto temp = attachCompanions(handle, database_.file());
    sqlite3_exec(handle, "delete from zqsystem.ua_period", nullptr, nullptr, nullptr);
    for (const std::string& statement : rewritten) {
        EXPECT_EQ(sqlite3_exec(handle, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << statement << sqlite3_errmsg(handle);
    }
    sqlite3_close(handle);
    EXPECT_EQ(connection->Execute("select * from gl_cashtable where md=12.5")->RecordCount(), 2);
}

TEST_F(SessionTest, ARecordOfAViewWithAnExplicitNullIsRefused) {
    const auto connection = database_.open();
    const auto add = [&](bool null) {
        const auto rows = connection->createRecordset();
        rows->Open("select * from gl_v_cashtable", connection.get(), CursorType::keyset, LockType::optimistic);
        rows->AddNew();
        for (const auto& [name, value] : std::vector<std::pair<const char*, Variant>>{{"iPeriod", Variant(1)},
                                                                                      {"iSignSeq", Variant(2)},
                                                                                      {"csign", Variant("")},
                                                                                      {"iNo_id", Variant(5)},
                                                                                      {"cCashItem", Variant("A")},
                                                                                      {"ccode", Variant("1001")}}) {
            rows->Fields().Item(name, value);
        }
        if (null) {
            rows->Fields().Item("md", Variant());
        }
        rows->Update();
    };
    EXPECT_EQ(conformance::errorOf([&] { add(true); }).sqlState(), "23000");
    add(false);
    EXPECT_EQ(connection->Execute("select * from gl_cashtable where md=0 and iYear=2013")->RecordCount(), 1);
}

TEST_F(SessionTest, ATransactionLeavesTempdbToOthers) {
    const auto connection = database_.open();
    connection->Execute("select inid,ccode into tempdb..X from gl_accvouch where 1=0");
    connection->BeginTrans();
    connection->Execute("insert into code (iyear,ccode) values(2013,N'1')");
    const auto lines = connection->createRecordset();
    lines->Open("select * from tempdb..X", connection->ConnectionString(), CursorType::keyset, LockType::optimistic);
    lines->AddNew();
    lines->Fields().Item("inid", Variant(std::int16_t{1}));
    lines->Fields().Item("ccode", Variant("1"));
    lines->Update();
    lines->Close();
    EXPECT_EQ(connection->Execute("select * from tempdb..x where ccode=N'1'")->RecordCount(), 1);
    connection->CommitTrans();
}

TEST_F(SessionTest, TemporaryTablesTakeTypesNullabilityAndCollation) {
    const auto connection = database_.open();
    connection->Execute(
        "select inid,ccode,md as amount,cast(0 as bit) as flag into tempdb..X from gl_v_accvouch where 1=0");
    EXPECT_EQ(errorOf([&] { connection->Execute("insert into tempdb..X (ccode) values(N'a')"); }).sqlState(), "23000");
    connection->Execute("insert into tempdb..X (inid,ccode,amount,flag) values('1',N'a',2,'true')");
    const auto row = connection->Execute("select * from tempdb..X where ccode=N'A '");
    ASSERT_EQ(row->RecordCount(), 1);
    EXPECT_EQ(row->Fields().Item("inid"), Variant(std::int16_t{1}));
    EXPECT_EQ(row->Fields().Item("amount"), Variant(2.0));
    EXPECT_EQ(row->Fields().Item("flag"), Variant(true));
    EXPECT_EQ(errorOf([&] { connection->Execute("select inid into tempdb..x from gl_accvouch"); }).sqlState(), "42S01");
    EXPECT_EQ(errorOf([&] { connection->Execute("select count(*) into tempdb..Y from gl_accvouch"); }).number(), 1038);
    EXPECT_EQ(errorOf([&] { connection->Execute("select * from tempdb..Y"); }).sqlState(), "42S02");
    // The same name with other types: the old table is forgotten.
    connection->Execute("drop table tempdb..X");
    connection->Execute("select dbill_date as inid into tempdb..X from gl_accvouch where 1=0");
    connection->Execute("insert into tempdb..X (inid) values('2013-1-5')");
    EXPECT_EQ(connection->Execute("select * from tempdb..X")->Fields().Item("inid"),
              Variant(Date::fromCivil(2013, 1, 5)));
}

TEST_F(SessionTest, ATableThatAnotherSessionMadeAnewIsReadAnew) {
    const auto connection = database_.open();
    const auto other = database_.open();
    connection->Execute("select inid into tempdb..X from gl_accvouch where 1=0");
    connection->Execute("insert into tempdb..X (inid) values('1')");
    other->Execute("drop table tempdb..X");
    other->Execute("select dbill_date as inid into tempdb..X from gl_accvouch where 1=0");
    connection->Execute("insert into tempdb..X (inid) values('2013-1-5')");
    EXPECT_EQ(connection->Execute("select * from tempdb..X")->Fields().Item(0), Variant(Date::fromCivil(2013, 1, 5)));
}

TEST_F(SessionTest, TheSecondSessionIsRefusedWhenItBegins) {
    const auto connection = database_.open();
    const auto other = database_.open(std::int16_t{2014});
    connection->BeginTrans();
    const Error error = errorOf([&] { other->BeginTrans(); });
    EXPECT_EQ(error.number() & 0xFF, SQLITE_BUSY);
    EXPECT_EQ(error.sqlState(), "HYT00");
    EXPECT_NE(error.description().find("waited 0 ms"), std::string::npos);
    EXPECT_FALSE(other->inTransaction());
    EXPECT_EQ(other->Execute("select * from code")->RecordCount(), 0) << "reading goes on";
    connection->RollbackTrans();
    other->BeginTrans();
}

TEST_F(SessionTest, ADroppedConnectionClosesWhatItLent) {
    std::shared_ptr<Recordset> records;
    {
        const auto connection = database_.open();
        records = connection->createRecordset();
        records->Open("select * from fitemss98", connection->ConnectionString(), CursorType::keyset,
                      LockType::optimistic);
    }
    records->AddNew(); // a separate session does not end with the connection
    records->Fields().Item("citemcode", Variant("1"));
    records->Update();
    records->Close();
    EXPECT_EQ(database_.open()->Execute("select * from fitemss98")->RecordCount(), 1);
}

TEST(LruCache, ForgetsTheOneNotUsedLongest) {
    shared::LruCache<int> cache(2);
    cache.insert("a", 1);
    cache.insert("b", 2);
    ASSERT_NE(cache.find("a"), nullptr);
    cache.insert("c", 3);
    EXPECT_EQ(cache.find("b"), nullptr);
    cache.insert("a", 4);
    EXPECT_EQ(*cache.find("a"), 4);
    EXPECT_EQ(cache.size(), 2U);
    cache.clear();
    EXPECT_EQ(cache.find("a"), nullptr);
}

} // namespace
} // namespace z7::cashflow::sqlite
