#include "adapters/odbc/OdbcDatabase.h"
#include "adapters/odbc/TsqlDialect.h"

#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace z7::cashflow::odbc {
namespace {

using conformance::errorOf;

/// What drivers find difficult, tested with SQLite's driver and with the server if there is one.
class HostileCases : public conformance::DatabaseCase {
protected:
    void SetUp() override {
        DatabaseCase::SetUp();
        addVoucher();
    }
    /// Stores a text as the value of an option, by a recordset and so by a parameter, and reads it back.
    [[nodiscard]] Variant throughParameter(const std::string& text) const {
        run("delete from accinformation");
        const auto records = openRecords("select * from accinformation");
        records->AddNew();
        records->Fields().Item("csysid", Variant("GL"));
        records->Fields().Item("cname", Variant("x"));
        records->Fields().Item("cvalue", Variant(text));
        records->Update();
        return first("select cvalue from accinformation");
    }
};

TEST_P(HostileCases, TextsOfEveryPlaneComeBackAsTheyWent) {
    for (const char* text :
         {"",           " ",    "'",          "''",          "it's",   "\"[x]\"", "?",  "{d '2013-01-01'}",
          "{fn now()}", "现金", "😀𠀀",        "e\xCC\x81",   "\t\r\n", "%_[a-z]", "--", "/*",
          "\x7F",       "N'x'", "Ω≈ç√∫˜µ≤≥÷", "\xEF\xBB\xBF"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(throughParameter(text), Variant(text));
        std::string doubled = text;
        for (std::size_t at = 0; (at = doubled.find('\'', at)) != std::string::npos; at += 2) {
            doubled.insert(at, 1, '\'');
        }
        run("update accinformation set cvalue=N'" + doubled + "', cdefault=N'" + doubled + "'");
        EXPECT_EQ(first("select cvalue from accinformation"), Variant(text));
    }
}

TEST_P(HostileCases, LongTextsComeInPiecesAndWhole) {
    // The pieces in which drivers return texts end at every position within a character.
    for (const std::size_t before : {0U, 1U, 2U, 3U}) {
        for (const std::size_t length : {1364U, 1366U, 5000U, 70000U}) {
            std::string text(before, 'a');
            for (std::size_t i = 0; i < length; ++i) {
                text += i % 2 == 0 ? "汉" : "😀";
            }
            const Variant value = first("select N'" + text + "' as x");
            ASSERT_TRUE(value.is<std::string>());
            EXPECT_TRUE(*value.get<std::string>() == text)
                << before << "+" << length << ": " << value.get<std::string>()->size() << " of " << text.size()
                << " bytes";
        }
    }
}

TEST_P(HostileCases, TextsThatNoDriverCarriesAreRefused) {
    const Error zero = errorOf([&] { run(std::string("select N'a\0b' as x", 19)); });
    EXPECT_EQ(zero.number(), 5);
    EXPECT_NE(zero.description().find("zero byte"), std::string::npos);
    const Error bad = errorOf([&] { run("select N'\xC3(' as x"); });
    EXPECT_EQ(bad.number(), 5);
    EXPECT_NE(bad.description().find("byte 10"), std::string::npos) << bad.description();
    for (const std::string& text : {std::string("a\0b", 3), std::string("\xED\xA0\x80")}) {
        const auto records = openRecords("select * from fitemss98 where citemcode=N'0101'");
        records->Fields().Item("citemname", Variant(text));
        EXPECT_EQ(errorOf([&] { records->Update(); }).number(), 5);
        EXPECT_EQ(records->Fields().Item("citemname"), Variant(text)) << "the change stays pending";
        EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'0101'"), Variant("销售商品"));
    }
}

TEST_P(HostileCases, NullEverywhere) {
    run("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,ccode,md,mc,md_f,mc_f,nd_s,nc_s) "
        "values(2013,12,1,9,1,N'1001',null,null,null,null,null,null)");
    const auto line = run("select * from gl_accvouch where iperiod=12");
    const std::set<std::string> filled{"iyear", "iperiod", "isignseq", "ino_id", "inid", "ccode"};
    for (int i = 0; i < line->Fields().Count(); ++i) {
        EXPECT_EQ(line->Fields().Item(i).isNull(), !filled.contains(asciiLower(line->Fields().Name(i))))
            << line->Fields().Name(i);
    }
    const auto records = openRecords("select * from gl_accvouch where iperiod=12");
    for (const auto& [column, value] :
         std::vector<std::pair<const char*, Variant>>{{"cdigest", Variant("")},
                                                      {"md", Variant(-0.01)},
                                                      {"nd_s", Variant(1e300)},
                                                      {"dbill_date", Variant(Date::fromCivil(1753, 1, 1))},
                                                      {"iflag", Variant(std::int32_t{255})},
                                                      {"idoc", Variant(std::int32_t{-32768})}}) {
        records->Fields().Item(column, value);
    }
    records->Update();
    const auto changed = run("select * from gl_accvouch where iperiod=12");
    EXPECT_EQ(changed->Fields().Item("cdigest"), Variant("")) << "the empty text is not null";
    EXPECT_EQ(changed->Fields().Item("md"), Variant(-0.01));
    EXPECT_EQ(changed->Fields().Item("nd_s"), Variant(1e300));
    EXPECT_EQ(changed->Fields().Item("dbill_date"), Variant(Date::fromCivil(1753, 1, 1)));
    EXPECT_EQ(changed->Fields().Item("iflag"), Variant(std::uint8_t{255}));
    EXPECT_EQ(changed->Fields().Item("idoc"), Variant(std::int16_t{-32768}));
    for (const char* column : {"cdigest", "md", "nd_s", "dbill_date", "iflag", "idoc"}) {
        records->Fields().Item(column, Variant());
    }
    records->Update(); // each compared with what was stored
    EXPECT_EQ(
        count("select * from gl_accvouch where iperiod=12 and cdigest is null and md is null and dbill_date is null"),
        1);
}

TEST_P(HostileCases, AmountsKeepTheirDigits) {
    for (const double amount : {0.0, 0.0001, -0.0001, 12345678901.2345, -99999999999.9999, 0.1, 1234567.89}) {
        run("update gl_accvouch set md=" + numberText(amount) + " where inid=1");
        EXPECT_EQ(first("select md from gl_accvouch where inid=1"), Variant(amount));
        const auto records = openRecords("select * from gl_accvouch where inid=2");
        records->Fields().Item("mc", Variant(amount));
        records->Fields().Item("nd_s", Variant(amount));
        records->Update();
        EXPECT_EQ(first("select mc from gl_accvouch where inid=2"), Variant(amount));
        EXPECT_EQ(first("select nd_s from gl_accvouch where inid=2"), Variant(amount));
        EXPECT_EQ(count("select * from gl_accvouch where inid=2 and mc=" + numberText(amount)), 1);
    }
}

TEST_P(HostileCases, DatesAndTimesKeepTheirSecond) {
    for (const Date date :
         {Date::fromCivil(1753, 1, 1), Date::fromCivil(1899, 12, 29, 6), Date::fromCivil(1899, 12, 30),
          Date::fromCivil(1900, 1, 1), Date::fromCivil(2012, 2, 29, 23, 59, 59), Date::fromCivil(9999, 12, 31)}) {
        SCOPED_TRACE(dateText(date));
        const auto records = openRecords("select * from gl_accvouch where inid=1");
        records->Fields().Item("dbill_date", Variant(date));
        records->Update();
        const Variant stored = first("select dbill_date from gl_accvouch where inid=1");
        ASSERT_TRUE(stored.is<Date>());
        EXPECT_EQ(dateText(*stored.get<Date>()), dateText(date));
    }
}

TEST_P(HostileCases, AnErrorInALaterStatementIsReported) {
    const Error error = errorOf([&] {
        run("insert into fitemss98 (citemcode) values(N'0901'); insert into fitemss98 (citemcode) values(N'0901')");
    });
    EXPECT_EQ(error.sqlState(), "23000");
    EXPECT_EQ(count("select * from fitemss98 where citemcode=N'0901'"), 1) << "the first stands";
    const Error third = errorOf([&] {
        run("select citemcode from fitemss98; delete from dsign; insert into fitemss98 (citemcode) values(N'0901')");
    });
    EXPECT_EQ(third.sqlState(), "23000");
    EXPECT_EQ(count("select * from fitemss98"), 3) << "the session works on";
}

TEST_P(HostileCases, StatementsThatTouchNoRowAreNoError) {
    EXPECT_EQ(run("delete from fitemss98 where citemcode=N'none'")->State(), ObjectState::closed);
    EXPECT_EQ(run("update fitemss98 set citemname=N'x' where citemcode=N'none'")->State(), ObjectState::closed);
    EXPECT_EQ(count("select * from fitemss98 where citemcode=N'none'"), 0);
    EXPECT_EQ(count("delete from dsign; select * from fitemss98"), 2) << "the first result with records";
}

TEST_P(HostileCases, AVanishedRecordIsNotWritten) {
    const auto records = openRecords("select * from fitemss98 where citemcode=N'0101'");
    run("delete from fitemss98 where citemcode=N'0101'");
    records->Fields().Item("citemname", Variant("x"));
    const Error error = errorOf([&] { records->Update(); });
    EXPECT_EQ(error.number(), 3197);
    EXPECT_NE(error.description().find("fitemss98"), std::string::npos);
    EXPECT_EQ(count("select * from fitemss98"), 1);
}

TEST_P(HostileCases, ManyResultsInTurn) {
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(run("select * from gl_accvouch")->RecordCount(), 3);
    }
}

TEST_P(HostileCases, ObserverSeesEveryStatementWithItsSession) {
    auto& connection = dynamic_cast<Connection&>(*connection_);
    std::vector<std::pair<int, std::string>> seen;
    connection.onStatement([&seen](int session, const std::string& text) { seen.emplace_back(session, text); });
    const std::string text = "select * from fitemss98";
    run(text);
    const auto own = connection.createRecordset();
    for (int i = 0; i < 2; ++i) { // the second uses the session that the first returned
        own->Open(text, connection.ConnectionString(), CursorType::snapshot, LockType::readOnly);
        own->Close();
    }
    const int first = connection.sessionNumber();
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0], std::pair(first, text));
    EXPECT_NE(seen[1].first, first);
    EXPECT_EQ(seen[1], seen[2]);
    connection.onStatement([](int, const std::string&) { throw Error(77, "test", "not this one"); });
    EXPECT_EQ(errorOf([&] { run("delete from fitemss98"); }).number(), 77);
    connection.onStatement({});
    EXPECT_EQ(count(text), 2);
}

TEST_P(HostileCases, SessionsInUseAtOnceAreDifferentOnes) {
    auto& connection = dynamic_cast<Connection&>(*connection_);
    std::set<int> sessions;
    connection.onStatement([&sessions](int session, const std::string&) { sessions.insert(session); });
    std::vector<std::shared_ptr<Recordset>> open;
    for (int i = 0; i < 6; ++i) { // a recordset that can be written keeps its session
        open.push_back(connection.createRecordset());
        open.back()->Open("select * from fitemss98", connection.ConnectionString(), CursorType::keyset,
                          LockType::optimistic);
    }
    EXPECT_EQ(sessions.size(), 6U);
    EXPECT_FALSE(sessions.contains(connection.sessionNumber()));
    connection.Close();
    EXPECT_EQ(open.back()->RecordCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(Adapters, HostileCases, ::testing::ValuesIn(conformance::databasesUnderTest()),
                         conformance::adapterName);

TEST(OdbcDriver, ThatIsNotThereIsNamed) {
    Connection connection;
    const Error error = errorOf([&] { connection.Open("Driver={No Such Driver};Server=s;UID=u;PWD=sesame"); });
    EXPECT_EQ(error.number(), 3706);
    EXPECT_EQ(error.source(), "ODBC");
    EXPECT_NE(error.description().find("No Such Driver"), std::string::npos) << error.description();
    EXPECT_EQ(error.description().find("sesame"), std::string::npos);
    EXPECT_EQ(connection.State(), ObjectState::closed);
    EXPECT_EQ(connection.ConnectionString(), "");
}

TEST(OdbcDriver, PasswordDoesNotShowWhereItIsPartOfTheMessage) {
    Connection connection;
    const Error error = errorOf([&] { connection.Open("Driver={/no/such/sesame.so};UID=u;PWD=sesame"); });
    EXPECT_EQ(error.description().find("sesame"), std::string::npos) << error.description();
    EXPECT_NE(error.description().find("***"), std::string::npos) << error.description();
}

TEST(OdbcDriver, ServerThatDoesNotAnswerIsAnError) {
    Connection connection;
    const Error error = errorOf([&] { connection.Open("Driver=FreeTDS;Server=127.0.0.1;Port=1;UID=u;PWD=sesame"); });
    EXPECT_GT(error.number(), 0);
    EXPECT_EQ(error.sqlState().substr(0, 2), "08") << error.sqlState() << error.description();
    EXPECT_EQ(error.description().find("sesame"), std::string::npos);
    EXPECT_NE(error.description().find("server=127.0.0.1, port=1"), std::string::npos) << error.description();
}

TEST(OdbcDriver, DataSourceThatIsNotSetUpIsNamed) {
    Connection connection;
    const Error error = errorOf([&] { connection.Open("DSN=no_such_source;Database=sesame1;UID=u;PWD=sesame"); });
    EXPECT_NE(error.description().find("dsn=no_such_source, database=***1"), std::string::npos) << error.description();
}

TEST(OdbcServer, LockOfAnotherDeskHasItsStateWhateverTheServersNumber) {
    const TsqlDialect dialect;
    EXPECT_EQ(dialect.explained(Error(1222, "ODBC", "Lock request time out period exceeded.", "HY000")).sqlState(),
              "HYT00");
    EXPECT_EQ(dialect.explained(Error(1205, "ODBC", "Transaction was deadlocked.", "HY000")).sqlState(), "40001");
    EXPECT_EQ(dialect.explained(Error(33557097, "ODBC", "canceling statement due to lock timeout", "HY000")).sqlState(),
              "HYT00");
    EXPECT_EQ(dialect.explained(Error(33557097, "ODBC", "canceling statement", "HY000")).sqlState(), "HY000");
}

TEST(OdbcDriver, FileThatIsNotAnAccountIsRefused) {
    const auto connection = makeDriverConnection();
    EXPECT_EQ(connection->State(), ObjectState::closed);
    const std::string text = "Driver={SQLite3};Database=/no/such/folder/x.db;NoCreat=1;year=2013";
    EXPECT_NE(errorOf([&] { connection->Open(text); }).description(), "");
    EXPECT_EQ(connection->State(), ObjectState::closed);
}

TEST(OdbcServer, IsTestedWhereThereIsOne) {
    if (!ServerDatabase::server()) {
        GTEST_SKIP() << "Z7CF_TEST_SQLSERVER holds no connection string, so no case ran over a server";
    }
    const ServerDatabase database;
    EXPECT_EQ(database.open()->State(), ObjectState::open);
}

} // namespace
} // namespace z7::cashflow::odbc
