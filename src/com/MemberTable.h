#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/system.h"
#include "z7cashflow/support/Variant.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace z7::com {

/// A parameter of a member, as the type library describes it.
struct Parameter {
    std::wstring name;
    VARTYPE type = VT_EMPTY;   ///< of the value; VT_DISPATCH for every interface but IUnknown
    IID interfaceId{};         ///< of an object
    bool isReference = false;  ///< the method gets the address of the value
    bool isResult = false;     ///< the address takes the result of the member
    bool isOptional = false;   ///< it may be left out
    cashflow::Variant initial; ///< what takes its place then; null for the zero of its type
};

/// A method, or one way to use a property.
struct Member {
    DISPID id = DISPID_UNKNOWN;
    INVOKEKIND kind = INVOKE_FUNC;
    std::wstring name;
    ULONG_PTR offset = 0; ///< of its slot in the table of functions, in bytes
    std::vector<Parameter> parameters;

    /// The number of parameters that a caller can give.
    [[nodiscard]] std::size_t givenCount() const noexcept;
};

/// The members of one interface, read from the DLL's own type library when the first of them is needed. Everything
/// about calls by name follows from it, so the interface definition is the only place that knows members.
class MemberTable {
public:
    /// The table of one of the library's interfaces. Error with the system's code if the type library cannot be read.
    [[nodiscard]] static const MemberTable& of(REFIID interfaceId);

    /// The members of a described interface.
    explicit MemberTable(ITypeInfo& type);

    /// Finds the numbers of a member (the first name) and of its parameters (the others), in any letter case. Returns
    /// whether all were found; ids then has as many numbers as names.
    [[nodiscard]] bool findNames(std::span<const LPOLESTR> names, DISPID* ids) const noexcept;
    /// The member with a number that can be called with the flags of IDispatch::Invoke; null if there is none. A
    /// property that can only be set is found as a method, too, since some hosts call it like one.
    [[nodiscard]] const Member* find(DISPID id, WORD flags) const noexcept;

private:
    std::vector<Member> members_;
};

/// The description of one of the library's interfaces.
[[nodiscard]] adapters::automation::ComPtr<ITypeInfo> typeInfoOf(REFIID interfaceId);
/// Whether two names differ in nothing but letter case.
[[nodiscard]] bool sameName(std::wstring_view a, std::wstring_view b) noexcept;

} // namespace z7::com
