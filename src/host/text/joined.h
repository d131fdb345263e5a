#pragma once

#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// Joins the words of a range, with a separator between them.
template <class Words> [[nodiscard]] std::string joined(const Words& words, std::string_view separator) {
    std::string text;
    for (const auto& word : words) {
        if (!text.empty()) {
            text += separator;
        }
        text += word;
    }
    return text;
}

} // namespace z7::cashflow::host
