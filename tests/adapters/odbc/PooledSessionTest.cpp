#include "adapters/odbc/OdbcDatabase.h"

#include <gtest/gtest.h>

#include <string>

namespace z7::cashflow::odbc {
namespace {

using conformance::errorOf;

/// The separate sessions of one connection, identified by number.
class PooledSession : public ::testing::Test {
protected:
    PooledSession() {
        connection_->onStatement([this](int session, const std::string&) { last_ = session; });
        connection_->Open(database_.connectionString(std::int16_t{2013}, 0));
    }
    /// The session that runs a text independently of the caller's session; whether the database accepts the
    /// text does not matter.
    int sessionOf(const std::string& text) {
        const auto records = connection_->createRecordset();
        ignoringErrors(
            [&] { records->Open(text, connection_->ConnectionString(), CursorType::keyset, LockType::optimistic); });
        return last_;
    }

    DriverDatabase database_;
    int last_ = 0;
    std::unique_ptr<Connection> connection_ = makeDriverConnection();
};

const std::string honest = "select * from fitemss98";

TEST_F(PooledSession, IsHandedOutAgainAfterTextsThatLeaveItAsItWas) {
    const int first = sessionOf(honest);
    for (const char* text :
         {"update fitemss98 set citemname=N'x'", "update fitemss98 set citemname=N'set #x'; update code set bclose=0",
          "delete from fitemss98", "insert into fitemss98 (citemcode) values(N'1')",
          "if exists(select * from code) drop table tempdb..TempVoucher0", "select N'exec' as a, N'#t' as b"}) {
        EXPECT_EQ(sessionOf(text), first) << text;
    }
    EXPECT_EQ(sessionOf(honest), first);
}

TEST_F(PooledSession, IsNotHandedOutAgainAfterTextsThatMayHaveAlteredIt) {
    for (const char* text :
         {"set dateformat dmy", "update fitemss98 set citemname=N'x'; set dateformat dmy",
          "update fitemss98 set citemname=N'x' set language German", "update statistics code set dateformat dmy",
          "begin transaction", "select 1 as a; use master", "create table #t (a int)", "select * into #t from code",
          "select * into [#t] from code", "select * from code; alter database x set offline",
          "sp_setapprole N'a', N'b'", "exec sp_x", "setuser N'a'", "select 1 as a revert", "declare @a int",
          "select 1 as a dbcc traceon(1)", "", "select N'unclosed"}) {
        const int session = sessionOf(text);
        EXPECT_NE(sessionOf(honest), session) << text;
    }
}

TEST(ServerSession, ReadsDatesYearFirstInEveryLanguageOfTheLogin) {
    if (!ServerDatabase::server()) {
        GTEST_SKIP() << "Z7CF_TEST_SQLSERVER holds no connection string, so there is no login";
    }
    const ServerDatabase database;
    const auto connection = database.open();
    const auto monthWith = [&](const std::string& order) {
        const auto session = database.open();
        session->Execute("set dateformat " + order);
        return session->Execute("select month(cast('04/05/2013' as datetime)) as m")->Fields().Item(0);
    };
    if (monthWith("dmy") == monthWith("mdy")) {
        GTEST_SKIP() << "this server takes no notice of set dateformat";
    }
    // Read with the day or month first, the text is another date or none.
    const auto difference =
        connection->Execute("select datediff(day, '2013-05-04', cast('13/05/04' as datetime)) as d");
    EXPECT_EQ(difference->Fields().Item(0), Variant(std::int32_t{0}));
}

TEST(ServerSession, ChangesRecordsByTimesWithFractionsOfASecond) {
    if (!ServerDatabase::server()) {
        GTEST_SKIP() << "Z7CF_TEST_SQLSERVER holds no connection string; the embedded database keeps whole seconds";
    }
    const ServerDatabase database;
    const auto connection = database.open();
    connection->Execute("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,ccode,md,mc,dbill_date) "
                        "values(2013,1,2,5,1,N'1001',1,0,'2013-01-05 10:00:00.300')");
    for (const Date next : {Date(41279.5), Date(-1.25), Date(41279.25 + 0.123 / 86400), Date(2.0)}) {
        const auto records = connection->createRecordset();
        records->Open("select * from gl_accvouch where inid=1", connection.get(), CursorType::keyset,
                      LockType::optimistic);
        records->Fields().Item("dbill_date", Variant(next));
        EXPECT_NO_THROW(records->Update()) << "the record is found by what it held";
        records->Close();
        const auto stored = connection->Execute("select dbill_date from gl_accvouch where inid=1");
        const Variant value = stored->Fields().Item(0);
        ASSERT_TRUE(value.is<Date>());
        EXPECT_NEAR(value.get<Date>()->dayNumber(), next.dayNumber(), 0.004 / 86400);
    }
    // The time of day is counted forward also on days before the first one.
    connection->Execute("update gl_accvouch set dbill_date='1899-12-29 06:00:00.500' where inid=1");
    const auto early = connection->Execute("select dbill_date from gl_accvouch where inid=1");
    EXPECT_NEAR(early->Fields().Item(0).get<Date>()->dayNumber(), -1.25 - 0.5 / 86400, 0.001 / 86400);
}

} // namespace
} // namespace z7::cashflow::odbc
