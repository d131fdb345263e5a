#pragma once

#include "standins/AutomationObject.h"
#include "z7cashflow/support/Error.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {

/// An entry of the Errors collection.
struct AdoErrorEntry {
    std::int32_t number = 0; ///< the provider's code
    Error error;             ///< with the database's number, its state, source and text
};

/// The Errors collection of a connection as it is at the moment: Count, Item.
class AdoErrors final : public AutomationObject {
public:
    AdoErrors(std::shared_ptr<CallPlan> plan, std::vector<AdoErrorEntry> entries);

private:
    std::vector<AdoErrorEntry> entries_;
};

/// Whether an error is ADO's own and not one of the database: an object in the wrong state, a wrong argument.
[[nodiscard]] bool isErrorOfAdo(const Error& error);

} // namespace z7::cashflow::test
