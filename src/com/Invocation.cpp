#include "com/Invocation.h"

#include "com/Argument.h"
#include "com/guarded.h"

#include <vector>

namespace z7::com {

namespace {

using adapters::automation::ComPtr;

// Moves the failure that a method has reported to the caller's place for it.
HRESULT reported(HRESULT code, EXCEPINFO* exception) noexcept {
    ComPtr<IErrorInfo> info;
    if (exception == nullptr || GetErrorInfo(0, info.put()) != S_OK) {
        return code;
    }
    *exception = {};
    exception->scode = code;
    info->GetSource(&exception->bstrSource);
    info->GetDescription(&exception->bstrDescription);
    return DISP_E_EXCEPTION;
}

// The caller's argument for a parameter; null if it is left out. Callers list arguments backwards, the named ones
// first.
const VARIANT* givenFor(const DISPPARAMS& arguments, const Member& member, std::size_t parameter) noexcept {
    const bool isSetter = (member.kind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
    for (UINT i = 0; i < arguments.cNamedArgs; ++i) {
        const DISPID name = arguments.rgdispidNamedArgs[i];
        const bool isNewValue = name == DISPID_PROPERTYPUT && isSetter && parameter + 1 == member.parameters.size();
        if (isNewValue || (name >= 0 && static_cast<std::size_t>(name) == parameter)) {
            return &arguments.rgvarg[i];
        }
    }
    const std::size_t unnamed = arguments.cArgs - arguments.cNamedArgs;
    return parameter < unnamed ? &arguments.rgvarg[arguments.cArgs - 1 - parameter] : nullptr;
}

UINT positionOf(const DISPPARAMS& arguments, const VARIANT* given) noexcept {
    return given == nullptr ? 0 : static_cast<UINT>(given - arguments.rgvarg);
}

HRESULT callMethod(IDispatch& face, const Member& member, std::vector<Argument>& arguments) {
    std::vector<VARTYPE> types;
    std::vector<VARIANTARG*> values;
    for (Argument& argument : arguments) {
        types.push_back(argument.passedType());
        values.push_back(argument.passed());
    }
    VARIANT code;
    VariantInit(&code);
    SetErrorInfo(0, nullptr);
    const HRESULT called = DispCallFunc(&face, member.offset, CC_STDCALL, VT_ERROR, static_cast<UINT>(values.size()),
                                        types.data(), values.data(), &code);
    return FAILED(called) ? called : code.scode;
}

HRESULT callFound(const Member& member, const Invocation& call) {
    const DISPPARAMS& given = *call.arguments;
    if (given.cArgs > member.givenCount() || given.cNamedArgs > given.cArgs) {
        return DISP_E_BADPARAMCOUNT;
    }
    std::vector<Argument> arguments;
    arguments.reserve(member.parameters.size());
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        const Parameter& parameter = member.parameters[i];
        const VARIANT* value = parameter.isResult ? nullptr : givenFor(given, member, i);
        if (call.wrongArgument != nullptr) {
            *call.wrongArgument = positionOf(given, value);
        }
        if (!arguments.emplace_back(parameter).take(value)) {
            return DISP_E_PARAMNOTOPTIONAL;
        }
    }
    const HRESULT code = callMethod(*call.face, member, arguments);
    const HRESULT result = FAILED(code) ? reported(code, call.exception) : code;
    // What the method did is done: a variable that cannot take its value keeps no other from taking its own, and hides
    // no failure of the method.
    HRESULT stored = S_OK;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!member.parameters[i].isResult) {
            const HRESULT taken = guarded(call.interfaceId, [&] { arguments[i].storeBack(); });
            stored = FAILED(stored) ? stored : taken;
        } else if (SUCCEEDED(code) && call.result != nullptr) {
            arguments[i].moveTo(call.result);
        }
    }
    return SUCCEEDED(code) && FAILED(stored) ? reported(stored, call.exception) : result;
}

} // namespace

HRESULT Invocation::run() const noexcept {
    if (arguments == nullptr) {
        return E_INVALIDARG;
    }
    if (result != nullptr) {
        VariantInit(result);
    }
    HRESULT code = S_OK;
    const HRESULT failure = guarded(interfaceId, [&] {
        const Member* found = MemberTable::of(interfaceId).find(member, flags);
        code = found == nullptr ? DISP_E_MEMBERNOTFOUND : callFound(*found, *this);
    });
    return FAILED(failure) ? reported(failure, exception) : code;
}

} // namespace z7::com
