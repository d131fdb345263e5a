#include "adapters/odbc/ConnectionOptions.h"

#include "adapters/conformance/DatabaseUnderTest.h"

#include <gtest/gtest.h>

namespace z7::cashflow::odbc {
namespace {

using conformance::errorOf;

TEST(OdbcConnectionString, PlainTextWithoutOurKeywordsGoesToTheDriver) {
    const ConnectionOptions options = parseConnectionString(
        "Driver={ODBC Driver 18 for SQL Server};Server=s,1433; Year = 2013 ;TIMEOUT=70;UID=u;PWD={a}}b;c}");
    EXPECT_EQ(options.driverText, "Driver={ODBC Driver 18 for SQL Server};Server=s,1433;UID=u;PWD={a}}b;c}");
    EXPECT_EQ(options.driver, "ODBC Driver 18 for SQL Server");
    EXPECT_EQ(options.year, std::int16_t{2013});
    EXPECT_EQ(options.timeout, 70);
    EXPECT_EQ(options.secrets, (std::vector<std::string>{"{a}}b;c}", "a}b;c"}));
}

TEST(OdbcConnectionString, TextInBracesGoesToTheDriver) {
    const ConnectionOptions options =
        parseConnectionString("driver=odbc;odbc={Driver={My Driver}};Server=s;Timeout=3};year=2013");
    EXPECT_EQ(options.driverText, "Driver={My Driver};Server=s;Timeout=3")
        << "in the braces every keyword is the driver's";
    EXPECT_EQ(options.timeout, 5000);
    EXPECT_EQ(options.year, std::int16_t{2013});
}

TEST(OdbcConnectionString, FreetdsIsSetToUtf8) {
    EXPECT_EQ(parseConnectionString("Driver=FreeTDS;Server=s").driverText,
              "Driver=FreeTDS;Server=s;ClientCharset=UTF-8");
    EXPECT_EQ(parseConnectionString("Driver=/usr/lib/libtdsodbc.so;ClientCharset=utf-8").driverText,
              "Driver=/usr/lib/libtdsodbc.so;ClientCharset=utf-8");
    EXPECT_EQ(errorOf([] { static_cast<void>(parseConnectionString("Driver=FreeTDS;ClientCharset=GBK")); }).number(),
              5);
}

TEST(OdbcConnectionString, ABadTextIsRefusedWithoutAValueOfIt) {
    for (const char* text :
         {"", ";;", "sesame", "Driver=X;sesame", "Driver=X;PWD={sesame", "Driver=X;PWD={sesame}sesame;UID=u",
          "PWD=sesame", "Driver=X;Driver=sesame", "Driver=X;timeout=sesame", "Driver=X;timeout=-1", "Driver=X;year=0",
          "Driver=X;year=10000", "driver=odbc", "driver=odbc;odbc={sesame}", "driver=odbc;odbc={Driver=X};PWD=sesame",
          "driver=sqlite;database=sesame", "Driver=X;timeout=1;timeout=2", "=sesame"}) {
        const Error error = errorOf([text] { static_cast<void>(parseConnectionString(text)); });
        EXPECT_EQ(error.number(), 5) << text;
        EXPECT_EQ(error.description().find("sesame"), std::string::npos) << error.description();
    }
    EXPECT_EQ(errorOf([] { static_cast<void>(parseConnectionString(std::string("Driver=X\0;UID=u", 15))); }).number(),
              5);
    EXPECT_EQ(errorOf([] { static_cast<void>(parseConnectionString("Driver=" + std::string(9000, 'x'))); }).number(),
              5);
}

TEST(OdbcConnectionString, EverySecretIsMasked) {
    const ConnectionOptions options =
        parseConnectionString("DSN=d;Password=open sesame;AccessToken=tok;UID=u;Pwd={se}}same}");
    EXPECT_EQ(withoutSecrets("u said open sesame, tok, se}same or {se}}same}", options.secrets),
              "u said ***, ***, *** or ***");
    EXPECT_EQ(withoutSecrets("nothing", {}), "nothing");
}

} // namespace
} // namespace z7::cashflow::odbc
