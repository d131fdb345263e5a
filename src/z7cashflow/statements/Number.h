#pragma once

#include "z7cashflow/statements/LiteralPolicy.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

// The values of a statement's places refer to the texts from which they are made, so they must not outlive the call
// that fills the statement.

namespace z7::cashflow::statements {

/// A number: an integer of the program, or a text from a row, a login or a document that is inserted unchanged. A
/// truth value is 1 or 0.
class Number {
public:
    template <std::integral T> Number(T value) : integer_(static_cast<std::int64_t>(value)), isText_(false) {}
    Number(std::string_view text) : text_(text) {}
    Number(const std::string& text) : text_(text) {}
    Number(const char* text) : text_(text) {}

    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    std::string_view text_;
    std::int64_t integer_ = 0;
    bool isText_ = true;
};

/// A number for a condition that a record set evaluates itself: as Number, but it may be empty.
class FilterNumber {
public:
    FilterNumber(std::string_view text) : text_(text) {}
    FilterNumber(const std::string& text) : text_(text) {}
    FilterNumber(const char* text) : text_(text) {}

    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    std::string_view text_;
};

} // namespace z7::cashflow::statements
