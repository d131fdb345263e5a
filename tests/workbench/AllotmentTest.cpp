#include "workbench/vouchers/Allotment.h"

#include "doubles/FakeLogin.h"
#include "doubles/ScriptedDatabase.h"
#include "doubles/ScriptedRecordset.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::workbench {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::InSequence;
using testing::Invoke;
using testing::Return;
using testing::StrictMock;
using testing::Throw;

class MockConnection : public Connection {
public:
    MOCK_METHOD(void, Open, (const std::string&), (override));
    MOCK_METHOD(void, Close, (), (override));
    MOCK_METHOD(ObjectState, State, (), (const, override));
    MOCK_METHOD(std::string, ConnectionString, (), (const, override));
    MOCK_METHOD(std::shared_ptr<Recordset>, Execute, (const std::string&), (override));
    MOCK_METHOD(std::shared_ptr<Recordset>, createRecordset, (), (override));
    MOCK_METHOD(void, BeginTrans, (), (override));
    MOCK_METHOD(void, CommitTrans, (), (override));
    MOCK_METHOD(void, RollbackTrans, (), (override));
};

using Rows = std::shared_ptr<CashFlowCollection>;

class MockProvider : public IGlVoucherProvider {
public:
    MOCK_METHOD(std::string, VoucherTempTable, (), (const, override));
    MOCK_METHOD(void, VoucherTempTable, (const std::string&), (override));
    MOCK_METHOD(void, objLogin, (const std::shared_ptr<Z7Login>&), (override));
    MOCK_METHOD(Variant, SetOldVouchNoID, (const std::int32_t&), (override));
    MOCK_METHOD(Rows, GetCashFlowColFromDB,
                (Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, Date), (override));
    MOCK_METHOD(Rows, CreateCashFlowColFromDB,
                (Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, Date), (override));
    MOCK_METHOD(bool, CheckKmFrom, (Connection&, const Rows&, std::string*), (override));
    MOCK_METHOD(bool, CheckCFColFromDB,
                (Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, const Rows&, std::string*),
                (override));
    MOCK_METHOD(bool, SaveCashFlowCol,
                (Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, Rows*, bool*), (override));
    MOCK_METHOD(bool, SaveCashFlowColEx,
                (Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, Date, Rows*, bool*),
                (override));
    MOCK_METHOD(std::string, GetCashFlowColFromXml, (Connection&, const std::string&, bool), (override));
    MOCK_METHOD(bool, SaveCashFlowColFromXml,
                (Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, std::string*, bool*),
                (override));
    MOCK_METHOD(void, bFromDraft, (bool), (override));
};

const Date someDay(45000.0);

VoucherHead voucher(std::int32_t number) { return {{2024, 1, 2, number}, someDay, "summary"}; }

const std::string lockStatement = "update gl_accvouch set cdigest=cdigest where iyear=2024 and iperiod=1 and "
                                  "isignseq=2 and ino_id=";

class AllotmentTest : public testing::Test {
protected:
    AllotmentTest() {
        modPublic::context() = modPublic::Context{};
        modPublic::SetLogin(std::make_shared<test::FakeLogin>());
        database.acceptPrefix("update gl_accvouch set cdigest=cdigest");
        database.answerPrefix("select v.inid,", linesOf(Variant(0.0)));
        database.answerPrefix("select t.inid,", {{"inid"}, {}, {}});
        database.answerPrefix("select iyear,iid from zqsystem..ua_period",
                              {{"iyear", "iid"}, {{Variant(2024), Variant(1)}}, {}});
        database.answerWith("select table1.*", [this](const std::string&) {
            test::Table table{{"RowGuid"}, {}, {}};
            for (const std::string& guid : readable) {
                table.rows.push_back({Variant(guid)});
            }
            return table;
        });
        ON_CALL(connection, Execute(_)).WillByDefault([this](const std::string& text) {
            return database.connection().Execute(text);
        });
        EXPECT_CALL(connection, Execute(_)).Times(testing::AnyNumber());
        ON_CALL(connection, createRecordset()).WillByDefault([this] {
            return std::make_shared<test::ScriptedRecordset>(database, &connection, "main");
        });
        ON_CALL(connection, ConnectionString())
            .WillByDefault(testing::Return(test::ScriptedDatabase::connectionString()));
        allowReading();
    }
    ~AllotmentTest() override { modPublic::context() = modPublic::Context{}; }

    /// Lets readers open any number of recordsets on the session.
    void allowReading() {
        EXPECT_CALL(connection, createRecordset()).Times(testing::AnyNumber());
        EXPECT_CALL(connection, ConnectionString()).Times(testing::AnyNumber());
    }

    /// A receipt of 5 with the given credit amount on its cash line.
    static test::Table linesOf(const Variant& credit) {
        const auto line = [](int number, const char* account, const Variant& debit, const Variant& mc, bool cash) {
            return std::vector<Variant>{
                Variant(number),  Variant(someDay), Variant(account), debit,          mc,        Variant(), Variant(),
                Variant(account), Variant(cash),    Variant(true),    Variant(false), Variant(), Variant(), Variant()};
        };
        return {{"inid", "dbill_date", "ccode", "md", "mc", "citem_class", "citem_id", "known", "bCashItem", "bend",
                 "bclose", "cUserDefineType", "ccode_name", "cdigest"},
                {line(1, "1001", Variant(credit.isNull() ? 0.0 : 5.0), credit, true),
                 line(2, "6001", Variant(0.0), Variant(5.0), false)},
                {}};
    }

    /// A save that returns so many rows, which readers find afterwards.
    auto savesRows(int count) {
        return [this, count](Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, Date,
                             Rows* rows, bool*) {
            *rows = CashFlowCollection::Create();
            readable.clear();
            for (int i = 0; i < count; ++i) {
                const auto row = (*rows)->CreateCFObject();
                readable.push_back(toText(row->Item("RowGuid")));
                (*rows)->Add(row);
            }
            return true;
        };
    }

    Allotment allotment(bool keep = true) { return {connection, data, provider, keep}; }

    std::vector<VoucherResult> run(
        Allotment allotment, int vouchers, const std::function<bool()>& stop = [] { return false; }) {
        std::vector<VoucherHead> heads;
        for (int i = 1; i <= vouchers; ++i) {
            heads.push_back(voucher(i));
        }
        std::vector<VoucherResult> results;
        done = allotment.allotAll(heads, stop, [&results](const VoucherResult& result) { results.push_back(result); });
        return results;
    }

    test::ScriptedDatabase database;
    DataProvider data;
    std::vector<std::string> readable; ///< identities of the rows that readers find
    StrictMock<MockConnection> connection;
    StrictMock<MockProvider> provider;
    std::size_t done = 0;
};

TEST_F(AllotmentTest, StoresEachVoucherInATransactionOfItsOwn) {
    InSequence sequence;
    for (int number = 1; number <= 2; ++number) {
        EXPECT_CALL(connection, BeginTrans());
        EXPECT_CALL(provider, SaveCashFlowColEx(_, "gl_accvouch", 1, 2, number, someDay, _, _))
            .WillOnce(savesRows(number));
        EXPECT_CALL(connection, CommitTrans());
    }
    const auto results = run(allotment(), 2);
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ(results[0].outcome, Outcome::stored);
    EXPECT_EQ(results[0].rows, 1);
    EXPECT_EQ(results[1].rows, 2);
    EXPECT_EQ(done, 2U);
}

TEST_F(AllotmentTest, RollsEveryVoucherBackWhereNothingIsToBeKept) {
    database.answerPrefix("select RowGuid,", {{"RowGuid"}, {}, {}});
    EXPECT_CALL(connection, BeginTrans()).Times(2);
    EXPECT_CALL(connection, RollbackTrans()).Times(2);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).WillRepeatedly(savesRows(1));
    EXPECT_EQ(run(allotment(false), 2)[1].outcome, Outcome::stored);
}

TEST_F(AllotmentTest, DistinguishesNoCashFromNothingToAllocate) {
    EXPECT_CALL(connection, BeginTrans()).Times(2);
    EXPECT_CALL(connection, RollbackTrans()).Times(2);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 1, _, _, _)).WillOnce(Return(true));
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 2, _, _, _)).WillOnce(savesRows(0));
    const auto results = run(allotment(), 2);
    EXPECT_EQ(results[0].outcome, Outcome::noCash);
    EXPECT_EQ(results[1].outcome, Outcome::nothing);
}

TEST_F(AllotmentTest, RollsARefusedVoucherBackAndGoesOn) {
    InSequence sequence;
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 1, _, _, _))
        .WillOnce(Throw(Error(errors::sumsDiffer, "CashFlow", "the sums differ")));
    EXPECT_CALL(connection, RollbackTrans());
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 2, _, _, _)).WillOnce(savesRows(3));
    EXPECT_CALL(connection, CommitTrans());
    const auto results = run(allotment(), 2);
    EXPECT_EQ(results[0].outcome, Outcome::refused);
    EXPECT_EQ(results[0].rows, 0);
    ASSERT_TRUE(results[0].refusal);
    EXPECT_EQ(results[0].refusal->error.number(), 10009);
    EXPECT_EQ(results[0].refusal->error.description(), "the sums differ");
    EXPECT_EQ(results[1].outcome, Outcome::stored);
}

TEST_F(AllotmentTest, StopsBeforeTheNextVoucherWhenAsked) {
    EXPECT_CALL(connection, BeginTrans()).Times(3);
    EXPECT_CALL(connection, CommitTrans()).Times(3);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).Times(3).WillRepeatedly(savesRows(1));
    int asked = 0;
    const auto results = run(allotment(), 10, [&asked] { return ++asked > 3; });
    EXPECT_EQ(results.size(), 3U);
    EXPECT_EQ(done, 3U);
}

TEST_F(AllotmentTest, AFailingDatabaseEndsTheRunAfterARollback) {
    InSequence sequence;
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 1, _, _, _))
        .WillOnce(Throw(Error(13, "CashFlow", "database or disk is full", "HY000")));
    EXPECT_CALL(connection, RollbackTrans());
    EXPECT_THROW(run(allotment(), 2), Error);
}

TEST_F(AllotmentTest, ACommitThatFailsIsRolledBack) {
    InSequence sequence;
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).WillOnce(savesRows(1));
    EXPECT_CALL(connection, CommitTrans()).WillOnce(Throw(Error(5, "SQLite", "database is locked", "HYT00")));
    EXPECT_CALL(connection, RollbackTrans());
    EXPECT_THROW(run(allotment(), 2), Error);
}

TEST_F(AllotmentTest, LocksTheVoucherBeforeAnythingOfItIsRead) {
    InSequence sequence;
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(connection, Execute(lockStatement + "1"));
    EXPECT_CALL(connection, Execute(testing::StartsWith("select v.inid,")));
    EXPECT_CALL(connection, Execute(testing::StartsWith("select t.inid,")));
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 1, _, _, _)).WillOnce(savesRows(1));
    EXPECT_CALL(connection, CommitTrans());
    EXPECT_EQ(run(allotment(), 1)[0].outcome, Outcome::stored);
}

TEST_F(AllotmentTest, AVoucherHeldByAnotherSessionIsRefusedAndTheRunContinues) {
    // As reported by a server for a lock and for a deadlock, and by the embedded database when a transaction
    // begins.
    for (const Error& held : {Error(1222, "ODBC", "Lock request time out period exceeded.", "42000"),
                              Error(1205, "ODBC", "deadlocked", "40001"), Error(5, "SQLite", "locked", "HYT00")}) {
        allowReading();
        InSequence sequence;
        EXPECT_CALL(connection, BeginTrans());
        EXPECT_CALL(connection, Execute(lockStatement + "1")).WillOnce(Throw(held));
        EXPECT_CALL(connection, RollbackTrans());
        EXPECT_CALL(connection, BeginTrans());
        EXPECT_CALL(connection, Execute(lockStatement + "2"));
        EXPECT_CALL(connection, Execute(testing::StartsWith("select "))).Times(2);
        EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 2, _, _, _)).WillOnce(savesRows(3));
        EXPECT_CALL(connection, Execute(testing::StartsWith("select table1.*")));
        EXPECT_CALL(connection, CommitTrans());
        const auto results = run(allotment(), 2);
        ASSERT_EQ(results[0].outcome, Outcome::refused);
        EXPECT_EQ(results[0].refusal->error.number(), held.number());
        ASSERT_EQ(results[0].refusal->findings.size(), 1U);
        EXPECT_EQ(results[0].refusal->findings[0].kind, Finding::Kind::heldElsewhere);
        EXPECT_EQ(results[1].outcome, Outcome::stored);
        testing::Mock::VerifyAndClearExpectations(&connection);
    }
}

TEST_F(AllotmentTest, ATransactionThatCannotBeginBecauseAnotherWritesIsARefusal) {
    EXPECT_CALL(connection, BeginTrans()).WillOnce(Throw(Error(5, "SQLite", "database is locked", "HYT00")));
    EXPECT_EQ(run(allotment(), 1)[0].refusal->findings.at(0).kind, Finding::Kind::heldElsewhere);
}

TEST_F(AllotmentTest, RowsThatReadersDoNotFindAreRolledBack) {
    InSequence sequence;
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).WillOnce([this](auto&&... arguments) {
        savesRows(2)(arguments...);
        readable.pop_back();
        return true;
    });
    EXPECT_CALL(connection, RollbackTrans());
    const auto results = run(allotment(), 1);
    EXPECT_EQ(results[0].outcome, Outcome::refused);
    EXPECT_EQ(results[0].rows, 0);
    EXPECT_EQ(results[0].refusal->error.number(), errors::rowsNotReadable);
    EXPECT_EQ(results[0].refusal->findings.at(0).rows, 1);
}

TEST_F(AllotmentTest, TheLibraryIsNotAskedAboutAVoucherOfAnotherYearOrWithoutAnAmount) {
    EXPECT_CALL(connection, BeginTrans()).Times(3);
    EXPECT_CALL(connection, RollbackTrans()).Times(3);
    database.answerPrefix("select v.inid,", linesOf(Variant()));
    EXPECT_EQ(run(allotment(), 1)[0].refusal->error.number(), errors::invalidNull);
    database.answerPrefix("select v.inid,", linesOf(Variant(0.0)));
    database.answerPrefix("select iyear,iid from zqsystem..ua_period",
                          {{"iyear", "iid"}, {{Variant(2023), Variant(12)}}, {}});
    EXPECT_EQ(run(allotment(), 1)[0].refusal->error.number(), errors::dateOutsideYear);
    database.answerPrefix("select iyear,iid from zqsystem..ua_period", {{"iyear", "iid"}, {}, {}});
    EXPECT_EQ(run(allotment(), 1)[0].refusal->error.number(), errors::dateOutsideYear);
}

TEST_F(AllotmentTest, TheYearOfOneVoucherDoesNotReachTheNext) {
    std::vector<std::int16_t> years;
    EXPECT_CALL(connection, BeginTrans()).Times(2);
    EXPECT_CALL(connection, RollbackTrans()).Times(2);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).WillRepeatedly(Invoke([&years](auto&&...) {
        years.push_back(modPublic::context().yearOverride);
        modPublic::SetIYear(1900); // as left by a date outside all periods
        return true;
    }));
    run(allotment(), 2);
    EXPECT_THAT(years, ElementsAre(2024, 2024));
}

} // namespace
} // namespace z7::cashflow::workbench
