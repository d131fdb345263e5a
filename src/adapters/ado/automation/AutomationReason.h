#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::adapters::automation {

/// Why an automation object or one of its values cannot be used. See cashflow::Reason for how to add one.
enum class AutomationReason {
    textTooLong,
    valueNotUsable,
    objectMissing,
    notAnObject,
    memberMissing,
    callFailed,
    classNotCreated,
    count ///< the number of reasons, not a reason itself
};

/// The table of reasons, in the order of the enumeration.
[[nodiscard]] std::span<const cashflow::ReasonEntry> automationReasons() noexcept;

/// The entry of a reason; see cashflow::entryOf(Reason).
[[nodiscard]] const cashflow::ReasonEntry& entryOf(AutomationReason reason) noexcept;

} // namespace z7::adapters::automation
