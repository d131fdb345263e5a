#pragma once

#include "z7cashflow/support/Reason.h"
#include "z7cashflow/support/errorNumbers.h"
#include "z7cashflow/support/visibility.h"

#include <exception>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The one exception of the library: a number that callers can test, where it came from, a text for people, and why it
/// was raised in a form that can be translated. An error of a database carries the database's own number and text, and
/// its five-character SQL state if it has one.
class Error : public std::exception {
public:
    /// An error with a text of its own: that of a database, a catalogue or a check.
    Error(int number, std::string source, std::string description, std::string sqlState = {});
    /// The same with a reason: for a prescribed text that says too little, such as that XML cannot be read.
    Error(int number, std::string source, std::string description, Explanation why);
    /// An error whose number and English text are those of its reason.
    Error(std::string source, Explanation why, std::string sqlState = {});
    /// The same for a reason without a number, or with another number than that of the reason.
    Error(int number, std::string source, Explanation why, std::string sqlState = {});

    /// The number that callers test: one of errors, or the database's own.
    [[nodiscard]] int number() const noexcept { return number_; }
    /// Where it was raised: "CashFlow" for a refusal of the library and for everything that a save raises, otherwise
    /// "Z7CashFlow" for the library or the adapter's name for a database.
    [[nodiscard]] const std::string& source() const noexcept { return source_; }
    /// The text for people, in the language of the login where the library has a text for it, otherwise in English.
    [[nodiscard]] const std::string& description() const noexcept { return description_; }
    /// Why it was raised; Reason::none if only the description says so.
    [[nodiscard]] const Explanation& why() const noexcept { return why_; }
    /// Whether the description is a text of its own and not the English of why().
    [[nodiscard]] bool hasOwnText() const noexcept { return hasOwnText_; }
    /// The database's own error number; for an error that is not a database's, the same as number().
    [[nodiscard]] int nativeError() const noexcept { return number_; }
    /// SQLSTATE of a database error; empty for all others.
    [[nodiscard]] const std::string& sqlState() const noexcept { return sqlState_; }
    /// The description, for handlers that know nothing of this class.
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

    /// The same error under another source.
    [[nodiscard]] Error withSource(std::string source) const;
    /// The error as the cause of another one: its explanation, or its own text unchanged.
    [[nodiscard]] Explanation asCause() const;

private:
    int number_;
    std::string source_;
    std::string description_;
    std::string sqlState_;
    Explanation why_;
    bool hasOwnText_;
};

/// Raises an error for a reason, under the source "Z7CashFlow" and the reason's number.
[[noreturn]] void raisePlatformError(ReasonId reason, std::vector<std::string> arguments = {});

/// Runs an action and ignores any Error that it raises, for statements that are allowed to fail. Other exceptions, such
/// as that of exhausted memory, pass through.
template <class Action> void ignoringErrors(Action&& action) {
    try {
        action();
    } catch (const Error&) { // the rule at the calling place says why
    }
}

} // namespace z7::cashflow

Z7_PUBLIC_END
