#include "standins/AutomationObject.h"

#include "adapters/ado/automation/Bstr.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cwchar>

namespace z7::cashflow::test {

namespace {

using adapters::automation::Bstr;
using adapters::automation::fromAutomation;

/// Follows a reference to a variant.
const VARIANT* followed(const VARIANT* argument) {
    return argument->vt == (VT_BYREF | VT_VARIANT) ? argument->pvarVal : argument;
}

HRESULT codeOf(const Error& error) {
    return error.number() > 0 && error.number() <= 0xFFFF
               ? static_cast<HRESULT>(0x800A0000 | static_cast<unsigned>(error.number()))
               : error.number();
}

HRESULT report(const Failure& failure, EXCEPINFO* exception) {
    if (!failure.isException || exception == nullptr) {
        return failure.code;
    }
    *exception = EXCEPINFO{};
    exception->scode = failure.code;
    exception->bstrSource = failure.source.empty() ? nullptr : Bstr(std::string_view(failure.source)).detach();
    exception->bstrDescription =
        failure.description.empty() ? nullptr : Bstr(std::string_view(failure.description)).detach();
    return DISP_E_EXCEPTION;
}

} // namespace

void CallPlan::enter() {
    ++count_;
    if (failure_ && failure_->first == count_) {
        const Failure failure = failure_->second;
        failure_.reset();
        throw failure;
    }
}

Call::Call(WORD flags, const DISPPARAMS& parameters) : flags_(flags) {
    for (UINT i = parameters.cArgs; i-- > 0;) {
        arguments_.push_back(&parameters.rgvarg[i]);
    }
}

bool Call::has(std::size_t position) const {
    return position < arguments_.size() &&
           !(arguments_[position]->vt == VT_ERROR && arguments_[position]->scode == DISP_E_PARAMNOTFOUND);
}

Variant Call::value(std::size_t position) const {
    return has(position) ? fromAutomation(*arguments_[position]) : Variant();
}

std::string Call::text(std::size_t position, const std::string& otherwise) const {
    return has(position) ? toTextOrEmpty(value(position)) : otherwise;
}

std::int32_t Call::number(std::size_t position, std::int32_t otherwise) const {
    return has(position) ? toInt32(value(position)) : otherwise;
}

IDispatch* Call::object(std::size_t position) const {
    if (!has(position)) {
        return nullptr;
    }
    const VARIANT* argument = followed(arguments_[position]);
    if (argument->vt == (VT_BYREF | VT_DISPATCH)) {
        return *argument->ppdispVal;
    }
    return argument->vt == VT_DISPATCH ? argument->pdispVal : nullptr;
}

std::vector<Variant> Call::elements(std::size_t position) const {
    const VARIANT* argument = has(position) ? followed(arguments_[position]) : nullptr;
    SAFEARRAY* array = nullptr;
    if (argument != nullptr && argument->vt == (VT_ARRAY | VT_VARIANT)) {
        array = argument->parray;
    } else if (argument != nullptr && argument->vt == (VT_BYREF | VT_ARRAY | VT_VARIANT)) {
        array = *argument->pparray;
    }
    if (array == nullptr || SafeArrayGetDim(array) != 1) {
        throw Failure{DISP_E_TYPEMISMATCH, {}, {}, false};
    }
    std::vector<Variant> values;
    const auto* elements = static_cast<const VARIANT*>(array->pvData);
    for (ULONG i = 0; i < array->rgsabound[0].cElements; ++i) {
        values.push_back(fromAutomation(elements[i]));
    }
    return values;
}

void Call::store(std::size_t position, std::int32_t number) const {
    if (!has(position)) {
        return;
    }
    const VARIANT* argument = arguments_[position];
    if (argument->vt == (VT_BYREF | VT_VARIANT)) {
        VariantClear(argument->pvarVal);
        argument->pvarVal->vt = VT_I4;
        argument->pvarVal->lVal = number;
    } else if (argument->vt == (VT_BYREF | VT_I4)) {
        *argument->plVal = number;
    }
}

std::atomic<long> AutomationObject::live_{0};

AutomationObject::AutomationObject(std::shared_ptr<CallPlan> plan, const IID& kind)
    : plan_(std::move(plan)), kind_(kind) {
    ++live_;
}

AutomationObject::~AutomationObject() { --live_; }

HRESULT AutomationObject::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr) {
        return E_POINTER;
    }
    if (iid == IID_IUnknown || iid == IID_IDispatch) {
        *out = static_cast<IDispatch*>(this);
    } else if (iid == kind_) {
        *out = this;
    } else {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG AutomationObject::AddRef() { return ++references_; }

ULONG AutomationObject::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT AutomationObject::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    *out = nullptr;
    return E_NOTIMPL;
}

HRESULT AutomationObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    const auto found = std::find_if(members_.begin(), members_.end(),
                                    [&](const Member& member) { return _wcsicmp(member.name.c_str(), names[0]) == 0; });
    if (found == members_.end() || count != 1) {
        return DISP_E_UNKNOWNNAME;
    }
    ids[0] = static_cast<DISPID>(found - members_.begin()) + 1;
    return S_OK;
}

HRESULT AutomationObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                 EXCEPINFO* exception, UINT*) {
    const ComPtr<AutomationObject> alive(this); // a member may release the last other reference
    const Member* member = find(id);
    if (member == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    try {
        plan_->enter();
        OwnedVariant returned = run(*member, flags, *parameters);
        if (result != nullptr) {
            *result = returned.detach();
        }
        return S_OK;
    } catch (const Failure& failure) {
        return report(failure, exception);
    } catch (const Error& error) {
        return report({codeOf(error), error.source(), error.description(), true}, exception);
    }
}

OwnedVariant AutomationObject::run(const Member& member, WORD flags, const DISPPARAMS& parameters) const {
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const Handler& handler = isPut                                          ? member.put
                             : (flags & DISPATCH_METHOD) != 0 && member.run ? member.run
                             : (flags & DISPATCH_PROPERTYGET) != 0          ? member.get
                                                                            : Handler();
    if (!handler) {
        throw Failure{DISP_E_MEMBERNOTFOUND, {}, {}, false};
    }
    return handler(Call(flags, parameters));
}

void AutomationObject::method(const wchar_t* name, Handler run) { memberOf(name).run = std::move(run); }

void AutomationObject::property(const wchar_t* name, Handler get, Handler put) {
    Member& member = memberOf(name);
    member.get = std::move(get);
    member.put = std::move(put);
}

void AutomationObject::defaultMember(const wchar_t* name) {
    default_ = static_cast<DISPID>(&memberOf(name) - members_.data()) + 1;
}

AutomationObject* AutomationObject::ofKind(IDispatch* object, const IID& kind) {
    void* found = nullptr;
    if (object == nullptr || FAILED(object->QueryInterface(kind, &found))) {
        return nullptr;
    }
    auto* ours = static_cast<AutomationObject*>(found);
    ours->Release(); // the caller's pointer keeps it
    return ours;
}

AutomationObject::Member& AutomationObject::memberOf(const wchar_t* name) {
    const auto found =
        std::find_if(members_.begin(), members_.end(), [&](const Member& member) { return member.name == name; });
    return found != members_.end() ? *found : members_.emplace_back(Member{name, {}, {}, {}});
}

const AutomationObject::Member* AutomationObject::find(DISPID id) const {
    const DISPID meant = id == DISPID_VALUE ? default_ : id;
    return meant >= 1 && static_cast<std::size_t>(meant) <= members_.size()
               ? &members_[static_cast<std::size_t>(meant) - 1]
               : nullptr;
}

} // namespace z7::cashflow::test
