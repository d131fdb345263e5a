#pragma once

#include "z7cashflow/support/Reason.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// A parsed connection string: "keyword=value;keyword={value}", where "}}" inside braces means one closing brace.
/// Its messages never contain a value, because any value could be a secret.
class ConnectionText {
public:
    struct Part {
        std::string keyword; ///< in lower case
        std::string value;   ///< without its braces
        std::string source;  ///< as written, including keyword and braces
    };

    /// Error 5 with the given source if the text is not a connection string, is too long, or repeats a keyword.
    ConnectionText(std::string_view text, const char* errorSource);

    [[nodiscard]] const std::vector<Part>& parts() const noexcept { return parts_; }
    /// The part with a keyword, or a null pointer.
    [[nodiscard]] const Part* find(std::string_view keyword) const noexcept;
    /// A part's value as a whole number; error 5 if it is not one, or is out of range.
    [[nodiscard]] int number(const Part& part, int least, int most) const;
    /// Raises error 5: the connection string cannot be used, and why.
    [[noreturn]] void refuse(ReasonId reason, std::vector<std::string> arguments = {}) const;

private:
    [[nodiscard]] std::string takeValue(std::string_view& rest, const std::string& keyword) const;

    const char* errorSource_;
    std::vector<Part> parts_;
};

/// Whether a keyword, in any letter case, names a secret, such as PWD, Password or AccessToken.
[[nodiscard]] bool namesSecret(std::string_view keyword);

/// A value in the form of a connection string: in braces if necessary.
[[nodiscard]] std::string connectionValue(const std::string& value);

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
