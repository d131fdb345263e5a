#include "com/Object.h"

#include "com/MemberTable.h"
#include "com/guarded.h"

#include <algorithm>

namespace z7::com {

namespace {

// Known to this library alone: answered with the address of the object itself, so that an argument is recognised.
constexpr IID ownObjectId = {0xf337c004, 0xd8fe, 0x43ad, {0x9e, 0x08, 0x2f, 0x1c, 0x76, 0x6f, 0x27, 0x7d}};

// Numbers of members with a long name: the position of their face in the upper half.
constexpr DISPID faceFactor = 0x10000;

} // namespace

HRESULT Object::QueryInterface(REFIID id, void** out) noexcept {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = nullptr;
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_ISupportErrorInfo)) {
        *out = static_cast<ISupportErrorInfo*>(this);
    } else if (IsEqualIID(id, ownObjectId)) {
        *out = this;
    } else if (IsEqualIID(id, IID_IDispatch)) {
        *out = faces_.front().face;
    } else {
        const auto found =
            std::find_if(faces_.begin(), faces_.end(), [&id](const Entry& face) { return IsEqualIID(face.id, id); });
        if (found == faces_.end()) {
            return E_NOINTERFACE;
        }
        *out = found->face;
    }
    AddRef();
    return S_OK;
}

ULONG Object::AddRef() noexcept { return ++references_; }

ULONG Object::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT Object::InterfaceSupportsErrorInfo(REFIID id) noexcept {
    const bool known =
        std::any_of(faces_.begin(), faces_.end(), [&id](const Entry& face) { return IsEqualIID(face.id, id); });
    return known || IsEqualIID(id, IID_IDispatch) ? S_OK : S_FALSE;
}

bool Object::addRefIfAlive() noexcept {
    ULONG seen = references_;
    while (seen != 0 && !references_.compare_exchange_weak(seen, seen + 1)) {
    }
    return seen != 0;
}

Object* Object::of(IUnknown* pointer) noexcept {
    void* found = nullptr;
    if (pointer == nullptr || FAILED(pointer->QueryInterface(ownObjectId, &found))) {
        return nullptr;
    }
    auto* object = static_cast<Object*>(found);
    object->Release(); // the pointer has a reference of its own
    return object;
}

void Object::addFace(REFIID id, IDispatch& face, std::wstring_view contract) {
    faces_.push_back({id, &face, contract});
}

const Object::Entry* Object::find(const IDispatch& face) const noexcept {
    return &*std::find_if(faces_.begin(), faces_.end(), [&face](const Entry& known) { return known.face == &face; });
}

HRESULT Object::idsOfNames(const IDispatch& face, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    return guarded(IID_IDispatch, [&]() -> HRESULT {
        if (names == nullptr || ids == nullptr || count == 0) {
            return E_INVALIDARG;
        }
        std::fill_n(ids, count, DISPID_UNKNOWN);
        const Entry* own = find(face);
        if (MemberTable::of(own->id).findNames({names, count}, ids)) {
            return S_OK;
        }
        const std::wstring_view name = names[0];
        for (std::size_t i = 1; own == faces_.data() && i < faces_.size(); ++i) {
            const std::wstring_view contract = faces_[i].contract;
            if (name.size() <= contract.size() + 1 || name[contract.size()] != L'_' ||
                !sameName(name.substr(0, contract.size()), contract)) {
                continue;
            }
            LPOLESTR whole = names[0];
            names[0] += contract.size() + 1;
            const bool found = MemberTable::of(faces_[i].id).findNames({names, count}, ids);
            names[0] = whole;
            if (found && ids[0] > 0) {
                ids[0] += static_cast<DISPID>(i) * faceFactor;
                return S_OK;
            }
        }
        return DISP_E_UNKNOWNNAME;
    });
}

HRESULT Object::invoke(Invocation call) noexcept {
    if (call.member >= faceFactor && call.face == faces_.front().face) {
        const auto place = static_cast<std::size_t>(call.member / faceFactor);
        if (place >= faces_.size()) {
            return DISP_E_MEMBERNOTFOUND;
        }
        call.face = faces_[place].face;
        call.interfaceId = faces_[place].id;
        call.member %= faceFactor;
    }
    return call.run();
}

} // namespace z7::com
