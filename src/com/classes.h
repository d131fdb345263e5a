#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/system.h"

#include <span>

namespace z7::com {

/// A class that hosts can create.
struct CreatableClass {
    const CLSID& id;
    const wchar_t* name;                                ///< as in the type library: L"VoucherProvider"
    adapters::automation::ComPtr<IUnknown> (*create)(); ///< makes a new object
};

/// All of them, in the order of the type library.
[[nodiscard]] std::span<const CreatableClass> creatableClasses() noexcept;
/// One of them; null for an identifier that is not among them.
[[nodiscard]] const CreatableClass* findClass(REFCLSID id) noexcept;

} // namespace z7::com
