#pragma once

#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <compare>
#include <cstdint>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// An exact amount of money with four decimals, such as 1234.5000. It is used for the sums of a year, where doubles
/// would lose cents. A sum beyond 900,000,000,000.0000 in either direction, which a double could no longer
/// represent to the last decimal, raises error 6.
class Amount {
public:
    constexpr Amount() noexcept = default;

    /// Converts a database value: null is 0, a number is rounded to four decimals. Error 13 if the value is not
    /// a number, error 6 if it is too large.
    [[nodiscard]] static Amount of(const Variant& value);
    /// Parses a text such as "1,234.50" or "-3.5". Error 13 if it is not a number or has more than four
    /// decimals, error 6 if it is too large.
    [[nodiscard]] static Amount read(const std::string& text);

    /// Whether the amount is exactly 0.
    [[nodiscard]] constexpr bool isZero() const noexcept { return tenThousandths_ == 0; }
    /// The amount as a double, for the database and for messages.
    [[nodiscard]] double value() const noexcept { return static_cast<double>(tenThousandths_) / 10000.0; }
    /// "1,234.50": with thousands separators and two decimals, or four if the third or fourth is not 0.
    [[nodiscard]] std::string text() const;
    /// "1234.50": the same without separators, for CSV.
    [[nodiscard]] std::string plainText() const;

    /// Adds an amount. Error 6 if the sum is too large.
    Amount& operator+=(Amount other);
    /// Subtracts an amount. Error as for adding.
    Amount& operator-=(Amount other);
    /// The sum of two amounts. Error 6 if it is too large.
    [[nodiscard]] friend Amount operator+(Amount a, Amount b) { return a += b; }
    /// The difference of two amounts. Error 6 if it is too large.
    [[nodiscard]] friend Amount operator-(Amount a, Amount b) { return a -= b; }
    /// The amount with the opposite sign.
    [[nodiscard]] friend constexpr Amount operator-(Amount a) noexcept { return Amount(-a.tenThousandths_); }
    /// Compares by value.
    friend constexpr auto operator<=>(Amount, Amount) noexcept = default;

private:
    explicit constexpr Amount(std::int64_t tenThousandths) noexcept : tenThousandths_(tenThousandths) {}
    void requireInRange() const;

    std::int64_t tenThousandths_ = 0;
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
