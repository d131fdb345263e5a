#include "adapters/odbc/CuttingProxy.h"
#include "adapters/odbc/OdbcDatabase.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace z7::cashflow::odbc {
namespace {

using conformance::errorOf;

const std::regex serverKeyword("Server=([^;]*)", std::regex::icase);
const std::regex portKeyword("Port=([0-9]*)", std::regex::icase);

/// A database on the server, connected through a proxy that can cut the connections.
class OdbcCutLine : public ::testing::Test {
protected:
    void SetUp() override {
        if (!ServerDatabase::server()) {
            GTEST_SKIP() << "Z7CF_TEST_SQLSERVER holds no connection string, so there is no line to cut";
        }
        database_.emplace();
        text_ = database_->connectionString(std::int16_t{2013}, 5000);
        std::smatch host;
        std::smatch port;
        if (!std::regex_search(text_, host, serverKeyword) || !std::regex_search(text_, port, portKeyword)) {
            GTEST_SKIP() << "Z7CF_TEST_SQLSERVER names no Server= and Port= to put a door before";
        }
        proxy_.emplace(host[1], std::stoi(port[1]));
        text_ = std::regex_replace(text_, serverKeyword, "Server=127.0.0.1");
        text_ = std::regex_replace(text_, portKeyword, "Port=" + std::to_string(proxy_->port()));
    }
    [[nodiscard]] int stored() const { return database_->open()->Execute("select * from fitemss98")->RecordCount(); }

    std::optional<ServerDatabase> database_;
    std::optional<CuttingProxy> proxy_;
    std::string text_;
};

std::string insertOf(int item) { return "insert into fitemss98 (citemcode) values(N'" + std::to_string(item) + "')"; }

TEST_F(OdbcCutLine, WithinATransactionEndsInAnErrorAndNothingStays) {
    const std::vector<std::function<void(Connection&)>> steps{
        [](Connection& connection) { connection.Execute(insertOf(1)); },
        [](Connection& connection) { connection.Execute("select * from fitemss98"); },
        [](Connection& connection) { connection.Execute(insertOf(2) + ";" + insertOf(3)); },
        [](Connection& connection) { connection.CommitTrans(); },
    };
    for (std::size_t cutBefore = 0; cutBefore < steps.size(); ++cutBefore) {
        SCOPED_TRACE(cutBefore);
        Connection connection;
        connection.Open(text_);
        const int session = connection.sessionNumber();
        connection.BeginTrans();
        for (std::size_t step = 0; step < cutBefore; ++step) {
            steps[step](connection);
        }
        proxy_->cut();
        const Error error = errorOf([&] { steps[cutBefore](connection); });
        EXPECT_EQ(error.source(), "ODBC");
        EXPECT_NE(error.number(), 0);
        EXPECT_NE(error.description(), "");
        EXPECT_EQ(errorOf([&] { connection.Execute(insertOf(4)); }).number(), 3930) << "nothing runs alone";
        EXPECT_EQ(errorOf([&] { connection.CommitTrans(); }).number(), 3930);
        connection.RollbackTrans();
        EXPECT_EQ(connection.Execute("select * from fitemss98")->RecordCount(), 0);
        EXPECT_NE(connection.sessionNumber(), session);
        EXPECT_EQ(stored(), 0);
    }
}

TEST_F(OdbcCutLine, OutsideATransactionIsReportedOnce) {
    Connection connection;
    connection.Open(text_);
    connection.Execute(insertOf(1));
    proxy_->cut();
    EXPECT_NE(errorOf([&] { connection.Execute(insertOf(2)); }).description(), "");
    connection.Execute(insertOf(3));
    EXPECT_EQ(stored(), 2);
    EXPECT_EQ(connection.Execute("select * from gl_v_code")->RecordCount(), 0) << "the new session has its year";
}

TEST_F(OdbcCutLine, IdleSessionsAreNotHandedOutAgain) {
    Connection connection;
    connection.Open(text_);
    {
        std::vector<std::shared_ptr<Recordset>> open; // three sessions, which are idle afterwards
        for (int i = 0; i < 3; ++i) {
            open.push_back(connection.createRecordset());
            open.back()->Open("select * from fitemss98", text_, CursorType::keyset, LockType::optimistic);
        }
    }
    proxy_->cut();
    int failures = 0;
    for (int i = 0; i < 4; ++i) {
        try {
            const auto records = connection.createRecordset();
            records->Open("select * from fitemss98", text_, CursorType::snapshot, LockType::readOnly);
        } catch (const Error&) {
            ++failures;
        }
    }
    EXPECT_LE(failures, 1);
}

TEST_F(OdbcCutLine, RecordThatIsBeingWritten) {
    database_->open()->Execute(insertOf(1));
    Connection connection;
    connection.Open(text_);
    const auto records = connection.createRecordset();
    records->Open("select * from fitemss98", &connection, CursorType::keyset, LockType::optimistic);
    records->Fields().Item("citemname", Variant("x"));
    proxy_->cut();
    EXPECT_NE(errorOf([&] { records->Update(); }).description(), "");
    EXPECT_NE(errorOf([&] { records->Update(); }).number(), 0) << "the recordset's session is gone for good";
    const auto again = connection.createRecordset();
    again->Open("select * from fitemss98", &connection, CursorType::keyset, LockType::optimistic);
    EXPECT_EQ(again->Fields().Item("citemname"), Variant());
}

} // namespace
} // namespace z7::cashflow::odbc
