#pragma once

#include "com/MemberTable.h"

namespace z7::com {

/// One argument of a call by number: what the caller gave, converted to the type of the parameter, and back.
class Argument {
public:
    /// The argument for a parameter, which must outlive it. It is not given yet.
    explicit Argument(const Parameter& parameter) noexcept;
    Argument(const Argument&) = delete;
    Argument(Argument&& other) noexcept;
    Argument& operator=(const Argument&) = delete;
    Argument& operator=(Argument&&) = delete;
    ~Argument();

    /// Takes what the caller gave, which must outlive this; a null pointer if it is left out. Returns false if it is
    /// left out and must not be. Error 13, 6 or 94 if it cannot be converted.
    [[nodiscard]] bool take(const VARIANT* given);
    /// The type under which it is passed to the method.
    [[nodiscard]] VARTYPE passedType() const noexcept;
    /// What is passed to the method; belongs to this object, which must not be moved any more.
    [[nodiscard]] VARIANTARG* passed() noexcept;

    /// After the call: stores the value in the caller's variable if it was given by reference. Error 13 if it does not
    /// fit the variable's type.
    void storeBack();
    /// After the call: passes the value to the caller, who frees it.
    void moveTo(VARIANT* result) noexcept;

private:
    /// Raises error 13 before the call if the variable that held refers to could not take what may come back: a text or
    /// an object in a variable of another type. A number fits a variable of any type but an object.
    void requireRoom(const VARIANT& held) const;
    void convert(const VARIANT& held);
    void convertObject(const VARIANT& held);

    const Parameter& parameter_;
    const VARIANT* given_ = nullptr;
    VARIANT value_;
    VARIANTARG passed_;
};

} // namespace z7::com
