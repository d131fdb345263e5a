#pragma once

#include "doubles/ContextGuard.h"
#include "doubles/ScriptedDatabase.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/statements/Statement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

namespace z7::cashflow::test {

using Lines = std::vector<std::string>;

/// A statement of the library as it is sent if values are not checked.
template <class... Places>
std::string sent(const statements::Statement<Places...>& statement, const std::type_identity_t<Places>&... values) {
    return statement.fill(statements::LiteralPolicy::asGiven, values...);
}

inline std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

/// A user of 2013 is logged in and a voucher of 2011 is on the screen, so that the two years differ.
class DataTest : public LoginTest {
protected:
    DataTest() { modPublic::SetIYear(2011); }

    void expectStatements(const Lines& expected) const {
        EXPECT_EQ(database.statements(), expected);
        EXPECT_EQ(database.openRecordsets(), Lines{});
        EXPECT_EQ(database.droppedRecordsets(), Lines{}) << "what is opened is closed";
    }
    /// A table with one row and one column.
    static Table one(const std::string& column, const Variant& value) { return {{column}, {{value}}, {}}; }
    static Table none(const std::string& column) { return {{column}, {}, {}}; }

    ScriptedDatabase database;
    Connection& connection = database.connection();
    DataProvider data;
};

} // namespace z7::cashflow::test
