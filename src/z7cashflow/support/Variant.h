#pragma once

#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The null value: nothing is known. It is not the empty string, and not 0.
struct Null {
    /// Always true; see equalByValue for the comparison of values.
    friend constexpr bool operator==(Null, Null) noexcept { return true; }
};

/// A value of a row's field, of a database column or of an argument: null, a text in UTF-8, an 8-bit,
/// 16-bit or 32-bit integer, a double, a boolean or a date. It keeps what it was given, without conversion;
/// conversions are in conversions.h.
class Variant {
public:
    /// Null.
    Variant() noexcept = default;
    /// Null.
    Variant(Null) noexcept {}
    /// A text in UTF-8.
    Variant(std::string text) noexcept : value_(std::move(text)) {}
    /// A text in UTF-8, copied.
    Variant(std::string_view text) : value_(std::string(text)) {}
    /// A text in UTF-8, copied; not a null pointer.
    Variant(const char* text) : value_(std::string(text)) {}
    /// An integer of 8 bits.
    Variant(std::uint8_t number) noexcept : value_(number) {}
    /// An integer of 16 bits.
    Variant(std::int16_t number) noexcept : value_(number) {}
    /// An integer of 32 bits.
    Variant(std::int32_t number) noexcept : value_(number) {}
    /// A double.
    Variant(double number) noexcept : value_(number) {}
    /// A boolean.
    Variant(bool truth) noexcept : value_(truth) {}
    /// A date.
    Variant(Date date) noexcept : value_(date) {}
    /// Any other pointer would silently become a boolean.
    template <class T> Variant(T*) = delete;

    /// Whether the value is null.
    [[nodiscard]] bool isNull() const noexcept { return is<Null>(); }
    /// True if the value is held as exactly the type T.
    template <class T> [[nodiscard]] bool is() const noexcept { return std::holds_alternative<T>(value_); }
    /// The value if it is held as exactly the type T, else a null pointer. Owned by the variant.
    template <class T> [[nodiscard]] const T* get() const noexcept { return std::get_if<T>(&value_); }

    /// Same type and same value: the text "1" and the integer 1 differ. See equalByValue in conversions.h
    /// for the comparison by meaning.
    friend bool operator==(const Variant&, const Variant&) noexcept = default;

    /// Calls the visitor with the held value, in its own type.
    template <class Visitor> decltype(auto) visit(Visitor&& visitor) const {
        return std::visit(std::forward<Visitor>(visitor), value_);
    }

private:
    std::variant<Null, std::string, std::uint8_t, std::int16_t, std::int32_t, double, bool, Date> value_;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
