#pragma once

#include "adapters/ado/automation/system.h"
#include "com/Invocation.h"
#include "com/ModuleUse.h"

#include <atomic>
#include <cstddef>
#include <string_view>
#include <vector>

namespace z7::com {

/// An object of the library as a host holds it: one identity and one reference count for all its interfaces. It keeps
/// the DLL in memory and deletes itself with its last reference. Its interfaces are faces (Face.h), the first of which
/// is the default one.
///
/// Script languages see the default interface only. The members of the others are therefore also found there, under the
/// name of the contract, an underscore and their own name, such as IGlVoucherProvider_SaveCashFlowCol.
class Object : public ISupportErrorInfo {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) noexcept final;
    ULONG STDMETHODCALLTYPE AddRef() noexcept final;
    ULONG STDMETHODCALLTYPE Release() noexcept final;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) noexcept final;

    /// Adds a reference unless the object is already being deleted; returns whether it did.
    [[nodiscard]] bool addRefIfAlive() noexcept;

    /// IDispatch::GetIDsOfNames of one of the faces.
    HRESULT idsOfNames(const IDispatch& face, LPOLESTR* names, UINT count, DISPID* ids) noexcept;
    /// IDispatch::Invoke of one of the faces.
    HRESULT invoke(Invocation call) noexcept;
    /// Adds an interface, which belongs to the object; the first one is the default interface. contract is its name in
    /// long member names, such as L"IGlVoucherProvider".
    void addFace(REFIID id, IDispatch& face, std::wstring_view contract);
    /// The object behind an interface pointer of this library, which the pointer keeps alive; null for a null pointer
    /// and for any other object, such as one that belongs to another thread.
    [[nodiscard]] static Object* of(IUnknown* pointer) noexcept;

protected:
    /// An object without references: whoever creates it takes the first one.
    Object() noexcept = default;
    virtual ~Object() = default;

private:
    struct Entry {
        IID id;
        IDispatch* face;
        std::wstring_view contract;
    };
    [[nodiscard]] const Entry* find(const IDispatch& face) const noexcept;

    ModuleUse use_;
    std::atomic<ULONG> references_ = 0;
    std::vector<Entry> faces_;
};

/// The object of type T behind an interface pointer; null as for Object::of, and for an object of another type.
template <class T> [[nodiscard]] T* objectOf(IUnknown* pointer) noexcept {
    return dynamic_cast<T*>(Object::of(pointer));
}

} // namespace z7::com
