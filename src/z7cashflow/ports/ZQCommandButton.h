#pragma once

#include "z7cashflow/ports/Control.h"
#include "z7cashflow/support/visibility.h"

#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A button that the user presses by mouse or keyboard; FormEvents::click follows. A disabled button raises no click.
class ZQCommandButton : public Control {
public:
    /// The text on the button.
    virtual void Caption(const std::string& text) = 0;
    /// Whether the user can press it.
    [[nodiscard]] virtual bool Enabled() const = 0;
    /// Lets the user press it, or not.
    virtual void Enabled(bool value) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
