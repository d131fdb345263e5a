#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/system.h"
#include "com/Object.h"
#include "com/guarded.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/errorNumbers.h"

#include <cstdint>
#include <string>
#include <vector>

/// \file
/// Arguments and results of the members of the interfaces. store() puts a value of the library into an out argument,
/// whose former content is not freed.
namespace z7::com {

/// A text; the caller frees it.
void store(BSTR* out, const std::string& text);
/// A truth value.
void store(VARIANT_BOOL* out, bool truth) noexcept;
/// A 32-bit integer.
void store(LONG* out, std::int32_t number) noexcept;
/// A 16-bit integer.
void store(SHORT* out, std::int16_t number) noexcept;
/// An 8-bit integer.
void store(BYTE* out, std::uint8_t number) noexcept;
/// An amount, or a date as its day number.
void store(DOUBLE* out, double number) noexcept;
/// Any value; the caller frees it.
void store(VARIANT* out, const cashflow::Variant& value);
/// The automation value Empty, as the result of a member that has nothing to say.
struct Empty {};
/// Stores it.
void store(VARIANT* out, Empty) noexcept;
/// An array of texts, counted from 0; the caller frees it.
void store(VARIANT* out, const std::vector<std::string>& names);
/// An interface of an object, which may be null; the caller releases it.
template <class Interface, class T> void store(Interface** out, adapters::automation::ComPtr<T> object) noexcept {
    *out = static_cast<Interface*>(object.detach());
}

/// Stores the zero of the type in an out argument. A null pointer is refused.
template <class Out> HRESULT storeNothing(Out* out) noexcept {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = {};
    return S_OK;
}

/// The text of an argument, in UTF-8.
[[nodiscard]] std::string text(BSTR argument);
/// The truth value of an argument.
[[nodiscard]] inline bool truth(VARIANT_BOOL argument) noexcept { return argument != VARIANT_FALSE; }

/// The object of the library behind an interface pointer; null for a null pointer. Error 13 if it is none of the
/// library's, or of another class, or belongs to another thread.
template <class T> [[nodiscard]] T* objectIfAny(IUnknown* argument) {
    T* object = objectOf<T>(argument);
    if (object == nullptr && argument != nullptr) {
        raiseHostError(cashflow::errors::typeMismatch,
                       "The object was not created by Z7CashFlow on this thread, or is of another class");
    }
    return object;
}
/// The same for an object that must be there: error 91 for a null pointer.
template <class T> [[nodiscard]] T& objectNeeded(IUnknown* argument) {
    T* object = objectIfAny<T>(argument);
    if (object == nullptr) {
        raiseHostError(cashflow::errors::objectNotSet, "An object is needed here, but Nothing was passed");
    }
    return *object;
}

} // namespace z7::com
