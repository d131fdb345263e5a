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

TEST(ErrorOf, ThePlatformHasATextForItsNumberAndNamesTheDetail) {
    for (const int number :
         {errors::badArgument, errors::overflow, errors::badIndex, errors::typeMismatch, errors::objectNotSet,
          errors::invalidNull, errors::keyExists, errors::badFilter, errors::noCurrentRecord, errors::notUpdatable,
          errors::unknownField, errors::objectClosed, errors::objectOpen, errors::noConnection}) {
        try {
            raisePlatformError(number, "the detail");
            FAIL() << number;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), number);
            EXPECT_TRUE(error.description().ends_with(": the detail")) << error.description();
            EXPECT_FALSE(error.description().starts_with("Application-defined")) << number;
            EXPECT_EQ(error.sqlState(), "");
        }
    }
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
