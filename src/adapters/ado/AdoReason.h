#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>

namespace z7::cashflow::ado {

/// Why an object of the host cannot be used, in addition to the messages of its own. See cashflow::Reason for how to
/// add one.
enum class AdoReason {
    notAText,
    notAWholeNumber,
    count ///< the number of reasons, not a reason itself
};

/// The table of reasons, in the order of the enumeration.
[[nodiscard]] std::span<const ReasonEntry> adoReasons() noexcept;

/// The entry of a reason; see cashflow::entryOf(Reason).
[[nodiscard]] const ReasonEntry& entryOf(AdoReason reason) noexcept;

} // namespace z7::cashflow::ado
