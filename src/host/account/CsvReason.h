#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::host {

/// Why a file cannot be read as CSV. How a reason is added stands at Reason.
enum class CsvReason {
    utf16,
    gb18030,
    spreadsheet,
    invalidUtf8,
    zeroByte,
    strayQuote,
    unclosedQuote,
    recordTooLong,
    unreadable,
    outOfMemory,
    count ///< the number of reasons, not a reason itself
};

/// The reasons in the order of their names.
[[nodiscard]] std::span<const ReasonEntry> csvReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(CsvReason reason) noexcept;

} // namespace z7::cashflow::host
