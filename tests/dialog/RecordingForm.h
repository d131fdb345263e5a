#pragma once

#include "dialog/RecordingGrid.h"
#include "z7cashflow/ports/DialogFactory.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {

class RecordingButton final : public ZQCommandButton {
public:
    void fontName(const std::string& name) override { font = name; }
    void Caption(const std::string& text) override { caption = text; }
    [[nodiscard]] bool Enabled() const override { return enabled; }
    void Enabled(bool value) override { enabled = value; }

    std::string caption;
    std::string font;
    bool enabled = true;
};

class RecordingCaption final : public ZQFrmCaption {
public:
    void fontName(const std::string& name) override { font = name; }
    void caption(const std::string& text) override { title = text; }

    std::string title;
    std::string font;
};

class RecordingKeyHook final : public ZQKeyHookCtrl {
public:
    void fontName(const std::string& /*name*/) override { throw Error(438, "RecordingKeyHook", "writes nothing"); }
};

/// A form without a screen. In showModal a function of the test acts as the user.
class RecordingForm final : public DialogForm {
public:
    RecordingForm(const FormDesign& formDesign, FormEvents& events, std::vector<std::string>& formJournal,
                  std::function<void(RecordingForm&)> formUser);

    // Actions of the user. An Error of an event reaches the test.
    void press(const std::string& buttonName);
    std::int32_t key(std::int32_t keyCode, std::int32_t shift = 0);
    void closeBox() { events_.closeRequested(); }
    [[nodiscard]] FormEvents& events() { return events_; }

    [[nodiscard]] SuperGrid& grid(const std::string& name) override;
    [[nodiscard]] ZQCommandButton& button(const std::string& name) override;
    [[nodiscard]] ZQFrmCaption& frmCaption(const std::string& name) override;
    [[nodiscard]] ZQKeyHookCtrl& keyHook(const std::string& name) override;
    [[nodiscard]] std::vector<Control*> controls() override;
    void showModal() override;
    void unload() override;
    void sendKeys(const std::string& keys) override;

    FormDesign design;
    std::vector<std::string>& journal;
    RecordingGrid cells;
    std::map<std::string, RecordingButton> buttons;
    RecordingCaption title;
    RecordingKeyHook hook;
    int unloads = 0;

private:
    FormEvents& events_;
    std::function<void(RecordingForm&)> user_;
};

/// What the user does in the next pick list, and what it showed.
struct Picks {
    std::deque<std::optional<std::size_t>> choices;
    std::vector<std::string> shown; ///< "title: caption width [right], ...: cell|cell ; cell|cell"
};

/// Creates recording forms, and pick lists that choose from a list.
class RecordingDialogFactory final : public DialogFactory {
public:
    [[nodiscard]] std::unique_ptr<DialogForm> createForm(const FormDesign& design, FormEvents& listener) override;
    [[nodiscard]] std::unique_ptr<PickList> createPickList() override;
    [[nodiscard]] std::unique_ptr<ServerRefClient> createServerRefClient() override {
        return makeServerRefClient ? makeServerRefClient() : nullptr;
    }
    [[nodiscard]] std::unique_ptr<ZQReferClient> createReferClient() override {
        return makeReferClient ? makeReferClient() : nullptr;
    }

    RecordingForm* form = nullptr; ///< the form created last, as long as its dialog lives
    int forms = 0;
    std::vector<std::string> journal;
    std::function<void(RecordingForm&)> user; ///< acts as the user while a form is shown
    std::function<void(RecordingForm&)> onCreate;
    Picks picks;
    std::function<std::unique_ptr<ServerRefClient>()> makeServerRefClient;
    std::function<std::unique_ptr<ZQReferClient>()> makeReferClient;
};

} // namespace z7::cashflow::test
