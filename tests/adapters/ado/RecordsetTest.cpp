#include "adapters/ado/Recordset.h"

#include "adapters/ado/AdoOverEmbedded.h"
#include "adapters/ado/Connection.h"
#include "doubles/ScriptedDatabase.h"
#include "standins/AdoConnection.h"

#include <memory>
#include <string>

namespace z7::cashflow::test {
namespace {

using conformance::errorOf;

/// The library's calls on ADO objects over a database that keeps a journal.
class JournalTest : public ::testing::Test {
protected:
    JournalTest() {
        database_->makeConnection = [this] { return scripted_.newConnection("session"); };
        database_->makeRecordset = [this] { return scripted_.connection().createRecordset(); };
        scripted_.answerPrefix("select", {{"code", "amount"}, {{Variant("1001"), Variant(1.5)}}, {}});
        scripted_.acceptPrefix("delete");
    }
    std::shared_ptr<AdoDatabase> database_ = std::make_shared<AdoDatabase>();
    ScriptedDatabase scripted_;
    AdoClasses classes_{database_};
    ComPtr<AdoConnection> host_ =
        makeObject<AdoConnection>(database_, std::shared_ptr<Connection>(&scripted_.connection(), [](Connection*) {}));
    ado::Connection connection_{Dispatch(host_.get())};
};

TEST_F(JournalTest, StatementsReachTheSessionUnchanged) {
    connection_.Execute("select  a ,b from  x");
    connection_.Execute("delete from y");
    const auto records = connection_.createRecordset();
    records->Open("select c", &connection_, CursorType::snapshot, LockType::optimistic);
    records->Close();
    records->CursorLocation(CursorLocation::client);
    records->Open("select d", connection_.ConnectionString(), CursorType::keyset, LockType::readOnly);
    EXPECT_EQ(scripted_.statements(), (std::vector<std::string>{"main: select  a ,b from  x", "main: delete from y",
                                                                "main(3,3): select c", "own(1,1,3): select d"}));
}

TEST_F(JournalTest, TheCursorIsThatOfAdo) {
    const auto records = connection_.createRecordset();
    records->Open("select c", &connection_, CursorType::dynamic, LockType::optimistic);
    EXPECT_EQ(records->RecordCount(), -1) << "a dynamic cursor on the server does not count";
    records->Close();
    records->CursorLocation(CursorLocation::client);
    records->Open("select c", &connection_, CursorType::dynamic, LockType::optimistic);
    EXPECT_EQ(records->RecordCount(), 1);
    EXPECT_EQ(records->CursorLocation(), CursorLocation::client);
}

TEST_F(JournalTest, AConnectionOfAnotherAdapterIsRefused) {
    const auto records = connection_.createRecordset();
    EXPECT_EQ(errorOf([&] {
                  records->Open("select c", &scripted_.connection(), CursorType::snapshot, LockType::readOnly);
              }).number(),
              3001);
}

class AdoRecordsetTest : public ::testing::Test {
protected:
    AdoRecordsetTest() {
        connection_.Execute("insert into fitemss98 (citemcode,citemname) values(N'0101',N'a');"
                            "insert into fitemss98 (citemcode,citemname) values(N'0102',N'b')");
    }
    std::shared_ptr<Recordset> open(LockType lock = LockType::optimistic) {
        auto records = connection_.createRecordset();
        records->Open("select * from fitemss98 order by citemcode", &connection_, CursorType::keyset, lock);
        return records;
    }
    AdoOverEmbedded database_;
    ado::Connection connection_{Dispatch(database_.openHostConnection())};
};

TEST_F(AdoRecordsetTest, ClosingDiscardsAChangeThatAdoWouldWaitFor) {
    const auto records = open();
    records->AddNew();
    records->Fields().Item("citemcode", Variant("0199"));
    records->Close();
    EXPECT_EQ(records->State(), ObjectState::closed);
    EXPECT_EQ(open()->RecordCount(), 2);
}

TEST_F(AdoRecordsetTest, IsClosedWithItsConnection) {
    const auto records = open();
    connection_.Close();
    EXPECT_EQ(records->State(), ObjectState::closed);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records->atEnd()); }).number(), 3704);
}

TEST_F(AdoRecordsetTest, FieldsFollowTheCurrentRecordAndTheNextOpen) {
    const auto records = open();
    const FieldList& fields = records->Fields();
    EXPECT_EQ(fields.Item("citemname"), Variant("a"));
    records->MoveNext();
    EXPECT_EQ(fields.Item("citemname"), Variant("b"));
    records->Close();
    EXPECT_EQ(errorOf([&] { static_cast<void>(records->Fields()); }).number(), 3704);
    records->Open("select 7 as n", &connection_, CursorType::keyset, LockType::readOnly);
    EXPECT_EQ(records->Fields().Count(), 1);
    EXPECT_EQ(records->Fields().Item(0), Variant(std::int32_t{7}));
}

TEST_F(AdoRecordsetTest, MoveFirstWithoutRecordsStaysAtTheEnd) {
    const auto records = open();
    records->Filter("citemcode=7");
    EXPECT_TRUE(records->atEnd());
    records->MoveFirst();
    EXPECT_TRUE(records->atEnd());
    records->Filter("");
    records->MoveFirst();
    EXPECT_FALSE(records->atEnd());
    EXPECT_EQ(records->Filter(), "");
}

TEST_F(AdoRecordsetTest, MoveFirstAfterTheLastRecordGoesBack) {
    const auto records = open();
    records->MoveNext();
    records->MoveNext();
    EXPECT_TRUE(records->atEnd());
    records->MoveFirst();
    EXPECT_EQ(records->Fields().Item("citemcode"), Variant("0101"));
}

TEST_F(AdoRecordsetTest, OnlyRecordsOnTheClientCanBeCutOff) {
    const auto records = open();
    EXPECT_EQ(errorOf([&] { records->ActiveConnection(std::monostate()); }).number(), 3705);
    EXPECT_TRUE(std::holds_alternative<Connection*>(records->ActiveConnection()));
}

TEST_F(AdoRecordsetTest, RecordsThatAreCutOffAreNotChangedInAdoEither) {
    const auto records = connection_.createRecordset();
    records->CursorLocation(CursorLocation::client);
    records->Open("select * from fitemss98", &connection_, CursorType::keyset, LockType::optimistic);
    records->ActiveConnection(std::monostate());
    const std::size_t before = database_.ado().calls->count();
    EXPECT_EQ(errorOf([&] { records->AddNew(); }).number(), 3251);
    EXPECT_EQ(database_.ado().calls->count(), before + 1) << "only the state was asked for";
}

TEST_F(AdoRecordsetTest, AConnectionSetBeforehandIsUsedByOpen) {
    const auto records = connection_.createRecordset();
    records->ActiveConnection(&connection_);
    records->Open("select 1 as x", std::monostate(), CursorType::snapshot, LockType::readOnly);
    EXPECT_EQ(records->RecordCount(), 1);
    records->Close();
    records->ActiveConnection(connection_.ConnectionString());
    records->Open("select 2 as x", std::monostate(), CursorType::snapshot, LockType::readOnly);
    EXPECT_EQ(records->Fields().Item("x"), Variant(std::int32_t{2}));
    records->Close();
    records->ActiveConnection(std::monostate());
    EXPECT_EQ(errorOf([&] {
                  records->Open("select 1 as x", std::monostate(), CursorType::snapshot, LockType::readOnly);
              }).number(),
              3709);
}

TEST_F(AdoRecordsetTest, ErrorsOfAnOwnSessionHaveTheDatabasesNumber) {
    const auto records = connection_.createRecordset();
    const Error error = errorOf(
        [&] { records->Open("delete", connection_.ConnectionString(), CursorType::keyset, LockType::readOnly); });
    EXPECT_EQ(error.number(), 102);
    EXPECT_EQ(records->State(), ObjectState::closed);
}

TEST_F(AdoRecordsetTest, APasswordOfItsConnectionStringIsInNoMessage) {
    const auto records = connection_.createRecordset();
    constexpr std::size_t opening = 2; // after State
    database_.ado().calls->failAt(opening, {E_FAIL, "Provider", "Login failed: Password=geheim", true});
    const Error error = errorOf(
        [&] { records->Open("select 1 as x", "Provider=P;Password=geheim", CursorType::keyset, LockType::readOnly); });
    EXPECT_EQ(error.description(), "Login failed: Password=***");
}

TEST_F(AdoRecordsetTest, AValueThatItsColumnCannotTakeIsError13AndChangesNothing) {
    const auto records = connection_.createRecordset();
    records->Open("select * from gl_accvouch", &connection_, CursorType::keyset, LockType::optimistic);
    records->AddNew();
    records->Fields().Item("md", Variant(1.5));
    for (const HRESULT code : {static_cast<HRESULT>(0x80040E21), static_cast<HRESULT>(0x80040E07),
                               static_cast<HRESULT>(0x80040E57), DISP_E_OVERFLOW}) {
        database_.ado().calls->failAt(1, {code, "Provider", "refused", true});
        EXPECT_EQ(errorOf([&] { records->Fields().Item("md", Variant("2")); }).number(), 13);
    }
    EXPECT_EQ(errorOf([&] { records->Fields().Item("md", Variant("abc")); }).number(), 13);
    EXPECT_EQ(records->Fields().Item("md"), Variant(1.5));
}

/// A recordset with values that the embedded database never returns.
class ForeignValues final : public AutomationObject {
public:
    ForeignValues(const std::shared_ptr<CallPlan>& plan, OwnedVariant value) : AutomationObject(plan, IID{}) {
        property(L"State", [](const Call&) { return OwnedVariant(std::int32_t{1}); });
        property(L"EOF", [](const Call&) { return OwnedVariant("perhaps"); });
        property(L"RecordCount", [](const Call&) { return OwnedVariant("many"); });
        property(L"Fields", [this](const Call&) { return OwnedVariant(static_cast<IDispatch*>(this)); });
        property(L"Count", [](const Call&) { return OwnedVariant(std::int32_t{1}); });
        property(L"Item", [this](const Call&) { return OwnedVariant(static_cast<IDispatch*>(this)); });
        property(L"Name", [](const Call&) { return OwnedVariant("x"); });
        property(L"Value", [value = std::move(value)](const Call&) { return value; });
        method(L"Close", [](const Call&) { return OwnedVariant(); });
    }
};

TEST_F(AdoRecordsetTest, AmountsOfTheServerAreDoubles) {
    VARIANT money;
    VariantInit(&money);
    money.vt = VT_CY;
    money.cyVal.int64 = 1002500;
    const auto plan = std::make_shared<CallPlan>();
    const auto object = makeObject<ForeignValues>(plan, OwnedVariant(money));
    ado::Recordset records(Dispatch(object.get()), connection_, "select x");
    EXPECT_EQ(records.Fields().Item("x"), Variant(100.25));
}

TEST_F(AdoRecordsetTest, WhatNoRecordsetReturnsIsAClearError) {
    const auto plan = std::make_shared<CallPlan>();
    VARIANT binary;
    VariantInit(&binary);
    binary.vt = VT_ARRAY | VT_UI1;
    binary.parray = SafeArrayCreateVector(VT_UI1, 0, 8);
    const auto object = makeObject<ForeignValues>(plan, OwnedVariant::owning(binary));
    ado::Recordset records(Dispatch(object.get()), connection_, "select x");
    EXPECT_EQ(errorOf([&] { static_cast<void>(records.atEnd()); }).number(), 13);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records.RecordCount()); }).number(), 13);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records.Fields().Item("x")); }).number(), 13) << "a binary column";
}

} // namespace
} // namespace z7::cashflow::test
