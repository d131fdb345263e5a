#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace z7::cashflow::guard {

/// The error of a statement that is none of the library's.
inline constexpr int statementRefused = 10020;

/// Tells the library's own statements from statements that a value has turned into something else.
///
/// Values go into statements as they are, so a quote in a code can end a text early and let the rest of the code be read as part of the
/// statement. A statement passes if, apart from the values of its literals and the name of the voucher table, it is byte by
/// byte one that the library builds. A table's name passes as one to three regular or bracketed names joined by dots, and a
/// number of an insert with the sign and the blanks that it was given with.
class StatementGuard {
public:
    StatementGuard();

    /// Lets a statement pass or raises statementRefused with the text at which it departs from what the library builds.
    void check(std::string_view statement);

private:
    struct Match {
        bool whole = false;
        std::size_t agreed = 0; ///< how much of the shape agrees with the pattern
    };

    void remember(const std::string& shape);
    [[nodiscard]] static Match match(std::string_view pattern, std::string_view shape);

    std::vector<std::string> patterns_;
    std::unordered_set<std::string> passed_; ///< shapes that passed before; only honest ones get in, and few of them
};

} // namespace z7::cashflow::guard
