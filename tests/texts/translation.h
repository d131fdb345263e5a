#pragma once

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <string_view>

namespace z7::cashflow::test {

/// The places {0}, {1} ... of a text, however often each occurs.
inline std::multiset<std::string> placesOf(std::string_view text) {
    static const std::regex place(R"(\{[0-9]+\})");
    const std::string copy(text);
    return {std::sregex_token_iterator(copy.begin(), copy.end(), place), std::sregex_token_iterator()};
}

/// Whether a text holds a Chinese character or full-width punctuation.
inline bool hasChinese(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xE4; });
}

} // namespace z7::cashflow::test
