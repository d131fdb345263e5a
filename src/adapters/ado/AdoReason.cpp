#include "adapters/ado/AdoReason.h"

#include "z7cashflow/support/errorNumbers.h"

#include <array>
#include <cstddef>

namespace z7::cashflow::ado {
namespace {

using R = AdoReason;

constexpr std::array table{
    ReasonEntry{R::notAText, errors::typeMismatch, "The host's member \"{0}\" must return a text"},
    ReasonEntry{R::notAWholeNumber, errors::typeMismatch, "The host's member \"{0}\" must return a whole number"},
};

static_assert(isComplete<R>(table));

} // namespace

std::span<const ReasonEntry> adoReasons() noexcept { return table; }

const ReasonEntry& entryOf(R reason) noexcept { return table[static_cast<std::size_t>(reason)]; }

} // namespace z7::cashflow::ado
