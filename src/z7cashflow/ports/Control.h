#pragma once

#include "z7cashflow/support/visibility.h"

#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A control on a form. The form owns it, and it lives as long as the form. Controls are used on the thread that
/// shows the form. All lengths and positions are in twips, 1/1440 inch.
class Control {
public:
    virtual ~Control() = default;
    /// The name of the control's font. A name unknown to the system is replaced by the nearest available font.
    /// Error 438 for a control without text.
    virtual void fontName(const std::string& name) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
