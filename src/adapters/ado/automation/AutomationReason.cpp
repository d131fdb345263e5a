#include "adapters/ado/automation/AutomationReason.h"

#include "z7cashflow/support/errorNumbers.h"

#include <array>
#include <cstddef>

namespace z7::adapters::automation {
namespace {

namespace errors = cashflow::errors;
using cashflow::ReasonEntry;
using R = AutomationReason;

constexpr std::array table{
    ReasonEntry{R::textTooLong, errors::outOfMemory, "A text is too long for OLE Automation"},
    ReasonEntry{
        R::valueNotUsable, errors::typeMismatch,
        "A value of the automation type {0} cannot be used; pass a text, a number, a truth value, a date or Null"},
    ReasonEntry{R::objectMissing, errors::objectNotSet, "An object is needed for \"{0}\", and there is none"},
    ReasonEntry{R::notAnObject, errors::typeMismatch, "A value of the automation type {0} is not an object"},
    ReasonEntry{R::memberMissing, errors::memberUnknown, "The object has no member \"{0}\" that can be used this way"},
    ReasonEntry{R::callFailed, 0, "\"{0}\" failed: {1}"},
    ReasonEntry{R::classNotCreated, 0, "An object of the class {0} cannot be created: {1}"},
};

static_assert(cashflow::isComplete<R>(table));

} // namespace

std::span<const ReasonEntry> automationReasons() noexcept { return table; }

const ReasonEntry& entryOf(R reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

} // namespace z7::adapters::automation
