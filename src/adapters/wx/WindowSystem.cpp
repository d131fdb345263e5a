#include "adapters/wx/WindowSystem.h"

#include "adapters/wx/Form.h"
#include "adapters/wx/MessageWindow.h"
#include "adapters/wx/PickWindow.h"
#include "adapters/wx/StateLines.h"
#include "adapters/wx/platform.h"

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

#undef MessageBox // a macro of Windows

namespace z7::cashflow::wx {

namespace {

class Factory final : public DialogFactory {
public:
    explicit Factory(std::shared_ptr<StateLines> states) : states_(std::move(states)) {}
    std::unique_ptr<DialogForm> createForm(const FormDesign& design, FormEvents& listener) override {
        return std::make_unique<Form>(design, listener, states_);
    }
    std::unique_ptr<PickList> createPickList() override { return std::make_unique<PickWindow>(states_); }

private:
    std::shared_ptr<StateLines> states_;
};

/// The toolkit used as a library, without its main loop.
class Application final : public wxApp {
public:
    Application() {
        // When the user logs off, the toolkit would close the dialog, or end the process of a host that is not its own.
        Bind(wxEVT_QUERY_END_SESSION, [](wxCloseEvent& /*event*/) {});
        Bind(wxEVT_END_SESSION, [](wxCloseEvent& /*event*/) {});
    }
    bool OnInit() override { return true; } // the command line is not for the toolkit
};

/// The started toolkit, until this is destroyed.
class Toolkit {
public:
    Toolkit() {
        wxTheApp->CallOnInit();
        wxTheApp->SetExitOnFrameDelete(false);
    }
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    ~Toolkit() {
        wxTheApp->OnExit();
        wxEntryCleanup();
    }
};

[[noreturn]] void endOnAssertion(const wxString& file, int line, const wxString& function, const wxString& condition,
                                 const wxString& message) {
    // By default the toolkit would open a window and wait for somebody to press a button.
    static_cast<void>(std::fprintf(stderr, "%s:%d: %s: %s %s\n", file.utf8_string().c_str(), line,
                                   function.utf8_string().c_str(), condition.utf8_string().c_str(),
                                   message.utf8_string().c_str()));
    std::abort();
}

} // namespace

struct WindowSystem::Parts {
    explicit Parts(std::ostream* out)
        : states(std::make_shared<StateLines>(out)), factory(std::make_shared<Factory>(states)),
          box(std::make_shared<MessageWindow>(*states)) {}

    Toolkit toolkit; ///< destroyed last
    std::shared_ptr<StateLines> states;
    std::shared_ptr<DialogFactory> factory;
    std::shared_ptr<MessageBox> box;
};

std::unique_ptr<WindowSystem> WindowSystem::start(std::ostream* states) {
    wxSetAssertHandler(endOnAssertion);
    claimModule();
    wxApp::SetInstance(new Application()); // NOLINT(cppcoreguidelines-owning-memory): the toolkit takes it
    int count = 1;
    char name[] = "z7cf";
    char* arguments[] = {name, nullptr};
    const wxLogNull quiet; // the caller reports what is missing
    if (!wxEntryStart(count, static_cast<char**>(arguments))) {
        wxApp::SetInstance(nullptr);
        return nullptr;
    }
    return std::unique_ptr<WindowSystem>(new WindowSystem(
        std::make_unique<Parts>(states))); // NOLINT(cppcoreguidelines-owning-memory): the constructor is private
}

WindowSystem::WindowSystem(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

WindowSystem::~WindowSystem() = default;

std::shared_ptr<DialogFactory> WindowSystem::dialogFactory() const { return parts_->factory; }

std::shared_ptr<MessageBox> WindowSystem::messageBox() const { return parts_->box; }

StateLines& WindowSystem::states() const { return *parts_->states; }

} // namespace z7::cashflow::wx
