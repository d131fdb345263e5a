#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/system.h"

#include <string>

namespace z7::com {

/// The type library in the DLL itself. Error with the system's code if it cannot be read.
[[nodiscard]] adapters::automation::ComPtr<ITypeLib> typeLibrary();
/// The DLL in this process.
[[nodiscard]] HMODULE ownModule() noexcept;
/// The full path of the DLL. Error with the system's code if the system does not tell it.
[[nodiscard]] std::wstring ownPath();

} // namespace z7::com
