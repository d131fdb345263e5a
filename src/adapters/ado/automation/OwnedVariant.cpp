#include "adapters/ado/automation/OwnedVariant.h"

#include "adapters/ado/automation/AutomationReason.h"
#include "adapters/ado/automation/Bstr.h"
#include "z7cashflow/support/Error.h"

#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace z7::adapters::automation {

namespace {

using cashflow::Variant;

[[noreturn]] void refuse(const VARIANT& value) {
    cashflow::raisePlatformError(AutomationReason::valueNotUsable, {std::to_string(value.vt)});
}

template <class Integer> Variant integer(Integer number) {
    if (std::in_range<std::int32_t>(number)) {
        return static_cast<std::int32_t>(number);
    }
    return static_cast<double>(number);
}

/// Words of 32 bits, the lowest first, as a decimal text.
std::string digitsOf(std::array<std::uint32_t, 3> words) {
    std::string digits;
    while (words != std::array<std::uint32_t, 3>{}) {
        std::uint64_t rest = 0;
        for (std::size_t i = words.size(); i-- > 0;) {
            rest = (rest << 32U) | words[i];
            words[i] = static_cast<std::uint32_t>(rest / 10);
            rest %= 10;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + rest));
    }
    return digits.empty() ? "0" : digits;
}

/// The double nearest to an integer divided by a power of ten.
double scaled(std::uint64_t low, std::uint32_t high, int scale, bool negative) {
    constexpr std::uint64_t exactIntegers = std::uint64_t{1} << 53U;
    constexpr std::array powers{1.0, 10.0, 100.0, 1000.0, 10000.0};
    double result = 0.0;
    if (high == 0 && low <= exactIntegers && scale < static_cast<int>(powers.size())) {
        result = static_cast<double>(low) / powers[static_cast<std::size_t>(scale)]; // both exact, so rounded once
    } else {
        const std::string text =
            digitsOf({static_cast<std::uint32_t>(low), static_cast<std::uint32_t>(low >> 32U), high}) + "e-" +
            std::to_string(scale);
        std::from_chars(text.data(), text.data() + text.size(), result);
    }
    return negative ? -result : result;
}

double ofMoney(const CY& money) {
    const bool negative = money.int64 < 0;
    const auto bits = static_cast<std::uint64_t>(money.int64);
    return scaled(negative ? ~bits + 1 : bits, 0, 4, negative);
}

double ofDecimal(const DECIMAL& number) {
    return scaled(number.Lo64, static_cast<std::uint32_t>(number.Hi32), number.scale, (number.sign & DECIMAL_NEG) != 0);
}

double ofSingle(float number) {
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number);
    double result = 0.0;
    std::from_chars(text.data(), written.ptr, result);
    return result;
}

/// The value that a reference refers to, without ownership. Nothing but a variant may itself refer to something.
VARIANT followed(const VARIANT& reference) {
    if (reference.byref == nullptr) {
        refuse(reference);
    }
    VARIANT target;
    VariantInit(&target);
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    if (type == VT_VARIANT) {
        target = *reference.pvarVal;
        return target;
    }
    if (type == VT_DECIMAL) {
        target.decVal = *reference.pdecVal; // covers the type, which is therefore stored last
    } else {
        std::size_t size = 0;
        switch (type) {
        case VT_UI1:
        case VT_I1:
            size = 1;
            break;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            size = 2;
            break;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            size = 4;
            break;
        case VT_R8:
        case VT_CY:
        case VT_DATE:
        case VT_I8:
        case VT_UI8:
            size = 8;
            break;
        case VT_BSTR:
            size = sizeof(BSTR);
            break;
        default:
            refuse(reference);
        }
        std::memcpy(&target.llVal, reference.byref, size);
    }
    target.vt = type;
    return target;
}

// The value of an object's default property, such as that of a field of a record set. Empty if it has none that needs
// no argument, or one that is an object again.
std::optional<OwnedVariant> defaultValueOf(IDispatch* object) {
    DISPPARAMS none{};
    OwnedVariant value;
    if (object == nullptr || FAILED(object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                                   &none, value.put(), nullptr, nullptr))) {
        return std::nullopt;
    }
    const VARTYPE type = value.get().vt & VT_TYPEMASK;
    return type == VT_DISPATCH || type == VT_UNKNOWN ? std::nullopt : std::optional(std::move(value));
}

} // namespace

Variant fromAutomation(const VARIANT& value) {
    switch (value.vt) {
    case VT_DISPATCH:
        if (const auto held = defaultValueOf(value.pdispVal)) {
            return held->value();
        }
        refuse(value);
    case VT_EMPTY:
    case VT_NULL:
        return {};
    case VT_UI1:
        return static_cast<std::uint8_t>(value.bVal);
    case VT_I2:
        return static_cast<std::int16_t>(value.iVal);
    case VT_I4:
        return static_cast<std::int32_t>(value.lVal);
    case VT_R8:
        return value.dblVal;
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE;
    case VT_DATE:
        return cashflow::Date(value.date);
    case VT_BSTR:
        return utf8OfBstr(value.bstrVal);
    case VT_I1:
        return integer(static_cast<signed char>(value.cVal));
    case VT_UI2:
        return integer(value.uiVal);
    case VT_UI4:
        return integer(value.ulVal);
    case VT_INT:
        return integer(value.intVal);
    case VT_UINT:
        return integer(value.uintVal);
    case VT_I8:
        return integer(value.llVal);
    case VT_UI8:
        return integer(value.ullVal);
    case VT_R4:
        return ofSingle(value.fltVal);
    case VT_CY:
        return ofMoney(value.cyVal);
    case VT_DECIMAL:
        return ofDecimal(value.decVal);
    default:
        break;
    }
    if ((value.vt & VT_BYREF) == 0) {
        refuse(value);
    }
    VARIANT target = followed(value);
    // Two steps are all that OLE Automation allows; more could be a circle.
    if ((target.vt & VT_BYREF) != 0) {
        target = followed(target);
    }
    if ((target.vt & VT_BYREF) != 0) {
        refuse(target);
    }
    return fromAutomation(target);
}

void toAutomation(const Variant& value, VARIANT* out) {
    value.visit([out](const auto& held) {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, cashflow::Null>) {
            VariantInit(out);
            out->vt = VT_NULL;
        } else if constexpr (std::is_same_v<Held, cashflow::Date>) {
            VariantInit(out);
            out->vt = VT_DATE;
            out->date = held.dayNumber();
        } else if constexpr (std::is_same_v<Held, std::uint8_t>) {
            VariantInit(out);
            out->vt = VT_UI1;
            out->bVal = held;
        } else {
            *out = OwnedVariant(held).detach();
        }
    });
}

OwnedVariant::OwnedVariant(bool truth) noexcept : OwnedVariant() {
    value_.vt = VT_BOOL;
    value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
}

OwnedVariant::OwnedVariant(std::int16_t number) noexcept : OwnedVariant() {
    value_.vt = VT_I2;
    value_.iVal = number;
}

OwnedVariant::OwnedVariant(std::int32_t number) noexcept : OwnedVariant() {
    value_.vt = VT_I4;
    value_.lVal = number;
}

OwnedVariant::OwnedVariant(double number) noexcept : OwnedVariant() {
    value_.vt = VT_R8;
    value_.dblVal = number;
}

OwnedVariant::OwnedVariant(std::string_view text) : OwnedVariant(std::wstring_view(wide(text))) {}

OwnedVariant::OwnedVariant(std::wstring_view text) : OwnedVariant() {
    value_.bstrVal = Bstr(text).detach();
    value_.vt = VT_BSTR;
}

OwnedVariant::OwnedVariant(IDispatch* object) noexcept : OwnedVariant() {
    value_.vt = VT_DISPATCH;
    value_.pdispVal = object;
    if (object != nullptr) {
        object->AddRef();
    }
}

OwnedVariant::OwnedVariant(const VARIANT& value) : OwnedVariant() {
    const HRESULT result = VariantCopy(&value_, const_cast<VARIANT*>(&value));
    if (result == E_OUTOFMEMORY) {
        throw std::bad_alloc();
    }
    if (FAILED(result)) {
        refuse(value);
    }
}

OwnedVariant& OwnedVariant::operator=(OwnedVariant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
}

OwnedVariant OwnedVariant::missing() noexcept {
    OwnedVariant value;
    value.value_.vt = VT_ERROR;
    value.value_.scode = DISP_E_PARAMNOTFOUND;
    return value;
}

OwnedVariant OwnedVariant::byReference(OwnedVariant& target) noexcept {
    OwnedVariant value;
    value.value_.vt = VT_BYREF | VT_VARIANT;
    value.value_.pvarVal = &target.value_;
    return value;
}

OwnedVariant OwnedVariant::owning(const VARIANT& value) noexcept {
    OwnedVariant owner;
    owner.value_ = value;
    return owner;
}

VARIANT* OwnedVariant::put() noexcept {
    VariantClear(&value_);
    return &value_;
}

VARIANT OwnedVariant::detach() noexcept {
    const VARIANT value = value_;
    VariantInit(&value_);
    return value;
}

} // namespace z7::adapters::automation
