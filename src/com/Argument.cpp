#include "com/Argument.h"

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/automation/OwnedVariant.h"
#include "com/guarded.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/errorNumbers.h"

#include <cstring>
#include <utility>

namespace z7::com {

namespace {

using adapters::automation::OwnedVariant;
namespace errors = cashflow::errors;

// The variable or value at the end of references to variants.
const VARIANT& heldBy(const VARIANT& given) noexcept {
    const VARIANT* held = &given;
    while (held->vt == (VT_BYREF | VT_VARIANT) && held->pvarVal != nullptr && held->pvarVal != held) {
        held = held->pvarVal;
    }
    return *held;
}

bool isMissing(const VARIANT& value) noexcept { return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND; }

bool isObjectType(VARTYPE type) noexcept { return type == VT_DISPATCH || type == VT_UNKNOWN; }

std::size_t sizeOf(VARTYPE type) {
    switch (type) {
    case VT_UI1:
    case VT_I1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_I8:
    case VT_UI8:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    default:
        raiseHostError(errors::typeMismatch, "The variable cannot take the result: use a Variant");
    }
}

// Replaces what a variable of a fixed type holds by a value of the same type, which passes to it.
void assign(void* variable, VARTYPE type, VARIANT& value) {
    const std::size_t size = sizeOf(type);
    VARIANT former{};
    former.vt = type;
    std::memcpy(&former.llVal, variable, size);
    std::memcpy(variable, &value.llVal, size);
    value.vt = VT_EMPTY;
    VariantClear(&former);
}

} // namespace

Argument::Argument(const Parameter& parameter) noexcept : parameter_(parameter) {
    VariantInit(&value_);
    VariantInit(&passed_);
    value_.vt = parameter.type == VT_VARIANT ? static_cast<VARTYPE>(VT_EMPTY) : parameter.type;
    value_.llVal = 0;
}

Argument::Argument(Argument&& other) noexcept
    : parameter_(other.parameter_), given_(other.given_), value_(std::exchange(other.value_, VARIANT{})),
      passed_(other.passed_) {}

Argument::~Argument() { VariantClear(&value_); }

bool Argument::take(const VARIANT* given) {
    if (given == nullptr || isMissing(heldBy(*given))) {
        if (!parameter_.isOptional && !parameter_.isResult) {
            return false;
        }
        if (!parameter_.initial.isNull()) {
            convert(OwnedVariant(parameter_.initial).get());
        }
        return true;
    }
    given_ = given;
    requireRoom(heldBy(*given));
    convert(heldBy(*given));
    return true;
}

void Argument::requireRoom(const VARIANT& held) const {
    if (!parameter_.isReference || (held.vt & VT_BYREF) == 0) {
        return;
    }
    const auto type = static_cast<VARTYPE>(held.vt & ~VT_BYREF);
    static_cast<void>(sizeOf(type)); // raises for what no variable can be
    if ((parameter_.type == VT_BSTR && type != VT_BSTR) || isObjectType(parameter_.type) != isObjectType(type)) {
        raiseHostError(errors::typeMismatch, "The variable cannot take the result: use a Variant");
    }
}

void Argument::convert(const VARIANT& held) {
    if (parameter_.type == VT_VARIANT) {
        if (FAILED(VariantCopyInd(&value_, const_cast<VARIANT*>(&held)))) { // the system's declaration lacks a const
            raiseHostError(errors::typeMismatch, "The argument refers to nothing");
        }
        return;
    }
    if (isObjectType(parameter_.type)) {
        convertObject(held);
        return;
    }
    if (held.vt == VT_EMPTY) {
        return; // the zero or the empty text of the type
    }
    const cashflow::Variant value = adapters::automation::fromAutomation(held);
    switch (parameter_.type) {
    case VT_UI1:
        value_.bVal = cashflow::toByte(value);
        break;
    case VT_I2:
        value_.iVal = cashflow::toInt16(value);
        break;
    case VT_I4:
        value_.lVal = cashflow::toInt32(value);
        break;
    case VT_R8:
        value_.dblVal = cashflow::toDouble(value);
        break;
    case VT_DATE:
        value_.date = cashflow::toDate(value).dayNumber();
        break;
    case VT_BOOL:
        value_.boolVal = cashflow::toBool(value) ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    default:
        value_.bstrVal = adapters::automation::Bstr(cashflow::toText(value)).detach();
        break;
    }
}

void Argument::convertObject(const VARIANT& held) {
    IUnknown* object = nullptr;
    if (isObjectType(held.vt)) {
        object = held.punkVal;
    } else if ((held.vt & VT_BYREF) != 0 && isObjectType(held.vt & ~VT_BYREF) && held.ppunkVal != nullptr) {
        object = *held.ppunkVal;
    } else if (held.vt != VT_EMPTY && held.vt != VT_NULL) {
        raiseHostError(errors::typeMismatch, "An object is needed here");
    }
    if (object != nullptr &&
        FAILED(object->QueryInterface(parameter_.interfaceId, reinterpret_cast<void**>(&value_.punkVal)))) {
        value_.punkVal = nullptr;
        raiseHostError(errors::typeMismatch, "The object is of another class than the one that is needed here");
    }
}

VARTYPE Argument::passedType() const noexcept {
    return static_cast<VARTYPE>(parameter_.isReference ? VT_BYREF | parameter_.type : parameter_.type);
}

VARIANTARG* Argument::passed() noexcept {
    if (!parameter_.isReference) {
        return &value_;
    }
    passed_.vt = passedType();
    passed_.byref = parameter_.type == VT_VARIANT ? static_cast<void*>(&value_) : &value_.llVal;
    return &passed_;
}

void Argument::storeBack() {
    if (!parameter_.isReference || given_ == nullptr || (given_->vt & VT_BYREF) == 0) {
        return;
    }
    const VARIANT& held = heldBy(*given_);
    if ((held.vt & VT_BYREF) == 0) {
        auto& variable = const_cast<VARIANT&>(held); // reached by the caller's reference to it
        std::swap(variable, value_);                 // the former value is freed with this object
        return;
    }
    const auto type = static_cast<VARTYPE>(held.vt & ~VT_BYREF);
    if (type != value_.vt && !(isObjectType(type) && isObjectType(value_.vt))) {
        OwnedVariant converted;
        if (FAILED(VariantChangeTypeEx(converted.put(), &value_, LOCALE_INVARIANT, 0, type))) {
            raiseHostError(errors::typeMismatch, "The variable cannot take the result: use a Variant");
        }
        VARIANT fresh = converted.detach();
        assign(held.byref, type, fresh);
        return;
    }
    assign(held.byref, type, value_);
}

void Argument::moveTo(VARIANT* result) noexcept { *result = std::exchange(value_, VARIANT{}); }

} // namespace z7::com
