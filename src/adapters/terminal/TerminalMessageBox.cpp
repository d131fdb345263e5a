#include "adapters/terminal/TerminalMessageBox.h"

#include "adapters/terminal/printable.h"
#include "z7cashflow/support/conversions.h"

#include <istream>
#include <ostream>

namespace z7::cashflow::terminal {

namespace {

constexpr std::int32_t okButton = 1;
constexpr std::int32_t yesButton = 6;
constexpr std::int32_t noButton = 7;
constexpr std::int32_t buttonSetMask = 15;
constexpr std::int32_t yesAndNo = 4;
constexpr std::int32_t secondButtonIsDefault = 256;
constexpr std::size_t mostDifferentNotices = 200;

} // namespace

TerminalMessageBox::TerminalMessageBox(std::istream& input, std::ostream& errors, MessageBoxOptions options)
    : input_(input), errors_(errors), options_(options) {}

void TerminalMessageBox::locale(const std::string& localeId) { chinese_ = localeId == "2052"; }

std::int32_t TerminalMessageBox::Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                                      const std::string& /*helpFile*/, std::int32_t /*context*/) {
    const std::string text = title.empty() ? printable(prompt) : printable(title) + ": " + printable(prompt);
    if ((buttons & buttonSetMask) == yesAndNo) {
        return ask(text, (buttons & secondButtonIsDefault) != 0 ? noButton : yesButton);
    }
    note(text);
    return okButton;
}

std::int32_t TerminalMessageBox::ask(const std::string& question, std::int32_t defaultAnswer) {
    if (options_.quiet) {
        return defaultAnswer;
    }
    const bool yesIsDefault = defaultAnswer == yesButton;
    const char* choices =
        yesIsDefault ? (chinese_ ? " [是/否，默认是] " : " [Y/n] ") : (chinese_ ? " [是/否，默认否] " : " [y/N] ");
    errors_ << question << choices << std::flush;
    if (!options_.interactive) {
        errors_ << (yesIsDefault ? (chinese_ ? "是" : "yes") : (chinese_ ? "否" : "no")) << std::endl;
        return defaultAnswer;
    }
    std::string answer;
    while (std::getline(input_, answer)) {
        answer = asciiLower(answer);
        if (answer.empty()) {
            return defaultAnswer;
        }
        if (answer == "y" || answer == "yes" || answer == "是") {
            return yesButton;
        }
        if (answer == "n" || answer == "no" || answer == "否") {
            return noButton;
        }
        errors_ << question << choices << std::flush;
    }
    errors_ << std::endl;
    return defaultAnswer;
}

void TerminalMessageBox::note(const std::string& notice) {
    const auto known = timesShown_.find(notice);
    if (known != timesShown_.end()) {
        ++known->second;
        return;
    }
    if (timesShown_.size() >= mostDifferentNotices) {
        ++unnamed_;
        return;
    }
    timesShown_.emplace(notice, 1);
    if (!options_.quiet) {
        errors_ << notice << std::endl;
    }
}

void TerminalMessageBox::reportRepeats() {
    if (!options_.quiet) {
        for (const auto& [notice, times] : timesShown_) {
            if (times > 1) {
                errors_ << notice << (chinese_ ? "（共 " : " (") << times << (chinese_ ? " 次）" : " times)") << '\n';
            }
        }
        if (unnamed_ > 0) {
            errors_ << (chinese_ ? "另有其他消息 " : "Further messages: ") << unnamed_ << '\n';
        }
        errors_ << std::flush;
    }
    timesShown_.clear();
    unnamed_ = 0;
}

} // namespace z7::cashflow::terminal
