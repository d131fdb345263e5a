#include "adapters/conformance/DatabaseUnderTest.h"

#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::conformance {
namespace {

class SessionCases : public DatabaseCase {
protected:
    const std::string insert_ = "insert into fitemss98 (citemcode) values(N'0101')";
    const std::string select_ = "select * from fitemss98";
};

TEST_P(SessionCases, StatesOfAConnection) {
    auto connection = database_->makeConnection();
    EXPECT_EQ(connection->State(), ObjectState::closed);
    EXPECT_EQ(errorOf([&] { connection->Execute(select_); }).number(), 3704);
    EXPECT_EQ(errorOf([&] { connection->Close(); }).number(), 3704);
    EXPECT_EQ(errorOf([&] { connection->BeginTrans(); }).number(), 3704);
    const std::string text = database_->connectionString(std::int16_t{2013}, 0);
    connection->Open(text);
    EXPECT_EQ(connection->State(), ObjectState::open);
    EXPECT_EQ(connection->ConnectionString(), text);
    EXPECT_EQ(errorOf([&] { connection->Open(text); }).number(), 3705);
    connection->Close();
    EXPECT_EQ(connection->State(), ObjectState::closed);
    connection->Open(text);
    EXPECT_EQ(connection->Execute(select_)->RecordCount(), 0);
}

TEST_P(SessionCases, WhatIsNotCommittedIsSeenByItsSessionAlone) {
    const auto other = open(std::int16_t{2013});
    connection_->BeginTrans();
    run(insert_);
    EXPECT_EQ(count(select_), 1);
    EXPECT_EQ(other->Execute(select_)->RecordCount(), 0);
    auto own = connection_->createRecordset();
    own->CursorLocation(CursorLocation::client); // where records are counted whatever the cursor
    own->Open(select_, connection_->ConnectionString(), CursorType::forwardOnly, LockType::readOnly);
    EXPECT_EQ(own->RecordCount(), 0) << "a connection string stands for a session of its own";
    own->Close();
    own->Open(select_, connection_.get(), CursorType::forwardOnly, LockType::readOnly);
    EXPECT_EQ(own->RecordCount(), 1);
    connection_->CommitTrans();
    EXPECT_EQ(other->Execute(select_)->RecordCount(), 1);
}

TEST_P(SessionCases, RollbackAndCloseTakeEverythingBack) {
    connection_->BeginTrans();
    run(insert_);
    connection_->RollbackTrans();
    EXPECT_EQ(count(select_), 0);
    connection_->BeginTrans();
    run(insert_);
    connection_->Close();
    const auto other = open(std::int16_t{2013});
    EXPECT_EQ(other->Execute(select_)->RecordCount(), 0);
    {
        const auto gone = open(std::int16_t{2013});
        gone->BeginTrans();
        gone->Execute(insert_);
    }
    EXPECT_EQ(other->Execute(select_)->RecordCount(), 0);
    other->Execute(insert_); // and nobody holds a lock any longer
    EXPECT_EQ(other->Execute(select_)->RecordCount(), 1);
}

TEST_P(SessionCases, TransactionsDoNotNest) {
    EXPECT_GT(errorOf([&] { connection_->CommitTrans(); }).number(), 0);
    EXPECT_GT(errorOf([&] { connection_->RollbackTrans(); }).number(), 0);
    connection_->BeginTrans();
    EXPECT_GT(errorOf([&] { connection_->BeginTrans(); }).number(), 0);
    run(insert_);
    connection_->CommitTrans();
    EXPECT_EQ(count(select_), 1);
}

TEST_P(SessionCases, ARefusedStatementLeavesTheTransactionOpen) {
    connection_->BeginTrans();
    run(insert_);
    EXPECT_EQ(errorOf([&] { run(insert_); }).sqlState(), "23000");
    EXPECT_EQ(count(select_), 1);
    connection_->CommitTrans();
    EXPECT_EQ(count(select_), 1);
}

TEST_P(SessionCases, AStatementThatIsNoneLeavesTheTransactionOpen) {
    Z7_NEEDS(database_->keepsTransactionAfterBadSyntax());
    connection_->BeginTrans();
    run(insert_);
    EXPECT_EQ(errorOf([&] { run("delete"); }).number(), 102);
    EXPECT_EQ(count(select_), 1);
    connection_->CommitTrans();
    EXPECT_EQ(count(select_), 1);
}

TEST_P(SessionCases, OfTwoDesksThatSaveOneGetsAClearError) {
    Z7_NEEDS(database_->waitsForLock());
    Z7_NEEDS(database_->tellsLockTimeout());
    const auto other = open(std::int16_t{2014}, 1);
    connection_->BeginTrans();
    run(insert_);
    bool begun = false; // the lock may be obtained by the begin of a transaction, or by its first change
    const Error locked = errorOf([&] {
        other->BeginTrans();
        begun = true;
        other->Execute("update fitemss98 set citemname=N'x'");
    });
    EXPECT_EQ(locked.sqlState(), "HYT00");
    EXPECT_NE(asciiLower(locked.description()).find("lock"), std::string::npos) << locked.description();
    if (begun) {
        other->RollbackTrans();
    }
    connection_->CommitTrans();
    other->BeginTrans();
    other->Execute("update fitemss98 set citemname=N'x'");
    other->CommitTrans();
    EXPECT_EQ(first("select citemname from fitemss98"), Variant("x"));
}

TEST_P(SessionCases, AReaderDoesNotKeepAWriterWaiting) {
    run(insert_);
    const auto other = open(std::int16_t{2013});
    const auto reading = other->Execute(select_);
    run("delete from fitemss98");
    EXPECT_EQ(reading->RecordCount(), 1);
    EXPECT_EQ(reading->Fields().Item("citemcode"), Variant("0101"));
}

INSTANTIATE_TEST_SUITE_P(Adapters, SessionCases, ::testing::ValuesIn(databasesUnderTest()), adapterName);

} // namespace
} // namespace z7::cashflow::conformance
