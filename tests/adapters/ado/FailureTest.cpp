#include "adapters/ado/AdoOverEmbedded.h"
#include "adapters/ado/Connection.h"
#include "adapters/ado/Login.h"
#include "doubles/FakeLogin.h"
#include "standins/AdoConnection.h"
#include "standins/HostLogin.h"

#include <memory>
#include <set>
#include <vector>

namespace z7::cashflow::test {
namespace {

/// The codes and ways in which an object of a host may fail.
const std::vector<Failure>& failures() {
    static const std::vector<Failure> all{{E_FAIL, "Host", "broken", true},
                                          {RPC_E_DISCONNECTED, "", "", false},
                                          {static_cast<HRESULT>(0x800A0E7C), "ADODB", "parameter", true},
                                          {E_OUTOFMEMORY, "", "", false}};
    return all;
}

/// Uses every member of the ADO objects that the library uses.
void useEverything(const Dispatch& host) {
    ado::Connection connection(host);
    connection.BeginTrans();
    connection.Execute("insert into fitemss98 (citemcode,citemname) values(N'0101',N'a')");
    const auto counted = connection.Execute("select * from fitemss98 where citemcode=N'0101'");
    static_cast<void>(counted->RecordCount());
    static_cast<void>(counted->Fields().Item("citemname"));
    counted->Close();
    const auto records = connection.createRecordset();
    records->CursorLocation(CursorLocation::client);
    records->Open("select * from fitemss98", &connection, CursorType::keyset, LockType::optimistic);
    records->AddNew();
    records->Fields().Item("citemcode", Variant("0102"));
    records->Update();
    records->Filter("citemcode=0102");
    static_cast<void>(records->Filter());
    records->MoveFirst();
    records->MoveNext();
    static_cast<void>(records->atEnd());
    records->ActiveConnection(std::monostate());
    records->Close();
    records->Open("select 1 as x", connection.ConnectionString(), CursorType::snapshot, LockType::readOnly);
    connection.RollbackTrans();
}

TEST(FailureTest, EveryCallOfAnAdoObjectMayFailAndIsThenAnError) {
    AdoOverEmbedded database;
    CallPlan& calls = *database.ado().calls;
    const auto session = std::make_shared<sqlite::Connection>();
    session->Open(database.connectionString(std::int16_t{2013}, 0));
    std::set<std::size_t> ignored;
    for (const Failure& failure : failures()) {
        for (std::size_t n = 1;; ++n) {
            const ComPtr<IDispatch> host(makeObject<AdoConnection>(database.sharedAdo(), session).get());
            calls.failAt(n, failure);
            bool failed = false;
            try {
                useEverything(Dispatch(host));
            } catch (const Error&) {
                failed = true;
            }
            if (calls.isFailurePending()) { // there were fewer calls
                calls.forgetFailure();
                EXPECT_FALSE(failed);
                EXPECT_GT(n, 50U) << "the calls were not tried";
                break;
            }
            if (!failed) {
                ignored.insert(n);
            }
            if (session->inTransaction()) {
                session->RollbackTrans();
            }
        }
    }
    // Only these failures change nothing for the library: to set back the cursor location after each of the two
    // statements, and what the destructors of the three recordsets call: the state of each, and Close of one.
    EXPECT_THAT(ignored, ::testing::SizeIs(6));
}

TEST(FailureTest, EveryCallOfALoginMayFailAndIsThenAnError) {
    const auto plan = std::make_shared<CallPlan>();
    const auto fake = std::make_shared<FakeLogin>();
    for (const Failure& failure : failures()) {
        std::size_t n = 1;
        for (;; ++n) {
            ado::Login login(Dispatch(makeObject<HostLogin>(plan, fake).get()));
            plan->failAt(n, failure);
            bool failed = false;
            try {
                static_cast<void>(login.LocaleId());
                static_cast<void>(login.accountingYear());
                static_cast<void>(login.information(117));
                static_cast<void>(login.TextLookup()->text("k"));
                static_cast<void>(login.FormattedTextLookup()->text("k", {Variant("x")}));
            } catch (const Error&) {
                failed = true;
            }
            if (plan->isFailurePending()) {
                plan->forgetFailure();
                break;
            }
            EXPECT_TRUE(failed) << "call " << n;
        }
        EXPECT_EQ(n, 8U) << "seven calls";
    }
}

} // namespace
} // namespace z7::cashflow::test
