#pragma once

#include "z7cashflow/ports/Control.h"
#include "z7cashflow/support/visibility.h"

#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The partner of a form that draws its title; it shows nothing inside the form.
class ZQFrmCaption : public Control {
public:
    /// The title that the user reads on the form.
    virtual void caption(const std::string& text) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
