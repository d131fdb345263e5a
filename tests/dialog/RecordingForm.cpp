#include "dialog/RecordingForm.h"

#include <gtest/gtest.h>

#include <utility>

namespace z7::cashflow::test {

namespace {

class ChoosingPickList final : public PickList {
public:
    explicit ChoosingPickList(Picks& picks) : picks_(picks) {}

    std::optional<std::size_t> pick(const std::string& title, const std::vector<PickColumn>& columns,
                                    const std::vector<std::vector<std::string>>& rows) override {
        std::string text = title + ":";
        for (const PickColumn& column : columns) {
            text += " " + column.caption + " " + std::to_string(column.width) + (column.alignRight ? " right" : "");
        }
        for (const auto& row : rows) {
            text += " ;";
            for (const std::string& cell : row) {
                text += " " + cell;
            }
        }
        picks_.shown.push_back(text);
        if (picks_.choices.empty()) {
            ADD_FAILURE() << "a pick list that the test does not expect: " << text;
            return std::nullopt;
        }
        const auto choice = picks_.choices.front();
        picks_.choices.pop_front();
        return choice;
    }

private:
    Picks& picks_;
};

[[noreturn]] void noControl(const std::string& name) {
    throw Error(errors::badIndex, "RecordingForm", "no control " + name);
}

} // namespace

RecordingForm::RecordingForm(const FormDesign& formDesign, FormEvents& events, std::vector<std::string>& formJournal,
                             std::function<void(RecordingForm&)> formUser)
    : design(formDesign), journal(formJournal), cells(events, formJournal), events_(events),
      user_(std::move(formUser)) {
    for (const ControlDesign& control : design.controls) {
        if (control.controlClass == ControlClass::commandButton) {
            buttons[control.name].caption = control.caption;
        }
    }
}

void RecordingForm::press(const std::string& buttonName) {
    const auto found = buttons.find(buttonName);
    ASSERT_NE(found, buttons.end()) << buttonName;
    ASSERT_TRUE(found->second.enabled) << buttonName << " is disabled";
    events_.click(buttonName);
}

std::int32_t RecordingForm::key(std::int32_t keyCode, std::int32_t shift) {
    events_.keyDown(keyCode, shift);
    return keyCode;
}

SuperGrid& RecordingForm::grid(const std::string& name) {
    return name == "SuperGrid1" ? cells : (noControl(name), cells);
}

ZQCommandButton& RecordingForm::button(const std::string& name) {
    const auto found = buttons.find(name);
    return found == buttons.end() ? (noControl(name), buttons.begin()->second) : found->second;
}

ZQFrmCaption& RecordingForm::frmCaption(const std::string& name) {
    return name == "ZQFrmCaptionMgr" ? title : (noControl(name), title);
}

ZQKeyHookCtrl& RecordingForm::keyHook(const std::string& name) {
    return name == "ZQKeyHookCtrl1" ? hook : (noControl(name), hook);
}

std::vector<Control*> RecordingForm::controls() {
    std::vector<Control*> all{&hook, &cells}; // the one without a font comes first
    for (auto& [name, control] : buttons) {
        all.push_back(&control);
    }
    all.push_back(&title);
    return all;
}

void RecordingForm::showModal() {
    journal.emplace_back("showModal");
    if (user_ && unloads == 0) {
        user_(*this);
    }
    EXPECT_GT(unloads, 0) << "the dialog is still open";
}

void RecordingForm::unload() {
    journal.emplace_back("unload");
    ++unloads;
}

void RecordingForm::sendKeys(const std::string& keys) { journal.push_back("sendKeys [" + keys + "]"); }

std::unique_ptr<DialogForm> RecordingDialogFactory::createForm(const FormDesign& design, FormEvents& listener) {
    auto made = std::make_unique<RecordingForm>(design, listener, journal, user);
    form = made.get();
    ++forms;
    if (onCreate) {
        onCreate(*made);
    }
    return made;
}

std::unique_ptr<PickList> RecordingDialogFactory::createPickList() { return std::make_unique<ChoosingPickList>(picks); }

} // namespace z7::cashflow::test
