#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

namespace z7::cashflow::host {

/// A bar on one line of a terminal, drawn anew only when its percentage changes, and gone when it ends.
class ProgressBar {
public:
    /// Draws nothing at all unless shown. On a terminal of so many columns (0: not known) the bar is as long as there
    /// is room for, and without room for one the numbers stand alone. The stream is not owned.
    ProgressBar(std::ostream& stream, std::string label, std::size_t total, bool shown, std::size_t columns = 0);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// That many of the total are done.
    void update(std::size_t done);

private:
    std::ostream& stream_;
    std::string label_;
    std::size_t total_;
    std::size_t columns_;
    std::size_t percent_ = 101; ///< the percentage that is drawn; 101 for none
    bool shown_;
};

} // namespace z7::cashflow::host
