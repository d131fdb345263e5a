#pragma once

#include "z7cashflow/ports/Control.h"
#include "z7cashflow/ports/SuperGrid.h"
#include "z7cashflow/ports/ZQCommandButton.h"
#include "z7cashflow/ports/ZQFrmCaption.h"
#include "z7cashflow/ports/ZQKeyHookCtrl.h"

#include <cstdint>
#include <string>
#include <vector>

namespace z7::cashflow {

class Error;

/// The class of a control on a form.
enum class ControlClass { superGrid, commandButton, frmCaption, keyHook };

/// A control's place on its form: positions and sizes in twips from the inner left top corner. A control without a
/// width is not visible. Tab order counts from 0; -1 leaves the control out of it.
struct ControlDesign {
    std::string name;
    ControlClass controlClass = ControlClass::superGrid;
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    int tabOrder = -1;
    std::string caption;              ///< before the form's logic sets another
    std::string fontName;             ///< before the form's logic sets another; empty for the form's own
    double fontPoints = 0.0;          ///< 0 for the form's own
    std::int32_t foreColorFixed = 0;  ///< of a grid: colour of the header's texts, a system colour where bit 31 is set
    std::int32_t backColorFixed = 0;  ///< of a grid: colour of the header
    bool redraw = false;              ///< of a grid: it draws each change
    std::int32_t editBorderStyle = 0; ///< of a grid: border of its editor, 0 for none
};

/// A form as it was drawn: its title, its inner size in twips, its controls. It cannot be resized.
struct FormDesign {
    std::string name;
    std::string caption;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<ControlDesign> controls;
};

/// What a form asks of its logic. An event runs inside the form's own work with the user's key or click and may raise
/// an Error, which the form passes to eventFailed; nothing of it leaves showModal. No event is raised while another one
/// is running, except those that the running event's own FinishEdit raises.
class FormEvents : public SuperGridEvents {
public:
    /// The button of this name was pressed.
    virtual void click(const std::string& button) = 0;
    /// A key was pressed anywhere on the form, seen by the key hook before the focused control. Key codes are those of
    /// the platform: 116 is F5, 117 F6, 46 Delete. The key then goes on to the focused control, unless the event opened
    /// a window or moved the focus. Each press is passed once.
    virtual void keyDown(std::int32_t& keyCode, std::int32_t shift) = 0;
    /// The close box was pressed, or the system wants the form closed. The form stays until the event calls unload. An
    /// open editor is left as it is.
    virtual void closeRequested() = 0;
    /// An event ended in an error.
    virtual void eventFailed(const Error& error) = 0;

protected:
    ~FormEvents() = default;
};

/// A modal form on the screen, made from a design. It owns its controls.
class DialogForm {
public:
    virtual ~DialogForm() = default;

    /// A control by its name in the design. Error 9 if there is none of that name and class. Owned by the form.
    [[nodiscard]] virtual SuperGrid& grid(const std::string& name) = 0;
    [[nodiscard]] virtual ZQCommandButton& button(const std::string& name) = 0;
    [[nodiscard]] virtual ZQFrmCaption& frmCaption(const std::string& name) = 0;
    [[nodiscard]] virtual ZQKeyHookCtrl& keyHook(const std::string& name) = 0;
    /// All controls in the order of the design.
    [[nodiscard]] virtual std::vector<Control*> controls() = 0;

    /// Shows the form in the middle of its parent, with the focus in the first control of the tab order, and returns
    /// when it has been unloaded; at once if it was unloaded before.
    virtual void showModal() = 0;
    /// Takes the form from the screen; showModal returns when the event that called this has ended. The controls stay
    /// usable until the form is destroyed. A second call does nothing.
    virtual void unload() = 0;
    /// Sends key strokes to the focused control as if the user had typed them, after the running event. Only one blank
    /// is ever sent, to the grid; a grid that cannot be sent keys opens the editor of its current cell instead.
    virtual void sendKeys(const std::string& keys) = 0;
};

} // namespace z7::cashflow
