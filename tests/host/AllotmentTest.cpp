#include "host/work/Allotment.h"

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/modPublic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
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
    MOCK_METHOD(std::shared_ptr<Recordset>, CreateRecordset, (), (override));
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

/// A save that hands back that many rows.
auto savesRows(int count) {
    return [count](Connection&, const std::string&, std::uint8_t, std::int16_t, std::int32_t, Date, Rows* rows, bool*) {
        *rows = CashFlowCollection::Create();
        for (int i = 0; i < count; ++i) {
            (*rows)->Add((*rows)->CreateCFObject());
        }
        return true;
    };
}

class AllotmentTest : public testing::Test {
protected:
    AllotmentTest() { modPublic::context() = modPublic::Context{}; }
    ~AllotmentTest() override { modPublic::context() = modPublic::Context{}; }

    std::vector<VoucherResult> run(
        Allotment& allotment, int vouchers, const std::function<bool()>& stop = [] { return false; }) {
        std::vector<VoucherHead> heads;
        for (int i = 1; i <= vouchers; ++i) {
            heads.push_back(voucher(i));
        }
        std::vector<VoucherResult> results;
        done = allotment.allotAll(heads, stop, [&results](const VoucherResult& result) { results.push_back(result); });
        return results;
    }

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
    Allotment allotment(connection, provider, true);
    const auto results = run(allotment, 2);
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ(results[0].outcome, Outcome::stored);
    EXPECT_EQ(results[0].rows, 1);
    EXPECT_EQ(results[1].rows, 2);
    EXPECT_EQ(done, 2U);
}

TEST_F(AllotmentTest, RollsEveryVoucherBackWhereNothingIsToBeKept) {
    EXPECT_CALL(connection, BeginTrans()).Times(2);
    EXPECT_CALL(connection, RollbackTrans()).Times(2);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).WillRepeatedly(savesRows(1));
    Allotment allotment(connection, provider, false);
    EXPECT_EQ(run(allotment, 2)[1].outcome, Outcome::stored);
}

TEST_F(AllotmentTest, TellsNoCashFromNothingToAllot) {
    EXPECT_CALL(connection, BeginTrans()).Times(2);
    EXPECT_CALL(connection, CommitTrans()).Times(2);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 1, _, _, _)).WillOnce(Return(true));
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 2, _, _, _)).WillOnce(savesRows(0));
    Allotment allotment(connection, provider, true);
    const auto results = run(allotment, 2);
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
    Allotment allotment(connection, provider, true);
    const auto results = run(allotment, 2);
    EXPECT_EQ(results[0].outcome, Outcome::refused);
    EXPECT_EQ(results[0].rows, 0);
    ASSERT_TRUE(results[0].refusal);
    EXPECT_EQ(results[0].refusal->number(), 10009);
    EXPECT_EQ(results[0].refusal->description(), "the sums differ");
    EXPECT_EQ(results[1].outcome, Outcome::stored);
}

TEST_F(AllotmentTest, StopsBeforeTheNextVoucherWhenAsked) {
    EXPECT_CALL(connection, BeginTrans()).Times(3);
    EXPECT_CALL(connection, CommitTrans()).Times(3);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).Times(3).WillRepeatedly(savesRows(1));
    Allotment allotment(connection, provider, true);
    int asked = 0;
    const auto results = run(allotment, 10, [&asked] { return ++asked > 3; });
    EXPECT_EQ(results.size(), 3U);
    EXPECT_EQ(done, 3U);
}

TEST_F(AllotmentTest, AFailingDatabaseEndsTheRunAfterARollback) {
    InSequence sequence;
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, 1, _, _, _))
        .WillOnce(Throw(Error(13, "CashFlow", "database or disk is full", "HY000")));
    EXPECT_CALL(connection, RollbackTrans());
    Allotment allotment(connection, provider, true);
    EXPECT_THROW(run(allotment, 2), Error);
}

TEST_F(AllotmentTest, ACommitThatFailsIsRolledBack) {
    InSequence sequence;
    EXPECT_CALL(connection, BeginTrans());
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).WillOnce(savesRows(1));
    EXPECT_CALL(connection, CommitTrans()).WillOnce(Throw(Error(5, "SQLite", "database is locked", "HYT00")));
    EXPECT_CALL(connection, RollbackTrans());
    Allotment allotment(connection, provider, true);
    EXPECT_THROW(run(allotment, 2), Error);
}

TEST_F(AllotmentTest, TheYearOfOneVoucherDoesNotReachTheNext) {
    std::vector<std::int16_t> years;
    EXPECT_CALL(connection, BeginTrans()).Times(2);
    EXPECT_CALL(connection, CommitTrans()).Times(2);
    EXPECT_CALL(provider, SaveCashFlowColEx(_, _, _, _, _, _, _, _)).WillRepeatedly(Invoke([&years](auto&&...) {
        years.push_back(modPublic::context().yearOverride);
        modPublic::SetIYear(1900); // as a date outside every period leaves it
        return true;
    }));
    Allotment allotment(connection, provider, true);
    run(allotment, 2);
    EXPECT_THAT(years, ElementsAre(2024, 2024));
}

} // namespace
} // namespace z7::cashflow::host
