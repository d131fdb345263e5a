#pragma once

#include "z7cashflow/ports/Control.h"
#include "z7cashflow/support/visibility.h"

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Sees every key press on its form before the focused control does and passes it on as FormEvents::keyDown. It cannot
/// be seen.
class ZQKeyHookCtrl : public Control {};

} // namespace z7::cashflow

Z7_PUBLIC_END
