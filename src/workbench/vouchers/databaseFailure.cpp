#include "workbench/vouchers/databaseFailure.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace z7::cashflow::workbench {

namespace {

/// Classes of SQL states that concern the database and not a value: connection, lost transaction, rollback by the
/// server (deadlock, lock), resources (disk full), operator intervention, system (input/output, damaged file), and
/// general failures.
constexpr std::array<std::string_view, 8> failingClasses{"08", "25", "40", "53", "57", "58", "HY", "XX"};
/// The state and result codes with which the embedded database reports a failure of a single statement: generic
/// error, value too big, wrong type, out of range. The database itself is sound.
constexpr std::string_view generalFailure = "HY000";
constexpr std::array<int, 4> statementFailures{1, 18, 20, 25};
/// A missing table concerns every voucher: the database is not an account.
constexpr std::string_view tableMissing = "42S02";
/// A lock timeout, and a deadlock that the server resolved by ending this transaction: by SQL state, and by the
/// server's own numbers, which some drivers return with a meaningless state.
constexpr std::array<std::string_view, 2> lockStates{"HYT00", "40001"};
constexpr std::array<int, 2> lockNumbers{1222, 1205};

} // namespace

bool isDatabaseFailure(const Error& error) noexcept {
    const std::string_view state = error.sqlState();
    const int kind = error.nativeError() & 0xFF; // the low byte is the primary code, the rest refines it
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
