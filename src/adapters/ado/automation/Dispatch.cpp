#include "adapters/ado/automation/Dispatch.h"

#include "adapters/ado/automation/AutomationReason.h"
#include "adapters/ado/automation/Bstr.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace z7::adapters::automation {

namespace {

namespace errors = cashflow::errors;
using cashflow::Error;
using cashflow::Explanation;
using cashflow::Reason;

constexpr const char* ownSource = "Z7CashFlow";

/// What an object says about its failure. The texts are freed with it.
struct Exception {
    EXCEPINFO info{};

    Exception() noexcept = default;
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;
    ~Exception() {
        SysFreeString(info.bstrSource);
        SysFreeString(info.bstrDescription);
        SysFreeString(info.bstrHelpFile);
    }
};

/// 0 for a code that has no number of its own.
int numberOfCode(HRESULT code) {
    constexpr HRESULT controlFacility = static_cast<HRESULT>(0x800A0000);
    if ((code & static_cast<HRESULT>(0xFFFF0000)) == controlFacility) {
        return code & 0xFFFF;
    }
    switch (code) {
    case DISP_E_TYPEMISMATCH:
        return errors::typeMismatch;
    case DISP_E_OVERFLOW:
        return errors::overflow;
    case E_OUTOFMEMORY:
        return errors::outOfMemory;
    default:
        return code;
    }
}

[[noreturn]] void raiseCode(HRESULT code, std::wstring_view name) {
    if (code == DISP_E_UNKNOWNNAME || code == DISP_E_MEMBERNOTFOUND) {
        cashflow::raisePlatformError(AutomationReason::memberMissing, {utf8(name)});
    }
    throw Error(numberOfCode(code), ownSource,
                Explanation{AutomationReason::callFailed, {utf8(name), systemText(code)}});
}

[[noreturn]] void raiseException(Exception& exception, std::wstring_view name) {
    EXCEPINFO& info = exception.info;
    if (info.pfnDeferredFillIn != nullptr) {
        info.pfnDeferredFillIn(&info);
    }
    const HRESULT code = FAILED(info.scode) ? info.scode : DISP_E_EXCEPTION;
    const int number = info.wCode != 0 ? info.wCode : numberOfCode(code);
    std::string source = utf8OfBstr(info.bstrSource);
    if (source.empty()) {
        source = ownSource;
    }
    std::string description = utf8OfBstr(info.bstrDescription);
    if (description.empty()) {
        throw Error(number, std::move(source),
                    Explanation{AutomationReason::callFailed, {utf8(name), systemText(code)}});
    }
    throw Error(number, std::move(source), Explanation{Reason::verbatim, {std::move(description)}});
}

} // namespace

std::string systemText(HRESULT code) {
    constexpr DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    wchar_t* text = nullptr;
    const DWORD length =
        FormatMessageW(flags, nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring_view found(text == nullptr ? L"" : text, length);
    while (!found.empty() && (found.back() == L'\r' || found.back() == L'\n' || found.back() == L' ')) {
        found.remove_suffix(1);
    }
    std::string result = utf8(found);
    LocalFree(text);
    if (result.empty()) {
        std::array<char, 16> digits{};
        std::snprintf(digits.data(), digits.size(), "0x%08lX", static_cast<unsigned long>(code));
        result = digits.data();
    }
    return result;
}

Dispatch Dispatch::create(const wchar_t* programId) {
    CLSID classId{};
    ComPtr<IDispatch> object;
    HRESULT result = CLSIDFromProgID(programId, &classId);
    if (SUCCEEDED(result)) {
        result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                  object.putVoid());
    }
    if (FAILED(result)) {
        throw Error(numberOfCode(result), ownSource,
                    Explanation{AutomationReason::classNotCreated, {utf8(programId), systemText(result)}});
    }
    return Dispatch(std::move(object));
}

Dispatch Dispatch::ofValue(const VARIANT& value, std::wstring_view name) {
    const VARIANT* held = &value;
    if (held->vt == (VT_BYREF | VT_VARIANT) && held->pvarVal != nullptr) {
        held = held->pvarVal;
    }
    IUnknown* object = nullptr;
    switch (held->vt) {
    case VT_EMPTY:
    case VT_NULL:
        break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        object = held->punkVal;
        break;
    case VT_BYREF | VT_DISPATCH:
    case VT_BYREF | VT_UNKNOWN:
        object = held->ppunkVal == nullptr ? nullptr : *held->ppunkVal;
        break;
    default:
        cashflow::raisePlatformError(AutomationReason::notAnObject, {std::to_string(held->vt)});
    }
    if (object == nullptr) {
        cashflow::raisePlatformError(AutomationReason::objectMissing, {utf8(name)});
    }
    Dispatch result(ComPtr<IUnknown>(object).as<IDispatch>());
    if (!result) {
        cashflow::raisePlatformError(AutomationReason::notAnObject, {std::to_string(held->vt)});
    }
    return result;
}

DISPID Dispatch::memberOf(const wchar_t* name) const {
    const auto known =
        std::find_if(members_.begin(), members_.end(), [name](const Member& member) { return member.name == name; });
    if (known != members_.end()) {
        return known->id;
    }
    auto* unchanged = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = object_->GetIDsOfNames(IID_NULL, &unchanged, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result)) {
        raiseCode(result, name);
    }
    members_.push_back({name, id});
    return id;
}

OwnedVariant Dispatch::invoke(const wchar_t* name, WORD flags, std::span<const OwnedVariant> arguments) const {
    if (!object_) {
        cashflow::raisePlatformError(AutomationReason::objectMissing, {utf8(name)});
    }
    const DISPID member = memberOf(name);
    std::vector<VARIANT> reversed; // borrowed from the arguments
    reversed.reserve(arguments.size());
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed),
                   [](const OwnedVariant& argument) { return argument.get(); });
    DISPID newValue = DISPID_PROPERTYPUT;
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parameters{reversed.data(), isPut ? &newValue : nullptr, static_cast<UINT>(reversed.size()),
                          isPut ? 1U : 0U};
    OwnedVariant result;
    Exception exception;
    UINT wrongArgument = 0;
    const HRESULT code = object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                         isPut ? nullptr : result.put(), &exception.info, &wrongArgument);
    if (code == DISP_E_EXCEPTION) {
        raiseException(exception, name);
    }
    if (FAILED(code)) {
        raiseCode(code, name);
    }
    return result;
}

} // namespace z7::adapters::automation
