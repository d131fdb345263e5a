#pragma once

#include "adapters/ado/automation/system.h"
#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace z7::adapters::automation {

/// The library's value of an automation value:
/// - Empty and Null are null.
/// - UI1, I2, I4, R8, BOOL, DATE and BSTR keep their type.
/// - I1, UI2, UI4, INT, UINT, I8 and UI8 become a 32-bit integer if they fit, else a double.
/// - R4 becomes the double that its shortest decimal text stands for: the single 0.1 is 0.1.
/// - CY and DECIMAL become the nearest double, so that money compares with amounts from elsewhere.
///
/// References are followed, and so are variants within variants. An object stands for its default property, as a field
/// of a record set for its value. Error 13 for everything else: arrays, other objects, a missing argument, a reference
/// to nothing. The argument remains the caller's.
[[nodiscard]] cashflow::Variant fromAutomation(const VARIANT& value);

/// Stores a value of the library as an automation value: null as Null, integers as UI1, I2 and I4, a double as R8, a
/// boolean as BOOL, a date as DATE, a text as BSTR. What out holds is not freed, so out may be uninitialised memory;
/// the caller owns the result.
void toAutomation(const cashflow::Variant& value, VARIANT* out);

/// Owns an automation value.
class OwnedVariant {
public:
    /// Empty.
    OwnedVariant() noexcept { VariantInit(&value_); }
    /// A value of the library, as by toAutomation.
    OwnedVariant(const cashflow::Variant& value) { toAutomation(value, &value_); }
    /// A truth value.
    OwnedVariant(bool truth) noexcept;
    /// A 16-bit integer.
    OwnedVariant(std::int16_t number) noexcept;
    /// A 32-bit integer.
    OwnedVariant(std::int32_t number) noexcept;
    /// A double.
    OwnedVariant(double number) noexcept;
    /// A text in UTF-8.
    OwnedVariant(std::string_view text);
    /// A text in UTF-8; not a null pointer.
    OwnedVariant(const char* text) : OwnedVariant(std::string_view(text)) {}
    /// A text in UTF-8.
    OwnedVariant(const std::string& text) : OwnedVariant(std::string_view(text)) {}
    /// A text in UTF-16.
    OwnedVariant(std::wstring_view text);
    /// A text in UTF-16; not a null pointer.
    OwnedVariant(const wchar_t* text) : OwnedVariant(std::wstring_view(text)) {}
    /// An object, or Nothing for a null pointer. Adds a reference.
    OwnedVariant(IDispatch* object) noexcept;
    /// A copy of any automation value, with the texts and references in it.
    explicit OwnedVariant(const VARIANT& value);
    /// Any other pointer would silently become a truth value.
    template <class T> OwnedVariant(T*) = delete;
    /// A copy.
    OwnedVariant(const OwnedVariant& other) : OwnedVariant(other.value_) {}
    /// Takes the value over; the other one is Empty.
    OwnedVariant(OwnedVariant&& other) noexcept : value_(other.detach()) {}
    /// Frees the old value and takes the other over.
    OwnedVariant& operator=(OwnedVariant other) noexcept;
    /// Frees the value.
    ~OwnedVariant() { VariantClear(&value_); }

    /// An optional argument that is left out.
    [[nodiscard]] static OwnedVariant missing() noexcept;
    /// A reference to a value in which the called object may store its own. The target must outlive the call.
    [[nodiscard]] static OwnedVariant byReference(OwnedVariant& target) noexcept;
    /// Takes over a value that the caller owns.
    [[nodiscard]] static OwnedVariant owning(const VARIANT& value) noexcept;

    /// The value, owned by this object.
    [[nodiscard]] const VARIANT& get() const noexcept { return value_; }
    /// The address for an out argument. Frees what was held.
    [[nodiscard]] VARIANT* put() noexcept;
    /// Passes the value to the caller, who frees it; Empty is left here.
    [[nodiscard]] VARIANT detach() noexcept;
    /// The library's value; see fromAutomation.
    [[nodiscard]] cashflow::Variant value() const { return fromAutomation(value_); }

private:
    VARIANT value_;
};

} // namespace z7::adapters::automation
