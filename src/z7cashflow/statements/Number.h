#pragma once

#include "z7cashflow/statements/LiteralPolicy.h"
#include "z7cashflow/support/visibility.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

// The values of a statement's places refer to the texts from which they are made, so they must not outlive the call
// that fills the statement.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// A number: an integer of the program, or a text from a row, a login or a document that is inserted unchanged. A
/// truth value is 1 or 0.
class Number {
public:
    /// An integer, or a truth value.
    template <std::integral T> Number(T value) : integer_(static_cast<std::int64_t>(value)), isText_(false) {}
    /// A number as text, unchecked until it is appended.
    Number(std::string_view text) : text_(text) {}
    /// As above.
    Number(const std::string& text) : text_(text) {}
    /// As above.
    Number(const char* text) : text_(text) {}

    /// Appends the number to a statement. Under wholeLiterals error 10020 if the text is not exactly one number.
    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    std::string_view text_;
    std::int64_t integer_ = 0;
    bool isText_ = true;
};

/// A number for a condition that a record set evaluates itself: as Number, but it may be empty.
class FilterNumber {
public:
    /// A number as text, or the empty text.
    FilterNumber(std::string_view text) : text_(text) {}
    /// As above.
    FilterNumber(const std::string& text) : text_(text) {}
    /// As above.
    FilterNumber(const char* text) : text_(text) {}

    /// Appends the number to a condition. Error as for Number, except for the empty text.
    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    std::string_view text_;
};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
