#include "host/account/AccountPlace.h"

#include "adapters/odbc/Connection.h"
#include "adapters/sqlite/Connection.h"
#include "host/account/AccountConnections.h"
#include "z7cashflow/support/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const ConnectionMaker overOdbc = [] { return std::make_unique<odbc::Connection>(); };

template <class Adapter> bool isOf(const std::unique_ptr<Connection>& connection) {
    return dynamic_cast<Adapter*>(connection.get()) != nullptr;
}

TEST(AccountPlace, OfAFileOpensTheEmbeddedDatabase) {
    const AccountPlace place = AccountPlace::ofFile("company.db");
    EXPECT_EQ(place.file(), "company.db");
    EXPECT_EQ(place.givenString(), "");
    EXPECT_TRUE(isOf<sqlite::Connection>(place.makeConnection()));
}

TEST(AccountPlace, IsAFileWhereverTheStringSaysTheDriver) {
    for (const char* text :
         {"driver=sqlite;database=a.db", "database=a.db;DRIVER = {SQLite} ;", " Driver=sqlite;database={a.db}"}) {
        const AccountPlace place = AccountPlace::ofConnectionString(text, overOdbc);
        EXPECT_EQ(place.file(), "a.db") << text;
        EXPECT_TRUE(isOf<sqlite::Connection>(place.makeConnection())) << text;
    }
}

TEST(AccountPlace, IsNotAFileByAWordWithinAValue) {
    for (const char* text : {"Driver={SQLite3};Database=a.db", "odbc={x;driver=sqlite};driver=odbc", "xdriver=sqlite",
                             "Driver={FreeTDS};Server=driver=sqlite"}) {
        const AccountPlace place = AccountPlace::ofConnectionString(text, overOdbc);
        EXPECT_EQ(place.file(), std::nullopt) << text;
        EXPECT_TRUE(isOf<odbc::Connection>(place.makeConnection())) << text;
    }
}

TEST(AccountPlace, AddsTheYearToTheString) {
    const std::string text = "Driver={X};Server=s";
    EXPECT_EQ(AccountPlace::ofConnectionString(text, overOdbc).connectionString(std::int16_t{2024}),
              text + ";year=2024");
    EXPECT_EQ(AccountPlace::ofConnectionString(text + ";", overOdbc).connectionString(std::int16_t{2024}),
              text + ";year=2024");
    EXPECT_EQ(AccountPlace::ofConnectionString(text, overOdbc).connectionString(std::nullopt), text);
}

TEST(AccountConnections, AreOfTheAdapterThatTheStringChooses) {
    AccountConnections connections(overOdbc);
    EXPECT_TRUE(isOf<sqlite::Connection>(connections.create("driver=sqlite;database=a.db;year=2024")));
    EXPECT_TRUE(isOf<odbc::Connection>(connections.create("Driver={X};Server=s;year=2024")));
}

TEST(AccountConnections, OfAStringThatCannotBeReadAreRefusedWithoutASecret) {
    AccountConnections connections(overOdbc);
    for (const char* text : {"", "Server=s;PWD=hush", "Driver={X};PWD={hush", "driver=sqlite;PWD=hush"}) {
        try {
            static_cast<void>(connections.create(text));
            ADD_FAILURE() << text;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 5) << text;
            EXPECT_THAT(error.description(), Not(HasSubstr("hush")));
        }
    }
}

} // namespace
} // namespace z7::cashflow::host
