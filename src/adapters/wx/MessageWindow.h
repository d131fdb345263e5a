#pragma once

#include "z7cashflow/ports/MessageBox.h"

namespace z7::cashflow::wx {

class StateLines;

/// The suite's message box as a window over the active one.
class MessageWindow final : public MessageBox {
public:
    explicit MessageWindow(StateLines& states) : states_(states) {}

    /// "2052" selects Chinese button texts, any other value English ones.
    void locale(const std::string& localeId) override { chinese_ = localeId == "2052"; }
    /// A question that is closed, or left with Escape, returns no.
    std::int32_t Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                      const std::string& helpFile, std::int32_t context) override;

private:
    StateLines& states_;
    bool chinese_ = false;
};

} // namespace z7::cashflow::wx
