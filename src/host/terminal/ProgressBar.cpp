#include "host/terminal/ProgressBar.h"

#include <ostream>
#include <utility>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t barWidth = 30;
constexpr const char* toLineStart = "\r\x1b[K"; // to the first column, and what stands there away

} // namespace

ProgressBar::ProgressBar(std::ostream& stream, std::string label, std::size_t total, bool shown)
    : stream_(stream), label_(std::move(label)), total_(total), shown_(shown && total > 0) {}

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
    const std::size_t filled = percent * barWidth / 100;
    stream_ << toLineStart << label_ << " [" << std::string(filled, '#') << std::string(barWidth - filled, '.') << "] "
            << done << '/' << total_ << ' ' << percent << '%' << std::flush;
}

} // namespace z7::cashflow::host
