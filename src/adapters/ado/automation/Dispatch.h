#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/OwnedVariant.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace z7::adapters::automation {

/// An automation object whose members are used by name, or nothing. It owns a reference to the object. Member names
/// are looked up once and then remembered, so keep the Dispatch of an object that is used often. Copies refer to the
/// same object. Use it on the thread (apartment) that the object belongs to.
///
/// Arguments are anything that OwnedVariant is made from. Every failure is a cashflow::Error:
/// - The object's own error has its source and description. Its number is the low 16 bits of a code 0x800Axxxx, the
///   number that hosts know (0x800A0E79 is 3705); any other code is the number as a 32-bit integer.
/// - A code without a description gets the system's text for it. The source is then "Z7CashFlow".
/// - Error 438 for a member that the object does not have, 13 for an argument or result of the wrong type, 6 for one
///   that is out of range, 91 if there is no object.
class Dispatch {
public:
    /// Nothing.
    Dispatch() noexcept = default;
    /// An object, or nothing for a null pointer. Adds a reference.
    explicit Dispatch(IDispatch* object) noexcept : object_(object) {}
    /// An object, or nothing.
    explicit Dispatch(ComPtr<IDispatch> object) noexcept : object_(std::move(object)) {}

    /// A new object of a registered class, by its program identifier such as L"ADODB.Connection". If it cannot be
    /// created, the system's code and text.
    [[nodiscard]] static Dispatch create(const wchar_t* programId);
    /// The object in a value, also in a value by reference. Error 91 if the value is Nothing, Empty or Null, 13 if it
    /// is something else than an object. The name is that of the member or argument, for the text of the error.
    [[nodiscard]] static Dispatch ofValue(const VARIANT& value, std::wstring_view name);

    /// Whether there is an object.
    explicit operator bool() const noexcept { return static_cast<bool>(object_); }
    /// The object without a reference, valid as long as this Dispatch; null for nothing.
    [[nodiscard]] IDispatch* pointer() const noexcept { return object_.get(); }

    /// A property, with its arguments if it takes any. A method with a result is read in the same way, as script
    /// languages do.
    template <class... Arguments> OwnedVariant get(const wchar_t* name, Arguments&&... arguments) const {
        return invokeWith(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::forward<Arguments>(arguments)...);
    }
    /// A property whose value is an object; see ofValue().
    template <class... Arguments>
    [[nodiscard]] Dispatch getObject(const wchar_t* name, Arguments&&... arguments) const {
        return ofValue(get(name, std::forward<Arguments>(arguments)...).get(), name);
    }
    /// Changes a property.
    template <class Value> void put(const wchar_t* name, Value&& value) const {
        invokeWith(name, DISPATCH_PROPERTYPUT, std::forward<Value>(value));
    }
    /// Makes a property refer to an object; nullptr for Nothing.
    void putRef(const wchar_t* name, IDispatch* object) const { invokeWith(name, DISPATCH_PROPERTYPUTREF, object); }
    /// Calls a method. The result is Empty if it returns nothing.
    template <class... Arguments> OwnedVariant call(const wchar_t* name, Arguments&&... arguments) const {
        return invokeWith(name, DISPATCH_METHOD, std::forward<Arguments>(arguments)...);
    }
    /// Calls a method that returns an object; see ofValue().
    template <class... Arguments>
    [[nodiscard]] Dispatch callObject(const wchar_t* name, Arguments&&... arguments) const {
        return ofValue(call(name, std::forward<Arguments>(arguments)...).get(), name);
    }

    /// A member by name, with the flags of IDispatch::Invoke. The functions above suffice for everything else.
    OwnedVariant invoke(const wchar_t* name, WORD flags, std::span<const OwnedVariant> arguments) const;

private:
    template <class... Arguments>
    OwnedVariant invokeWith(const wchar_t* name, WORD flags, Arguments&&... arguments) const {
        const std::array<OwnedVariant, sizeof...(Arguments)> values{
            OwnedVariant(std::forward<Arguments>(arguments))...};
        return invoke(name, flags, values);
    }
    [[nodiscard]] DISPID memberOf(const wchar_t* name) const;

    struct Member {
        std::wstring name;
        DISPID id;
    };
    ComPtr<IDispatch> object_;
    mutable std::vector<Member> members_; ///< those used so far; few, so they are searched one by one
};

/// The system's text for a code, without its line break; the code in hexadecimal if the system has no text.
[[nodiscard]] std::string systemText(HRESULT code);

} // namespace z7::adapters::automation
