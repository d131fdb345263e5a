#pragma once

#include "z7cashflow/support/Reason.h"

#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::shared {

/// A connection string taken apart: "keyword=value;keyword={value}", in which "}}" in braces is one closing brace. No
/// message of it quotes a value, since any of them could be a secret.
class ConnectionText {
public:
    struct Part {
        std::string keyword; ///< in lower case
        std::string value;   ///< without its braces
        std::string source;  ///< as written, keyword and braces included
    };

    /// Error 5 of the given source if the text is not a connection string, is too long, or repeats a keyword.
    ConnectionText(std::string_view text, const char* errorSource);

    [[nodiscard]] const std::vector<Part>& parts() const noexcept { return parts_; }
    /// The part of a keyword, or null.
    [[nodiscard]] const Part* find(std::string_view keyword) const noexcept;
    /// A part's value as a whole number; error 5 if it is none, or out of the range.
    [[nodiscard]] int number(const Part& part, int least, int most) const;
    /// Error 5: the connection string cannot be used, and why.
    [[noreturn]] void refuse(ReasonId reason, std::vector<std::string> arguments = {}) const;

private:
    [[nodiscard]] std::string takeValue(std::string_view& rest, const std::string& keyword) const;

    const char* errorSource_;
    std::vector<Part> parts_;
};

/// Whether a keyword, whatever its letter case, is named after a secret, such as PWD, Password or AccessToken.
[[nodiscard]] bool namesSecret(std::string_view keyword);

/// A value as it stands in a connection string: in braces if it needs them.
[[nodiscard]] std::string connectionValue(const std::string& value);

} // namespace z7::cashflow::shared
