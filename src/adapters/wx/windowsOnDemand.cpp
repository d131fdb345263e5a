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

/// The right to use the toolkit.
class Claim {
public:
    Claim() {
        if (inUse.exchange(true)) {
            raisePlatformError(Reason::windowsInUse);
        }
    }
    Claim(const Claim&) = delete;
    Claim& operator=(const Claim&) = delete;
    ~Claim() { inUse = false; }
};

/// The window system of one thread while it has windows.
class Screen {
public:
    Screen() : system_(WindowSystem::start(nullptr)) {
        if (!system_) {
            raisePlatformError(Reason::screenMissing);
        }
    }
    [[nodiscard]] StateLines& states() const { return system_->states(); }

private:
    Claim claim_;
    std::unique_ptr<WindowSystem> system_;
};

class Factory final : public DialogFactory {
public:
    std::unique_ptr<DialogForm> createForm(const FormDesign& design, FormEvents& listener) override {
        // From the messages that a modal form lets through, its host may come back here.
        if (!screen_.expired()) {
            raisePlatformError(Reason::windowsInUse);
        }
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
