#include "adapters/wx/windowsOnDemand.h"

#include "adapters/wx/Form.h"
#include "adapters/wx/PickWindow.h"
#include "adapters/wx/StateLines.h"
#include "adapters/wx/WindowSystem.h"
#include "z7cashflow/support/Error.h"

#include <wx/dialog.h>

#include <atomic>
#include <memory>

namespace z7::cashflow::wx {

namespace {

constinit std::atomic<bool> inUse = false; // the toolkit exists once in a process

/// The window system of one thread while it has windows.
class Screen {
public:
    Screen() {
        if (inUse.exchange(true)) {
            raisePlatformError(Reason::windowsInUse);
        }
        system_ = WindowSystem::start(nullptr);
        if (!system_) {
            inUse = false;
            raisePlatformError(Reason::screenMissing);
        }
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen() {
        system_.reset();
        inUse = false;
    }
    [[nodiscard]] StateLines& states() const { return system_->states(); }

private:
    std::unique_ptr<WindowSystem> system_;
};

class Factory final : public DialogFactory {
public:
    std::unique_ptr<DialogForm> createForm(const FormDesign& design, FormEvents& listener) override {
        return std::make_unique<Form>(design, listener, statesOfScreen());
    }
    std::unique_ptr<PickList> createPickList() override { return std::make_unique<PickWindow>(statesOfScreen()); }

private:
    // Each window holds the screen by its states.
    std::shared_ptr<StateLines> statesOfScreen() {
        std::shared_ptr<Screen> screen = screen_.lock();
        if (!screen) {
            screen = std::make_shared<Screen>();
            screen_ = screen;
        }
        return {screen, &screen->states()};
    }

    std::weak_ptr<Screen> screen_;
};

} // namespace

std::shared_ptr<DialogFactory> windowsOnDemand() { return std::make_shared<Factory>(); }

} // namespace z7::cashflow::wx
