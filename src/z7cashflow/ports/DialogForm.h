#pragma once

#include "z7cashflow/ports/Control.h"
#include "z7cashflow/ports/SuperGrid.h"
#include "z7cashflow/ports/ZQCommandButton.h"
#include "z7cashflow/ports/ZQFrmCaption.h"
#include "z7cashflow/ports/ZQKeyHookCtrl.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

class Error;

/// The class of a control on a form.
enum class ControlClass { superGrid, commandButton, frmCaption, keyHook };

/// A control's position and size on its form in twips, from the inner upper left corner. A control without a width
/// is not visible. Tab order counts from 0; -1 leaves the control out of it.
struct ControlDesign {
    std::string name;                                    ///< by which the form's logic finds it
    ControlClass controlClass = ControlClass::superGrid; ///< what it is
    std::int32_t left = 0;                               ///< distance from the left edge
    std::int32_t top = 0;                                ///< distance from the upper edge
    std::int32_t width = 0;                              ///< 0 for a control that is not visible
    std::int32_t height = 0;                             ///< height
    int tabOrder = -1;                                   ///< -1 leaves it out
    std::string caption;                                 ///< until the form's logic sets another
    std::string fontName;             ///< until the form's logic sets another; empty for that of the form
    double fontPoints = 0.0;          ///< 0 for that of the form
    std::int32_t foreColorFixed = 0;  ///< of a grid: colour of the header's texts, a system colour if bit 31 is set
    std::int32_t backColorFixed = 0;  ///< of a grid: colour of the header
    bool redraw = false;              ///< of a grid: it draws each change
    std::int32_t editBorderStyle = 0; ///< of a grid: border of its editor, 0 for none
};

/// The design of a form: its title, its inner size in twips, its controls. It cannot be resized.
struct FormDesign {
    std::string name;                    ///< such as "frmCashFlow"
    std::string caption;                 ///< title, until the form's logic sets another
    std::int32_t width = 0;              ///< inner width
    std::int32_t height = 0;             ///< inner height
    std::vector<ControlDesign> controls; ///< in the order in which they are created
};

/// The events of a form. An event runs while the form handles the user's key or click and may raise an Error, which
/// the form passes to eventFailed; it does not leave showModal. No event is raised while another one is running,
/// except those raised by FinishEdit in the running event.
class FormEvents : public SuperGridEvents {
public:
    /// The button with this name was pressed.
    virtual void click(const std::string& button) = 0;
    /// A key was pressed anywhere on the form; the key hook receives it before the focused control. Key codes
    /// are those of the platform: 116 is F5, 117 F6, 46 Delete. The key is then passed to the focused control,
    /// unless the event opened a window or moved the focus. Each key press is reported once.
    virtual void keyDown(std::int32_t& keyCode, std::int32_t shift) = 0;
    /// The close box was pressed, or the system wants to close the form. The form stays until the event calls
    /// unload. An open editor is not affected.
    virtual void closeRequested() = 0;
    /// An event raised an error.
    virtual void eventFailed(const Error& error) = 0;

protected:
    ~FormEvents() = default;
};

/// A modal form on the screen, created from a design. It owns its controls.
class DialogForm {
public:
    virtual ~DialogForm() = default;

    /// A control by its name in the design. Error 9 if there is none with that name and class. Owned by the
    /// form.
    [[nodiscard]] virtual SuperGrid& grid(const std::string& name) = 0;
    /// A button; as grid.
    [[nodiscard]] virtual ZQCommandButton& button(const std::string& name) = 0;
    /// A title partner; as grid.
    [[nodiscard]] virtual ZQFrmCaption& frmCaption(const std::string& name) = 0;
    /// A key hook; as grid.
    [[nodiscard]] virtual ZQKeyHookCtrl& keyHook(const std::string& name) = 0;
    /// All controls in the order of the design.
    [[nodiscard]] virtual std::vector<Control*> controls() = 0;

    /// Shows the form centred on its parent, with the focus on the first control of the tab order, and returns
    /// when it has been unloaded; at once if it was unloaded before.
    virtual void showModal() = 0;
    /// Removes the form from the screen; showModal returns when the calling event has ended. The controls
    /// remain usable until the form is destroyed. A second call does nothing.
    virtual void unload() = 0;
    /// Sends keystrokes to the focused control as if the user had typed them, after the running event. Only a
    /// single blank is ever sent, to the grid; a grid that cannot receive keys opens the editor of its current
    /// cell instead.
    virtual void sendKeys(const std::string& keys) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
