#pragma once

#include "adapters/wx/EventGate.h"
#include "adapters/wx/Grid.h"
#include "z7cashflow/ports/DialogForm.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class wxButton;
class wxDialog;
class wxKeyEvent;
class wxWindow;

namespace z7::cashflow::wx {

class Owner;
class StateLines;

/// A button of a form. Its caption is made smaller if it does not fit.
class Button final : public ZQCommandButton {
public:
    /// The form owns the button's window.
    Button(wxDialog& form, const ControlDesign& design, std::function<void()> onClick);

    void fontName(const std::string& name) override;
    void Caption(const std::string& text) override;
    [[nodiscard]] bool Enabled() const override;
    void Enabled(bool value) override;

    [[nodiscard]] wxButton& window() noexcept { return *button_; }

private:
    wxButton* button_;
    double points_;
};

/// The title of a form.
class Caption final : public ZQFrmCaption {
public:
    explicit Caption(wxDialog& form) : form_(form) {}
    void fontName(const std::string& /*name*/) override {} // the title bar has the window manager's font
    void caption(const std::string& text) override;

private:
    wxDialog& form_;
};

/// The key hook of a form, which draws nothing.
class KeyHook final : public ZQKeyHookCtrl {
public:
    void fontName(const std::string& name) override;
};

/// The modal form on the screen.
class Form final : public DialogForm {
public:
    /// The listener outlives the form.
    Form(const FormDesign& design, FormEvents& listener, std::shared_ptr<StateLines> states);
    ~Form() override;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    [[nodiscard]] SuperGrid& grid(const std::string& name) override;
    [[nodiscard]] ZQCommandButton& button(const std::string& name) override;
    [[nodiscard]] ZQFrmCaption& frmCaption(const std::string& name) override;
    [[nodiscard]] ZQKeyHookCtrl& keyHook(const std::string& name) override;
    [[nodiscard]] std::vector<Control*> controls() override { return inOrder_; }

    void showModal() override;
    void unload() override;
    void sendKeys(const std::string& keys) override;

private:
    void build(const FormDesign& design);
    void add(const ControlDesign& design);
    void bindEvents();
    /// Cancels the form after its loop has ended by something else than the form's logic.
    void endUnasked();
    void onKey(wxKeyEvent& event);
    void click(const std::string& name);
    void focusFirst(bool fromTheStart);
    /// Returns the focus to a window, or to the grid if closing a message box left it nowhere.
    void restoreFocus(wxWindow* window);
    [[nodiscard]] std::string state() const;
    [[nodiscard]] std::string places() const;

    std::shared_ptr<StateLines> states_; ///< destroyed last: it may hold the window system
    EventGate gate_;
    std::map<std::string, std::unique_ptr<Grid>> grids_;
    std::map<std::string, std::unique_ptr<Button>> buttons_;
    std::map<std::string, std::unique_ptr<Caption>> captions_;
    std::map<std::string, std::unique_ptr<KeyHook>> keyHooks_;
    std::vector<Control*> inOrder_;
    std::vector<Button*> tabOrder_;
    Grid* mainGrid_ = nullptr; ///< the first grid
    bool unloaded_ = false;
    bool destroyed_ = false;           ///< the system has destroyed the shown window with the one below it
    std::unique_ptr<wxDialog> dialog_; ///< destroyed before the controls, which its last events still find
    std::unique_ptr<Owner> owner_;     ///< while the form is shown
};

} // namespace z7::cashflow::wx
