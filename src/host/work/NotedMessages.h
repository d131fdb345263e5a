#pragma once

#include "z7cashflow/ports/MessageBox.h"

#include <cstdint>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A message that was to be shown.
struct NotedMessage {
    std::string prompt;
    std::int32_t buttons = 0;
    std::string title;
};

/// The message box of a session that works beside others: it shows nothing and keeps its messages for the thread that
/// writes. Questions take their default button, as they do without a terminal.
class NotedMessages final : public MessageBox {
public:
    void locale(const std::string& /*localeId*/) override {}
    std::int32_t Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                      const std::string& helpFile, std::int32_t context) override;

    /// The messages since they were last taken.
    [[nodiscard]] std::vector<NotedMessage> take();

private:
    std::vector<NotedMessage> messages_;
};

} // namespace z7::cashflow::host
