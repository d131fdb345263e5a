#include "workbench/vouchers/databaseFailure.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace z7::cashflow::workbench {

namespace {

/// Classes of SQL states that tell of the database and not of a value: connection, a transaction that is gone, rollback
/// by the server (deadlock, lock), resources (disk full), intervention of an operator, system (input and output, broken
/// file), and general failures.
constexpr std::array<std::string_view, 8> failingClasses{"08", "25", "40", "53", "57", "58", "HY", "XX"};
/// What the embedded database says in a general failure of one statement: its error without a kind, a value that is too
/// big, of another type, or out of range. It leaves the database sound.
constexpr std::string_view generalFailure = "HY000";
constexpr std::array<int, 4> statementFailures{1, 18, 20, 25};
/// A table that is not there concerns every voucher: the file is no account of the suite.
constexpr std::string_view tableMissing = "42S02";
/// A lock that was not to be had in time, and a transaction that the server ended in favour of another one: by SQL
/// state, and by the server's own numbers, which some drivers hand over under a state that says nothing.
constexpr std::array<std::string_view, 2> lockStates{"HYT00", "40001"};
constexpr std::array<int, 2> lockNumbers{1222, 1205};

} // namespace

bool isDatabaseFailure(const Error& error) noexcept {
    const std::string_view state = error.sqlState();
    const int kind = error.nativeError() & 0xFF; // the rest of the number tells the kind's cause
    if (state == generalFailure &&
        std::find(statementFailures.begin(), statementFailures.end(), kind) != statementFailures.end()) {
        return false;
    }
    return state == tableMissing || std::any_of(failingClasses.begin(), failingClasses.end(),
                                                [state](auto prefix) { return state.starts_with(prefix); });
}

bool isHeldElsewhere(const Error& error) noexcept {
    const std::string& state = error.sqlState();
    return std::find(lockStates.begin(), lockStates.end(), state) != lockStates.end() ||
           (!state.empty() &&
            std::find(lockNumbers.begin(), lockNumbers.end(), error.nativeError()) != lockNumbers.end());
}

} // namespace z7::cashflow::workbench
