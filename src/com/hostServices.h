#pragma once

#include "adapters/ado/automation/system.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Z7Login.h"

#include <memory>

/// \file
/// The only place that knows which adapters the DLL is put together from.
namespace z7::com {

/// The connection that a host passes to a call by reference. It remains the host's, and so does the variable, which is
/// never changed. Error 91 for a null pointer and for a variable without an object.
[[nodiscard]] std::unique_ptr<cashflow::Connection> lentConnection(IDispatch** objCon);
/// The login that a host sets. A null pointer for none.
[[nodiscard]] std::shared_ptr<cashflow::Z7Login> loginOf(IDispatch* login);
/// Gives a new context what the DLL opens and shows itself: connections, message boxes, windows, debug texts.
void equip(cashflow::modPublic::Context& context);

} // namespace z7::com
