#pragma once

#include "adapters/ado/automation/system.h"

namespace z7::com {

/// A call of a member by its number, as IDispatch::Invoke gets it, on an interface of one of the library's objects.
struct Invocation {
    IDispatch* face;       ///< the interface
    IID interfaceId;       ///< its identifier
    DISPID member;         ///< the member's number in that interface
    WORD flags;            ///< whether it is called, read or set
    DISPPARAMS* arguments; ///< the caller's
    VARIANT* result;       ///< takes the result; may be null, as the following
    EXCEPINFO* exception;  ///< takes what the member reports of its failure
    UINT* wrongArgument;   ///< takes the position of an argument that cannot be used, as the caller counts them

    /// Calls the member. Arguments are converted to the types of the parameters by the rules of the library. A
    /// parameter by reference takes a variable of any type, and a variable that holds any type, as script languages
    /// pass them; what the member stores is stored in the variable, even if the member fails. Optional arguments may be
    /// missing, at the end or in between, and arguments may be named.
    [[nodiscard]] HRESULT run() const noexcept;
};

} // namespace z7::com
