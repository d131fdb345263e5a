#pragma once

#include "z7cashflow/ports/DialogFactory.h"
#include "z7cashflow/ports/MessageBox.h"
#include "z7cashflow/support/visibility.h"

#include <iosfwd>
#include <memory>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::wx {

class StateLines;

/// The window system, for as long as it is needed: the windows of the dialog and its message boxes. At most one per
/// process, used on the thread that started it. It has no main loop; modal windows run their own.
class WindowSystem {
public:
    /// Connects to the user's screen; returns a null pointer if there is none. If states is not null, a line is
    /// written to it for each change on the screen (see StateLines); it outlives the window system.
    [[nodiscard]] static std::unique_ptr<WindowSystem> start(std::ostream* states);
    ~WindowSystem();
    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;

    /// The returned objects must not be used after the window system was destroyed.
    [[nodiscard]] std::shared_ptr<DialogFactory> dialogFactory() const;
    /// The message box of this screen; likewise.
    [[nodiscard]] std::shared_ptr<MessageBox> messageBox() const;
    /// What its windows write their states to.
    [[nodiscard]] StateLines& states() const;

private:
    struct Parts;
    explicit WindowSystem(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

} // namespace z7::cashflow::wx

Z7_PUBLIC_END
