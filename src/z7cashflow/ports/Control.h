#pragma once

#include <string>

namespace z7::cashflow {

/// Something on a form. Its form owns it, and it lives as long as the form. Controls are used on the thread that shows
/// the form. All lengths and places of controls are in twips, 1/1440 inch.
class Control {
public:
    virtual ~Control() = default;
    /// The name of the font that the control writes with. A name that the system does not have is replaced by the
    /// nearest font that it has. Error 438 for a control that writes nothing.
    virtual void fontName(const std::string& name) = 0;
};

} // namespace z7::cashflow
