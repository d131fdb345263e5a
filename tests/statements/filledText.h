#pragma once

#include "z7cashflow/statements/Statement.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace z7::cashflow::statements {

/// A statement filled with harmless values, for which both policies give the same text.
template <class... Places>
std::string text(const Statement<Places...>& statement, const std::type_identity_t<Places>&... values) {
    std::string given = statement.fill(LiteralPolicy::asGiven, values...);
    EXPECT_EQ(statement.fill(LiteralPolicy::wholeLiterals, values...), given) << statement.name();
    return given;
}

} // namespace z7::cashflow::statements
