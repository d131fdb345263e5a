#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::host {

/// Why a file cannot be read as CSV. See Reason for how to add one.
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

/// The table of reasons, in the order of the enumeration.
[[nodiscard]] std::span<const ReasonEntry> csvReasons() noexcept;

[[nodiscard]] const ReasonEntry& entryOf(CsvReason reason) noexcept;

} // namespace z7::cashflow::host
