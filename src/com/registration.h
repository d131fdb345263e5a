#pragma once

#include "adapters/ado/automation/system.h"

#include <string>

/// \file
/// What the system has to know so that hosts find the DLL: its classes by identifier and by name, its type library, and
/// the interfaces that the type library describes, which are used across apartments.
namespace z7::com {

/// Registers a DLL below HKEY_LOCAL_MACHINE for all users or, where that is closed, below HKEY_CURRENT_USER for this
/// one. What is registered already is replaced, also what this user had for itself. On failure the result is the
/// system's code.
[[nodiscard]] HRESULT registerLibrary(const std::wstring& path) noexcept;
/// Removes everything that registerLibrary() has written, for all users and for this one. What the DLL of the other
/// word size needs as well stays while that is registered: names of classes, the type library. Nothing to remove is a
/// success.
[[nodiscard]] HRESULT unregisterLibrary() noexcept;

/// The two for one place in the registry: a key that has, or gets, the key Software\Classes.
[[nodiscard]] LSTATUS registerBelow(HKEY root, const std::wstring& path);
/// See registerBelow().
[[nodiscard]] LSTATUS unregisterBelow(HKEY root);

} // namespace z7::com
