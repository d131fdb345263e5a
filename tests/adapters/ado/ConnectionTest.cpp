#include "adapters/ado/Connection.h"

#include "adapters/ado/AdoOverEmbedded.h"
#include "adapters/ado/ConnectionFactory.h"
#include "standins/AdoConnection.h"

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {
namespace {

using conformance::errorOf;

/// A connection that only knows whether it is open.
class PlainConnection final : public Connection {
public:
    void Open(const std::string& connectionString) override {
        state_ = ObjectState::open;
        connectionString_ = connectionString;
    }
    void Close() override { state_ = ObjectState::closed; }
    [[nodiscard]] ObjectState State() const override { return state_; }
    [[nodiscard]] std::string ConnectionString() const override { return connectionString_; }
    std::shared_ptr<Recordset> Execute(const std::string&) override { return nullptr; }
    [[nodiscard]] std::shared_ptr<Recordset> createRecordset() override { return nullptr; }
    void BeginTrans() override {}
    void CommitTrans() override {}
    void RollbackTrans() override {}

private:
    ObjectState state_ = ObjectState::closed;
    std::string connectionString_;
};

/// The class ADODB.Connection over plain connections.
class PlainAdo {
public:
    PlainAdo() : classes_(database_) {
        database_->makeConnection = [] { return std::make_unique<PlainConnection>(); };
    }
    [[nodiscard]] CallPlan& calls() { return *database_->calls; }

private:
    std::shared_ptr<AdoDatabase> database_ = std::make_shared<AdoDatabase>();
    AdoClasses classes_;
};

class HostConnectionTest : public ::testing::Test {
protected:
    AdoOverEmbedded database_;
    ComPtr<IDispatch> host_ = database_.openHostConnection();
    ado::Connection connection_{Dispatch(host_)};
};

TEST_F(HostConnectionTest, IsUsedAsItIsAndStaysOpen) {
    EXPECT_EQ(connection_.State(), ObjectState::open);
    connection_.Execute("insert into fitemss98 (citemcode) values(N'0101')");
    {
        const ado::Connection another{Dispatch(host_)};
        EXPECT_EQ(Variant(another.ConnectionString()), Dispatch(host_).get(L"ConnectionString").value());
    }
    EXPECT_EQ(connection_.State(), ObjectState::open) << "the host owns it";
    EXPECT_EQ(connection_.Execute("select * from fitemss98")->RecordCount(), 1);
}

TEST_F(HostConnectionTest, SharesTheHostsTransaction) {
    const Dispatch host(host_);
    host.call(L"BeginTrans");
    connection_.Execute("insert into fitemss98 (citemcode) values(N'0101')");
    host.call(L"RollbackTrans");
    EXPECT_EQ(connection_.Execute("select * from fitemss98")->RecordCount(), 0);
}

TEST_F(HostConnectionTest, ItsCursorLocationIsTheSameAfterAStatementAndAfterAFailedOne) {
    const Dispatch host(host_);
    for (const std::int32_t location : {2, 3}) {
        host.put(L"CursorLocation", location);
        EXPECT_EQ(connection_.Execute("select 1 as x")->RecordCount(), 1);
        EXPECT_EQ(host.get(L"CursorLocation").value(), Variant(location));
        EXPECT_EQ(errorOf([&] { connection_.Execute("delete"); }).number(), 102);
        EXPECT_EQ(host.get(L"CursorLocation").value(), Variant(location));
    }
}

TEST_F(HostConnectionTest, ErrorsOfTheDatabaseHaveItsNumberStateAndText) {
    connection_.Execute("insert into fitemss98 (citemcode) values(N'0101')");
    const Error error = errorOf([&] { connection_.Execute("insert into fitemss98 (citemcode) values(N'0101')"); });
    EXPECT_GT(error.number(), 0);
    EXPECT_EQ(error.sqlState(), "23000");
    EXPECT_FALSE(error.description().empty());
}

TEST_F(HostConnectionTest, AWarningInFrontOfTheErrorIsPassedOver) {
    database_.ado().warning = Error(3621, "Provider", "The statement has been terminated.", "01000");
    const Error error = errorOf([&] { connection_.Execute("delete"); });
    EXPECT_EQ(error.number(), 102);
    EXPECT_EQ(error.sqlState(), "42000");
}

TEST_F(HostConnectionTest, AnErrorOfAdoItselfDoesNotGetAnOlderErrorsNumber) {
    EXPECT_EQ(errorOf([&] { connection_.Execute("delete"); }).number(), 102);
    connection_.Close();
    const Error closed = errorOf([&] { connection_.Execute("select 1 as x"); });
    EXPECT_EQ(closed.number(), 3704);
    EXPECT_EQ(closed.sqlState(), "");
}

TEST_F(HostConnectionTest, AFailureWithoutAnEntryInErrorsStaysAsItIs) {
    EXPECT_EQ(errorOf([&] { connection_.Execute("delete"); }).number(), 102);
    database_.ado().calls->failAt(1, {E_FAIL, "Provider", "The connection is broken", true});
    const Error error = errorOf([&] { connection_.BeginTrans(); });
    EXPECT_EQ(error.number(), static_cast<int>(E_FAIL)) << "not that of the older error";
    EXPECT_EQ(error.description(), "The connection is broken");
    EXPECT_EQ(error.source(), "Provider");
}

/// A connection whose batches have several results.
class Batches final : public AutomationObject {
public:
    Batches(const std::shared_ptr<CallPlan>& plan, int closedResults)
        : AutomationObject(plan, IID{}), closedResults_(closedResults) {
        property(
            L"CursorLocation", [](const Call&) { return OwnedVariant(std::int32_t{3}); },
            [](const Call&) { return OwnedVariant(); });
        method(L"Execute", [this](const Call&) { return self(); });
        property(L"State", [this](const Call&) { return OwnedVariant(std::int32_t{closedResults_ > 0 ? 0 : 1}); });
        method(L"NextRecordset", [this](const Call&) {
            --closedResults_;
            return self();
        });
        method(L"Close", [](const Call&) { return OwnedVariant(); });
        property(L"RecordCount", [](const Call&) { return OwnedVariant(std::int32_t{7}); });
    }

private:
    OwnedVariant self() { return OwnedVariant(static_cast<IDispatch*>(this)); }

    int closedResults_;
};

TEST(BatchTest, CountsOfChangedRecordsInFrontOfTheResultArePassedOver) {
    const auto batches = makeObject<Batches>(std::make_shared<CallPlan>(), 2);
    ado::Connection connection{Dispatch(batches.get())};
    const auto result = connection.Execute("insert into a; delete from b; select * from c");
    EXPECT_EQ(result->State(), ObjectState::open);
    EXPECT_EQ(result->RecordCount(), 7);
}

TEST(BatchTest, AProviderWithOneResultOnlyHasNoNext) {
    const auto plan = std::make_shared<CallPlan>();
    const auto batches = makeObject<Batches>(plan, 1);
    ado::Connection connection{Dispatch(batches.get())};
    constexpr std::size_t next = 4; // after CursorLocation, Execute and State
    plan->failAt(next, {static_cast<HRESULT>(0x800A0CB3), "ADODB", "not supported", true});
    EXPECT_EQ(connection.Execute("delete from b")->State(), ObjectState::closed);
    EXPECT_FALSE(plan->isFailurePending());
}

TEST_F(HostConnectionTest, TransactionErrorsOfTheProviderHaveTheServersNumbers) {
    CallPlan& calls = *database_.ado().calls;
    calls.failAt(1, {static_cast<HRESULT>(0x8004D013), "Provider", "Only one transaction can be active", true});
    EXPECT_EQ(errorOf([&] { connection_.BeginTrans(); }).number(), 3988);
    calls.failAt(1, {static_cast<HRESULT>(0x8004D00E), "Provider", "No transaction is active.", true});
    EXPECT_EQ(errorOf([&] { connection_.CommitTrans(); }).number(), 3902);
}

TEST(OwnConnectionTest, KeepsTheTextThatItWasOpenedWith) {
    const PlainAdo plain;
    ado::Connection connection;
    EXPECT_EQ(connection.State(), ObjectState::closed);
    const std::string text = "Provider=P;Data Source=s;User ID=u;Password=geheim;Initial Catalog=d";
    connection.Open(text);
    EXPECT_EQ(connection.State(), ObjectState::open);
    EXPECT_EQ(connection.ConnectionString(), text) << "ADO's own property lacks the password by now";
    EXPECT_EQ(connection.object().get(L"ConnectionString").value(),
              Variant("Provider=P;Data Source=s;User ID=u;Initial Catalog=d"));
}

TEST(OwnConnectionTest, IsClosedByItsOwner) {
    const PlainAdo plain;
    ComPtr<IDispatch> object;
    {
        ado::Connection connection;
        connection.Open("db=x");
        object = connection.object().pointer();
    }
    EXPECT_EQ(Dispatch(object).get(L"State").value(), Variant(std::int32_t{0}));
}

TEST(OwnConnectionTest, APasswordIsInNoMessage) {
    constexpr auto driverNotFound = static_cast<HRESULT>(0x800A0E7A); // ADO's own number 3706
    for (const HRESULT code : {E_FAIL, driverNotFound}) {
        PlainAdo plain;
        ado::Connection connection;
        plain.calls().failAt(1, {code, "Provider", "Login failed for Password=geheim;", true});
        const Error error = errorOf([&] { connection.Open("Provider=P;User ID=u;Password=geheim"); });
        EXPECT_EQ(error.description(), "Login failed for Password=***;");
    }
}

TEST(OwnConnectionTest, TheFactoryMakesClosedConnections) {
    AdoOverEmbedded database;
    const auto connection = ado::ConnectionFactory().create("anything");
    EXPECT_EQ(connection->State(), ObjectState::closed);
    connection->Open(database.connectionString(std::int16_t{2013}, 0));
    EXPECT_EQ(connection->Execute("select 1 as x")->RecordCount(), 1);
}

TEST(OwnConnectionTest, NothingIsNoConnection) {
    EXPECT_EQ(errorOf([] { const ado::Connection connection{Dispatch()}; }).number(), 91);
}

} // namespace
} // namespace z7::cashflow::test
