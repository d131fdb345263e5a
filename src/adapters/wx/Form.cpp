#include "adapters/wx/Form.h"

#include "adapters/wx/StateLines.h"
#include "adapters/wx/fonts.h"
#include "adapters/wx/keyCode.h"
#include "adapters/wx/platform.h"
#include "adapters/wx/text.h"
#include "adapters/wx/twips.h"
#include "z7cashflow/support/Error.h"

#include <wx/button.h>
#include <wx/dialog.h>

#include <algorithm>
#include <climits>

namespace z7::cashflow::wx {

namespace {

constexpr double usualPoints = 9.0;

double pointsOf(const ControlDesign& design) { return design.fontPoints > 0 ? design.fontPoints : usualPoints; }

template <class Controls> auto& named(const Controls& controls, const std::string& name) {
    const auto found = controls.find(name);
    if (found == controls.end()) {
        raisePlatformError(Reason::controlUnknown, {name});
    }
    return *found->second;
}

} // namespace

Button::Button(wxDialog& form, const ControlDesign& design, std::function<void()> onClick)
    : button_(new wxButton(&form, wxID_ANY,
                           wxString(), // NOLINT(cppcoreguidelines-owning-memory): the form owns its windows
                           form.FromDIP(wxPoint(toPixels(design.left), toPixels(design.top))),
                           form.FromDIP(wxSize(toPixels(design.width), toPixels(design.height))), wxBU_EXACTFIT)),
      points_(pointsOf(design)) {
    makeCompact(*button_);
    button_->SetName(shown(design.name));
    fontName(design.fontName);
    Caption(design.caption);
    button_->Bind(wxEVT_BUTTON, [click = std::move(onClick)](wxCommandEvent& /*event*/) { click(); });
}

void Button::fontName(const std::string& name) {
    button_->SetFont(fontOf(name, points_));
    fitCaption(*button_);
}

void Button::Caption(const std::string& text) {
    button_->SetLabel(wxControl::EscapeMnemonics(shown(text)));
    accessibleName(*button_, shown(text));
    wxFont font = button_->GetFont();
    font.SetFractionalPointSize(points_);
    button_->SetFont(font);
    fitCaption(*button_);
}

bool Button::Enabled() const { return button_->IsEnabled(); }

void Button::Enabled(bool value) { button_->Enable(value); }

void Caption::caption(const std::string& text) { form_.SetTitle(shown(text)); }

void KeyHook::fontName(const std::string& /*name*/) { raisePlatformError(Reason::propertyUnknown, {"Font"}); }

Form::Form(const FormDesign& design, FormEvents& listener, std::shared_ptr<StateLines> states)
    : states_(std::move(states)), gate_(listener),
      dialog_(std::make_unique<wxDialog>(nullptr, wxID_ANY, shown(design.caption), wxDefaultPosition, wxDefaultSize,
                                         wxCAPTION | wxCLOSE_BOX | wxSYSTEM_MENU)) {
    dialog_->SetEscapeId(wxID_NONE); // Escape belongs to the grid's editor; no key cancels the form
    dialog_->SetName(shown(design.name));
    build(design);
    dialog_->SetClientSize(dialog_->FromDIP(wxSize(toPixels(design.width), toPixels(design.height))));
    bindEvents();
    gate_.onDefect([this] { unload(); });
}

Form::~Form() = default;

void Form::build(const FormDesign& design) {
    // Windows are created in tab order, because the toolkit tabs in the order of creation.
    std::vector<const ControlDesign*> byTab;
    for (const ControlDesign& control : design.controls) {
        byTab.push_back(&control);
    }
    std::stable_sort(byTab.begin(), byTab.end(), [](const ControlDesign* left, const ControlDesign* right) {
        return (left->tabOrder < 0 ? INT_MAX : left->tabOrder) < (right->tabOrder < 0 ? INT_MAX : right->tabOrder);
    });
    for (const ControlDesign* control : byTab) {
        add(*control);
    }
    for (const ControlDesign& control : design.controls) {
        const std::string& name = control.name;
        switch (control.controlClass) {
        case ControlClass::superGrid:
            inOrder_.push_back(grids_.at(name).get());
            break;
        case ControlClass::commandButton:
            inOrder_.push_back(buttons_.at(name).get());
            break;
        case ControlClass::frmCaption:
            inOrder_.push_back(captions_.at(name).get());
            break;
        case ControlClass::keyHook:
            inOrder_.push_back(keyHooks_.at(name).get());
            break;
        }
    }
}

void Form::add(const ControlDesign& design) {
    switch (design.controlClass) {
    case ControlClass::superGrid: {
        ControlDesign sized = design;
        sized.fontPoints = pointsOf(design);
        auto grid = std::make_unique<Grid>(*dialog_, sized, gate_);
        grid->onLeave([this](bool forwards) { focusFirst(forwards); });
        mainGrid_ = mainGrid_ == nullptr ? grid.get() : mainGrid_;
        grids_[design.name] = std::move(grid);
        break;
    }
    case ControlClass::commandButton: {
        auto button = std::make_unique<Button>(*dialog_, design, [this, name = design.name] { click(name); });
        tabOrder_.push_back(button.get());
        buttons_[design.name] = std::move(button);
        break;
    }
    case ControlClass::frmCaption:
        captions_[design.name] = std::make_unique<Caption>(*dialog_);
        break;
    case ControlClass::keyHook:
        keyHooks_[design.name] = std::make_unique<KeyHook>();
        break;
    }
}

void Form::bindEvents() {
    dialog_->Bind(wxEVT_CHAR_HOOK, &Form::onKey, this);
    dialog_->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        if (event.CanVeto()) {
            event.Veto(); // the form is closed by its logic
        }
        if (!gate_.busy() && !unloaded_) {
            wxWindow* const focus = wxWindow::FindFocus();
            gate_.raise([this] { gate_.listener().closeRequested(); });
            restoreFocus(focus);
        }
    });
}

SuperGrid& Form::grid(const std::string& name) { return named(grids_, name); }

ZQCommandButton& Form::button(const std::string& name) { return named(buttons_, name); }

ZQFrmCaption& Form::frmCaption(const std::string& name) { return named(captions_, name); }

ZQKeyHookCtrl& Form::keyHook(const std::string& name) { return named(keyHooks_, name); }

void Form::showModal() {
    if (!unloaded_) {
        owner_ = std::make_unique<Owner>(*dialog_, [this] {
            destroyed_ = true;
            dialog_->EndModal(wxID_CANCEL);
        });
        if (mainGrid_ != nullptr) {
            accessibleName(mainGrid_->window(), dialog_->GetTitle());
            mainGrid_->SetFocus();
        } else {
            focusFirst(true);
        }
        {
            const StateLines::Entered entered(*states_, {[this] { return state(); }, [this] { return places(); }});
            dialog_->ShowModal();
        }
        if (!unloaded_) {
            endUnasked();
        }
        owner_.reset();
    }
    gate_.rethrowDefect();
}

void Form::endUnasked() {
    // The host has ended its own message loop or destroyed the window below the dialog.
    gate_.raise([this] { gate_.listener().closeRequested(); });
    unloaded_ = true;
    if (!destroyed_) {
        passEndOfLoopOn();
    }
}

void Form::unload() {
    unloaded_ = true;
    if (owner_) {
        owner_->unlock();
    }
    if (dialog_->IsModal()) {
        dialog_->EndModal(wxID_OK);
    }
}

void Form::sendKeys(const std::string& /*keys*/) {
    dialog_->CallAfter([this] {
        if (!unloaded_ && mainGrid_ != nullptr && mainGrid_->hasFocus()) {
            mainGrid_->openEditor();
        }
    });
}

void Form::onKey(wxKeyEvent& event) {
    const std::int32_t code = keyCode(event);
    if (code == 0 || gate_.busy()) {
        event.Skip();
        return;
    }
    wxWindow* const focusBefore = wxWindow::FindFocus();
    std::int32_t passed = code;
    const std::int32_t shift = (event.ShiftDown() ? 1 : 0) | (event.ControlDown() ? 2 : 0) | (event.AltDown() ? 4 : 0);
    gate_.raise([&] { gate_.listener().keyDown(passed, shift); });
    if (unloaded_) {
        return;
    }
    if (wxWindow::FindFocus() == focusBefore) {
        event.Skip();
    } else {
        restoreFocus(focusBefore);
    }
}

void Form::click(const std::string& name) {
    if (gate_.busy() || unloaded_) {
        return;
    }
    wxWindow* const focus = wxWindow::FindFocus();
    const CellPlace before = mainGrid_ != nullptr ? mainGrid_->current() : CellPlace{};
    const std::int32_t rowsBefore = mainGrid_ != nullptr ? mainGrid_->Rows() : 0;
    gate_.raise([&] { gate_.listener().click(name); });
    if (unloaded_ || mainGrid_ == nullptr) {
        return;
    }
    // After a command that moved the cursor to another cell, or added or removed lines, the grid gets the focus.
    if (!(mainGrid_->current() == before) || mainGrid_->Rows() != rowsBefore || mainGrid_->ActiveEditor()->Visible()) {
        mainGrid_->SetFocus();
    } else {
        restoreFocus(focus);
    }
}

void Form::focusFirst(bool fromTheStart) {
    const auto enabled = [](Button* button) { return button->Enabled(); };
    const auto first = std::find_if(tabOrder_.begin(), tabOrder_.end(), enabled);
    const auto last = std::find_if(tabOrder_.rbegin(), tabOrder_.rend(), enabled);
    if (first != tabOrder_.end()) {
        (fromTheStart ? *first : *last)->window().SetFocus();
    }
}

void Form::restoreFocus(wxWindow* window) {
    if (unloaded_ || dialog_->IsDescendant(wxWindow::FindFocus())) {
        return;
    }
    if (window != nullptr && dialog_->IsDescendant(window) && window->IsShownOnScreen() && window->IsEnabled()) {
        window->SetFocus();
    } else if (mainGrid_ != nullptr) {
        mainGrid_->SetFocus();
    }
}

std::string Form::state() const {
    std::string text = mainGrid_ != nullptr ? mainGrid_->state() : std::string();
    text += "\tenabled=";
    for (Button* const button : tabOrder_) {
        text += button->Enabled() ? utf8(button->window().GetName()) + " " : std::string();
    }
    return text;
}

std::string Form::places() const {
    std::string text = mainGrid_ != nullptr ? mainGrid_->places() : std::string();
    const double scale = dialog_->GetContentScaleFactor();
    const auto add = [&](const std::string& name, const wxRect& place) {
        const auto scaled = [scale](int value) { return std::to_string(static_cast<int>(value * scale)); };
        text += name + " " + scaled(place.x) + " " + scaled(place.y) + " " + scaled(place.width) + " " +
                scaled(place.height) + "\n";
    };
    for (Button* const button : tabOrder_) {
        add(utf8(button->window().GetName()), button->window().GetScreenRect());
    }
    add("form", wxRect(dialog_->ClientToScreen(wxPoint(0, 0)), dialog_->GetClientSize()));
    return text;
}

} // namespace z7::cashflow::wx
