#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace z7::cashflow {
namespace {

TEST(ErrorOf, ADatabaseCarriesItsOwnNumberTextAndState) {
    const Error error(547, "Server", "conflict", "23000");
    EXPECT_EQ(error.number(), 547);
    EXPECT_EQ(error.nativeError(), 547);
    EXPECT_EQ(error.source(), "Server");
    EXPECT_EQ(error.description(), "conflict");
    EXPECT_EQ(error.sqlState(), "23000");
    EXPECT_STREQ(error.what(), "conflict");
}

TEST(ErrorOf, AnotherSourceKeepsEverythingElse) {
    const Error error = Error(547, "Server", "conflict", "23000").withSource("CashFlow");
    EXPECT_EQ(error.number(), 547);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "conflict");
    EXPECT_EQ(error.sqlState(), "23000");
}

TEST(ErrorOf, AReasonHasItsNumberAndItsEnglishText) {
    try {
        raisePlatformError(Reason::notANumber, {"twelve"});
        FAIL() << "no error was raised";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errors::typeMismatch);
        EXPECT_EQ(error.source(), "Z7CashFlow");
        EXPECT_EQ(error.description(), "\"twelve\" is not a number");
        EXPECT_EQ(error.why().reason, Reason::notANumber);
        EXPECT_EQ(error.why().arguments, std::vector<std::string>{"twelve"});
        EXPECT_FALSE(error.hasOwnText());
        EXPECT_EQ(error.sqlState(), "");
    }
}

TEST(ErrorOf, ADictatedTextKeepsItAndSaysWhyBeside) {
    const Error error(1000, "CashFlow", "No such field.", {Reason::rowFieldUnknown, {"iyear"}});
    EXPECT_EQ(error.description(), "No such field.");
    EXPECT_TRUE(error.hasOwnText());
    EXPECT_EQ(englishText(error.why()), "The row has no field named \"iyear\"");
    EXPECT_EQ(error.withSource("other").why().reason, Reason::rowFieldUnknown);
}

TEST(ErrorOf, AReasonWithoutANumberTakesThatOfItsCause) {
    const Error error(14, "SQLite", {Reason::rowsMissing}, "08001");
    EXPECT_EQ(error.number(), 14);
    EXPECT_EQ(error.sqlState(), "08001");
    EXPECT_FALSE(error.hasOwnText());
}

TEST(IgnoringErrors, DropsErrorsAndNothingElse) {
    int steps = 0;
    ignoringErrors([&] {
        ++steps;
        throw Error(13, "source", "ignored");
    });
    ignoringErrors([&] { ++steps; });
    EXPECT_EQ(steps, 2);
    EXPECT_THROW(ignoringErrors([] { throw std::runtime_error("a defect"); }), std::runtime_error);
}

} // namespace
} // namespace z7::cashflow
