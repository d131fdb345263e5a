#pragma once

#include "z7cashflow/ports/DialogFactory.h"
#include "z7cashflow/support/visibility.h"

#include <memory>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::wx {

/// Makes the windows of the dialog for hosts that have a screen and a message loop of their own. The window system is
/// started for the first window and ended with the last one, so nothing of it remains in the host's process afterwards.
///
/// Every thread may have a factory, but a process can have only one form at a time: meanwhile other calls raise error
/// 70, including those of the same thread. Error 91 if there is no screen.
[[nodiscard]] std::shared_ptr<DialogFactory> windowsOnDemand();

} // namespace z7::cashflow::wx

Z7_PUBLIC_END
