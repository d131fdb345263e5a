#pragma once

#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/Statement.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <type_traits>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A statement of the library with its places filled under the policy of the thread's login, ready to run. Error
/// 10020 if the policy does not allow a value.
template <class... Places>
[[nodiscard]] std::string filled(const statements::Statement<Places...>& statement,
                                 const std::type_identity_t<Places>&... values) {
    return statement.fill(modPublic::context().literalPolicy, values...);
}

} // namespace z7::cashflow

Z7_PUBLIC_END
