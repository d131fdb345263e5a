#pragma once

#include "adapters/ado/automation/system.h"

#include <type_traits>

namespace z7::com {

/// Reports the exception that is being handled to the host: sets the thread's IErrorInfo to source and description and
/// returns the result of the method. An Error with a number from 1 to 65535 becomes 0x800A0000 plus the number, any
/// other number that is a failure code stays as it is, and the rest becomes E_FAIL. Exhausted memory is E_OUTOFMEMORY.
/// face is the interface whose method failed. Only to be called inside a catch block.
[[nodiscard]] HRESULT reportException(REFIID face) noexcept;

/// The boundary between hosts and the library: runs the body of a method and reports what it raises. Nothing escapes.
/// The result is that of the body if it has one, otherwise S_OK.
template <class Action> HRESULT guarded(REFIID face, Action&& action) noexcept {
    try {
        if constexpr (std::is_void_v<decltype(action())>) {
            action();
            return S_OK;
        } else {
            return action();
        }
    } catch (...) {
        return reportException(face);
    }
}

/// Raises a number, source "Z7CashFlow" and a text that says what to do.
[[noreturn]] void raiseHostError(int number, const char* description);

} // namespace z7::com
