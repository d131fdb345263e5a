#include "host/cli/nearMatch.h"

#include <algorithm>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestWord = 40;

/// The number of typing errors between two words.
std::size_t slipsBetween(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> slips(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                slips[i][j] = i + j;
                continue;
            }
            const bool same = a[i - 1] == b[j - 1];
            slips[i][j] = std::min({slips[i - 1][j] + 1, slips[i][j - 1] + 1, slips[i - 1][j - 1] + (same ? 0U : 1U)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                slips[i][j] = std::min(slips[i][j], slips[i - 2][j - 2] + 1);
            }
        }
    }
    return slips[a.size()][b.size()];
}

} // namespace

std::string nearMatch(std::string_view typed, const std::vector<std::string>& words) {
    if (typed.size() > longestWord) {
        return {};
    }
    std::string best;
    std::size_t fewest = typed.size() > 4 ? 3 : 2; // one more than is allowed
    for (const std::string& word : words) {
        const std::size_t slips = slipsBetween(typed, word);
        if (slips < fewest) {
            fewest = slips;
            best = word;
        }
    }
    return best;
}

} // namespace z7::cashflow::host
