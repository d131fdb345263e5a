#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

namespace z7::cashflow::host {

/// A progress bar on one line of a terminal. It is redrawn when its percentage changes and erased when it ends.
class ProgressBar {
public:
    /// Draws nothing if shown is false. The bar fills the given terminal width (0: unknown); if there is no
    /// room for a bar, only the numbers are shown. The stream is not owned.
    ProgressBar(std::ostream& stream, std::string label, std::size_t total, bool shown, std::size_t columns = 0);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Sets how many of the total are done.
    void update(std::size_t done);

private:
    std::ostream& stream_;
    std::string label_;
    std::size_t total_;
    std::size_t columns_;
    std::size_t percent_ = 101; ///< the percentage on the screen; 101 before the first drawing
    bool shown_;
};

} // namespace z7::cashflow::host
