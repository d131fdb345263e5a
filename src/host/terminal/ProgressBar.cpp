#include "host/terminal/ProgressBar.h"

#include "adapters/terminal/printable.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestBar = 30;
constexpr std::size_t shortestBar = 5;
constexpr std::size_t usualColumns = 80;
constexpr const char* toLineStart = "\r\x1b[K"; // to the first column, and what stands there away

} // namespace

ProgressBar::ProgressBar(std::ostream& stream, std::string label, std::size_t total, bool shown, std::size_t columns)
    : stream_(stream), label_(std::move(label)), total_(total), columns_(columns == 0 ? usualColumns : columns),
      shown_(shown && total > 0) {}

ProgressBar::~ProgressBar() {
    if (shown_ && percent_ <= 100) {
        stream_ << toLineStart << std::flush;
    }
}

void ProgressBar::update(std::size_t done) {
    if (!shown_) {
        return;
    }
    const std::size_t percent = done * 100 / total_;
    if (percent == percent_) {
        return;
    }
    percent_ = percent;
    const std::string numbers =
        std::to_string(done) + '/' + std::to_string(total_) + ' ' + std::to_string(percent) + '%';
    const std::size_t most = std::to_string(total_).size() * 2 + std::string_view("/ 100%").size();
    const std::size_t others = terminal::displayWidth(label_) + std::string_view(" [] ").size() + most + 1;
    const std::size_t length = others >= columns_ ? 0 : std::min(columns_ - others, longestBar);
    std::string text = numbers;
    if (length >= shortestBar) {
        const std::size_t filled = percent * length / 100;
        text = label_ + " [" + std::string(filled, '#') + std::string(length - filled, '.') + "] " + numbers;
    }
    stream_ << toLineStart << text << std::flush;
}

} // namespace z7::cashflow::host
