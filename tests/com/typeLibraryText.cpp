#include "com/typeLibraryText.h"

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/automation/ComPtr.h"

#include <array>
#include <stdexcept>
#include <vector>

namespace z7::test {

namespace {

using adapters::automation::Bstr;
using adapters::automation::ComPtr;

void require(HRESULT result) {
    if (FAILED(result)) {
        throw std::runtime_error("The type library cannot be read");
    }
}

std::string nameOf(ITypeInfo& type, MEMBERID member = MEMBERID_NIL) {
    BSTR name = nullptr;
    require(type.GetDocumentation(member, &name, nullptr, nullptr, nullptr));
    std::string text = adapters::automation::utf8(name);
    SysFreeString(name);
    return text;
}

std::string guidText(const GUID& guid) {
    std::array<wchar_t, 39> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return adapters::automation::utf8(text.data());
}

std::string typeText(ITypeInfo& owner, const TYPEDESC& type) {
    switch (type.vt) {
    case VT_PTR:
        return typeText(owner, *type.lptdesc) + "*";
    case VT_USERDEFINED: {
        ComPtr<ITypeInfo> named;
        require(owner.GetRefTypeInfo(type.hreftype, named.put()));
        return nameOf(*named.get());
    }
    case VT_UI1:
        return "byte";
    case VT_I2:
        return "short";
    case VT_I4:
        return "long";
    case VT_R8:
        return "double";
    case VT_DATE:
        return "date";
    case VT_BOOL:
        return "bool";
    case VT_BSTR:
        return "text";
    case VT_VARIANT:
        return "variant";
    case VT_DISPATCH:
        return "object";
    case VT_UNKNOWN:
        return "unknown";
    case VT_VOID:
        return "void";
    case VT_HRESULT:
        return "result";
    default:
        return "type " + std::to_string(type.vt);
    }
}

std::string defaultText(const VARIANT& value) {
    switch (value.vt) {
    case VT_BOOL:
        return value.boolVal == VARIANT_TRUE ? "true" : value.boolVal == VARIANT_FALSE ? "false" : "not a boolean";
    case VT_I4:
        return "long " + std::to_string(value.lVal);
    default:
        return "type " + std::to_string(value.vt);
    }
}

std::string parameterText(ITypeInfo& owner, const ELEMDESC& parameter, const std::string& name) {
    const USHORT flags = parameter.paramdesc.wParamFlags;
    std::string text = typeText(owner, parameter.tdesc) + " " + name;
    text += (flags & PARAMFLAG_FIN) != 0 ? " in" : "";
    text += (flags & PARAMFLAG_FOUT) != 0 ? " out" : "";
    text += (flags & PARAMFLAG_FRETVAL) != 0 ? " result" : "";
    text += (flags & PARAMFLAG_FOPT) != 0 ? " optional" : "";
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0) {
        text += " = " + defaultText(parameter.paramdesc.pparamdescex->varDefaultValue);
    }
    return text;
}

std::string memberText(ITypeInfo& type, const FUNCDESC& member) {
    constexpr UINT most = 32;
    std::array<BSTR, most> names{};
    UINT count = 0;
    require(type.GetNames(member.memid, names.data(), most, &count));
    std::string text = "  " + std::to_string(member.memid);
    text += member.invkind == INVOKE_PROPERTYGET      ? " get "
            : member.invkind == INVOKE_PROPERTYPUT    ? " put "
            : member.invkind == INVOKE_PROPERTYPUTREF ? " putref "
                                                      : " call ";
    text += adapters::automation::utf8(names[0]) + "(";
    for (SHORT i = 0; i < member.cParams; ++i) {
        const UINT place = static_cast<UINT>(i) + 1;
        const std::string name = place < count ? adapters::automation::utf8(names.at(place)) : "value";
        text += (i > 0 ? ", " : "") + parameterText(type, member.lprgelemdescParam[i], name);
    }
    for (UINT i = 0; i < count; ++i) {
        SysFreeString(names.at(i));
    }
    return text + ") slot " + std::to_string(member.oVft / static_cast<int>(sizeof(void*))) + "\n";
}

std::string interfaceText(ITypeInfo& type) {
    TYPEATTR* attributes = nullptr;
    require(type.GetTypeAttr(&attributes));
    std::string text = "interface " + nameOf(type) + " " + guidText(attributes->guid) + " flags " +
                       std::to_string(attributes->wTypeFlags) + "\n";
    for (WORD i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* member = nullptr;
        require(type.GetFuncDesc(i, &member));
        text += memberText(type, *member);
        type.ReleaseFuncDesc(member);
    }
    type.ReleaseTypeAttr(attributes);
    return text;
}

std::string classText(ITypeInfo& type) {
    TYPEATTR* attributes = nullptr;
    require(type.GetTypeAttr(&attributes));
    std::string text = "class " + nameOf(type) + " " + guidText(attributes->guid);
    text += (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0 ? " creatable\n" : "\n";
    for (WORD i = 0; i < attributes->cImplTypes; ++i) {
        HREFTYPE reference = 0;
        INT flags = 0;
        ComPtr<ITypeInfo> implemented;
        require(type.GetRefTypeOfImplType(i, &reference));
        require(type.GetImplTypeFlags(i, &flags));
        require(type.GetRefTypeInfo(reference, implemented.put()));
        text += "  " + nameOf(*implemented.get()) + ((flags & IMPLTYPEFLAG_FDEFAULT) != 0 ? " default\n" : "\n");
    }
    type.ReleaseTypeAttr(attributes);
    return text;
}

} // namespace

std::string typeLibraryText(ITypeLib& library) {
    std::string text;
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> type;
        TYPEKIND kind = TKIND_MAX;
        require(library.GetTypeInfoType(i, &kind));
        require(library.GetTypeInfo(i, type.put()));
        if (kind == TKIND_COCLASS) {
            text += classText(*type.get());
        } else if (kind == TKIND_DISPATCH) {
            ComPtr<ITypeInfo> dual;
            HREFTYPE reference = 0;
            require(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
            require(type->GetRefTypeInfo(reference, dual.put()));
            text += interfaceText(*dual.get());
        } else {
            text += "other " + nameOf(*type.get()) + "\n";
        }
    }
    return text;
}

} // namespace z7::test
