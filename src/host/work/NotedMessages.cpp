#include "host/work/NotedMessages.h"

#include <utility>

namespace z7::cashflow::host {

namespace {

constexpr std::int32_t buttonSetMask = 15;
constexpr std::int32_t yesAndNo = 4;
constexpr std::int32_t secondButtonIsDefault = 256;
constexpr std::int32_t okButton = 1;
constexpr std::int32_t yesButton = 6;
constexpr std::int32_t noButton = 7;

} // namespace

std::int32_t NotedMessages::Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                                 const std::string& /*helpFile*/, std::int32_t /*context*/) {
    messages_.push_back({prompt, buttons, title});
    if ((buttons & buttonSetMask) != yesAndNo) {
        return okButton;
    }
    return (buttons & secondButtonIsDefault) != 0 ? noButton : yesButton;
}

std::vector<NotedMessage> NotedMessages::take() { return std::exchange(messages_, {}); }

} // namespace z7::cashflow::host
