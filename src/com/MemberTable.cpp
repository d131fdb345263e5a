#include "com/MemberTable.h"

#include "adapters/ado/automation/Dispatch.h"
#include "adapters/ado/automation/OwnedVariant.h"
#include "com/typeLibrary.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <mutex>

namespace z7::com {

namespace {

using adapters::automation::ComPtr;

void require(HRESULT result) {
    if (FAILED(result)) {
        throw cashflow::Error(result, "Z7CashFlow",
                              "The type library of Z7CashFlow.dll cannot be read: " +
                                  adapters::automation::systemText(result));
    }
}

// A function's description, which belongs to the type's.
class Description {
public:
    Description(ITypeInfo& type, UINT index) : type_(type) { require(type.GetFuncDesc(index, &function_)); }
    Description(const Description&) = delete;
    Description& operator=(const Description&) = delete;
    ~Description() { type_.ReleaseFuncDesc(function_); }
    const FUNCDESC& operator*() const noexcept { return *function_; }

private:
    ITypeInfo& type_;
    FUNCDESC* function_ = nullptr;
};

struct Attributes {
    IID id;
    UINT functions;
};

Attributes attributesOf(ITypeInfo& type) {
    TYPEATTR* attributes = nullptr;
    require(type.GetTypeAttr(&attributes));
    const Attributes result{attributes->guid, attributes->cFuncs};
    type.ReleaseTypeAttr(attributes);
    return result;
}

void readType(ITypeInfo& owner, const TYPEDESC& described, Parameter& parameter) {
    const TYPEDESC* type = &described;
    if (type->vt == VT_PTR && type->lptdesc->vt != VT_USERDEFINED) {
        parameter.isReference = true;
        type = type->lptdesc;
    }
    if (type->vt == VT_PTR && type->lptdesc->vt == VT_USERDEFINED) {
        ComPtr<ITypeInfo> named;
        require(owner.GetRefTypeInfo(type->lptdesc->hreftype, named.put()));
        parameter.type = VT_DISPATCH;
        parameter.interfaceId = attributesOf(*named).id;
        return;
    }
    parameter.type = type->vt;
    parameter.interfaceId = type->vt == VT_UNKNOWN ? IID_IUnknown : IID_IDispatch;
}

Member readMember(ITypeInfo& type, const FUNCDESC& function) {
    constexpr UINT most = 32;
    std::array<BSTR, most> names{};
    UINT count = 0;
    require(type.GetNames(function.memid, names.data(), most, &count));
    Member member;
    member.id = function.memid;
    member.kind = function.invkind;
    member.offset = static_cast<ULONG_PTR>(function.oVft);
    member.parameters.resize(static_cast<std::size_t>(function.cParams));
    for (UINT i = 0; i < count; ++i) {
        std::wstring name(names.at(i), SysStringLen(names.at(i)));
        SysFreeString(names.at(i));
        if (i == 0) {
            member.name = std::move(name);
        } else if (i <= member.parameters.size()) {
            member.parameters[i - 1].name = std::move(name);
        }
    }
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        const ELEMDESC& described = function.lprgelemdescParam[i];
        Parameter& parameter = member.parameters[i];
        readType(type, described.tdesc, parameter);
        const USHORT flags = described.paramdesc.wParamFlags;
        parameter.isResult = (flags & PARAMFLAG_FRETVAL) != 0;
        parameter.isOptional = (flags & PARAMFLAG_FOPT) != 0;
        if ((flags & PARAMFLAG_FHASDEFAULT) != 0) {
            parameter.initial = adapters::automation::fromAutomation(described.paramdesc.pparamdescex->varDefaultValue);
        }
    }
    return member;
}

struct ById {
    bool operator()(const IID& a, const IID& b) const noexcept { return std::memcmp(&a, &b, sizeof(IID)) < 0; }
};

} // namespace

std::size_t Member::givenCount() const noexcept {
    return static_cast<std::size_t>(
        std::count_if(parameters.begin(), parameters.end(), [](const Parameter& given) { return !given.isResult; }));
}

const MemberTable& MemberTable::of(REFIID interfaceId) {
    static std::mutex mutex;
    static std::map<IID, MemberTable, ById> tables; // plain data: nothing in it belongs to a thread
    const std::lock_guard lock(mutex);
    auto found = tables.find(interfaceId);
    if (found == tables.end()) {
        found = tables.emplace(interfaceId, MemberTable(*typeInfoOf(interfaceId))).first;
    }
    return found->second;
}

MemberTable::MemberTable(ITypeInfo& type) {
    const UINT count = attributesOf(type).functions;
    for (UINT i = 0; i < count; ++i) {
        members_.push_back(readMember(type, *Description(type, i)));
    }
}

bool MemberTable::findNames(std::span<const LPOLESTR> names, DISPID* ids) const noexcept {
    const auto member = std::find_if(members_.begin(), members_.end(),
                                     [&names](const Member& known) { return sameName(known.name, names.front()); });
    if (member == members_.end()) {
        return false;
    }
    ids[0] = member->id;
    bool all = true;
    for (std::size_t i = 1; i < names.size(); ++i) {
        const auto& parameters = member->parameters;
        const auto parameter = std::find_if(parameters.begin(), parameters.end(),
                                            [&](const Parameter& known) { return sameName(known.name, names[i]); });
        ids[i] = parameter == parameters.end() ? DISPID_UNKNOWN : static_cast<DISPID>(parameter - parameters.begin());
        all = all && parameter != parameters.end();
    }
    return all;
}

const Member* MemberTable::find(DISPID id, WORD flags) const noexcept {
    constexpr WORD puts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    constexpr WORD calls = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    const Member* setter = nullptr;
    for (const Member& member : members_) {
        if (member.id != id) {
            continue;
        }
        const bool isSetter = (member.kind & puts) != 0;
        if ((flags & (isSetter ? puts : calls)) != 0) {
            return &member;
        }
        setter = isSetter ? &member : setter;
    }
    return (flags & DISPATCH_METHOD) != 0 ? setter : nullptr;
}

ComPtr<ITypeInfo> typeInfoOf(REFIID interfaceId) {
    ComPtr<ITypeInfo> type;
    require(typeLibrary()->GetTypeInfoOfGuid(interfaceId, type.put()));
    TYPEATTR* attributes = nullptr;
    require(type->GetTypeAttr(&attributes));
    const TYPEKIND kind = attributes->typekind;
    type->ReleaseTypeAttr(attributes);
    if (kind != TKIND_DISPATCH) {
        return type;
    }
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> dual; // the side of the interface that has its table of functions
    require(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    require(type->GetRefTypeInfo(reference, dual.put()));
    return dual;
}

bool sameName(std::wstring_view a, std::wstring_view b) noexcept {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), TRUE) ==
           CSTR_EQUAL;
}

} // namespace z7::com
