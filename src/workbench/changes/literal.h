#pragma once

#include <string>
#include <string_view>

namespace z7::cashflow::workbench {

/// A text as a string literal of a statement: N'o''neill'.
[[nodiscard]] inline std::string literal(std::string_view text) {
    std::string result = "N'";
    for (const char c : text) {
        result += c == '\'' ? std::string("''") : std::string(1, c);
    }
    return result + "'";
}

} // namespace z7::cashflow::workbench
