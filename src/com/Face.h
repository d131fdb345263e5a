#pragma once

#include "com/MemberTable.h"
#include "com/Object.h"
#include "com/arguments.h"
#include "com/guarded.h"

namespace z7::com {

/// One interface of an object: references and interfaces are those of the object, calls by name are answered from the
/// type library. The class that derives from it defines the members of the interface; each runs its body in run().
template <class Interface> class Face : public Interface {
public:
    /// An interface of an object; contract is its name in long member names.
    explicit Face(Object& object, std::wstring_view contract = {}) : object_(object) {
        object.addFace(__uuidof(Interface), *this, contract);
    }
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) noexcept final {
        return object_.QueryInterface(id, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept final { return object_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() noexcept final { return object_.Release(); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept final {
        if (count == nullptr) {
            return E_POINTER;
        }
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** type) noexcept final {
        if (type == nullptr) {
            return E_POINTER;
        }
        *type = nullptr;
        return index != 0 ? DISP_E_BADINDEX : run([&] { *type = typeInfoOf(__uuidof(Interface)).detach(); });
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                            DISPID* ids) noexcept final {
        return object_.idsOfNames(*this, names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) noexcept final {
        return object_.invoke({this, __uuidof(Interface), member, flags, arguments, result, exception, wrongArgument});
    }

protected:
    ~Face() = default;

    /// Runs the body of a member and reports what it raises; see guarded().
    template <class Action> static HRESULT run(Action&& action) noexcept {
        return guarded(__uuidof(Interface), action);
    }
    /// The same for a member with an out argument: the body returns the value, which store() puts there. Nothing is
    /// stored if it raises an error. A null pointer is refused with E_POINTER.
    template <class Out, class Action> static HRESULT answer(Out* out, Action&& action) noexcept {
        return out == nullptr ? E_POINTER : run([&] { store(out, action()); });
    }

private:
    Object& object_;
};

} // namespace z7::com
