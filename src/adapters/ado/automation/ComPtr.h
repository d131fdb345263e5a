#pragma once

#include "adapters/ado/automation/system.h"

#include <cstddef>
#include <utility>

namespace z7::adapters::automation {

/// Owns one reference to a COM object through its interface T, or nothing. Use it on the thread (apartment) that the
/// pointer belongs to.
template <class T> class ComPtr {
public:
    /// Nothing.
    ComPtr() noexcept = default;
    /// Nothing.
    ComPtr(std::nullptr_t) noexcept {}
    /// Adds a reference to the object. A null pointer is nothing.
    ComPtr(T* object) noexcept : object_(object) {
        if (object_ != nullptr) {
            object_->AddRef();
        }
    }
    /// Adds a reference.
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.object_) {}
    /// Takes the reference over.
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    /// Releases the old reference after it has added the new one, so that assigning to itself is harmless.
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    /// Releases the reference.
    ~ComPtr() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }

    /// Takes over a reference that the caller holds, without adding one.
    [[nodiscard]] static ComPtr owning(T* object) noexcept {
        ComPtr owner;
        owner.object_ = object;
        return owner;
    }

    /// The pointer without a reference, valid as long as this object holds it; null for nothing.
    [[nodiscard]] T* get() const noexcept { return object_; }
    /// The object, which must be there.
    [[nodiscard]] T* operator->() const noexcept { return object_; }
    /// The object, which must be there.
    [[nodiscard]] T& operator*() const noexcept { return *object_; }
    /// Whether there is an object.
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// The address for an out argument that returns a reference. Releases what was held.
    [[nodiscard]] T** put() noexcept {
        reset();
        return &object_;
    }
    /// The same for an out argument without a type.
    [[nodiscard]] void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }
    /// Takes over a reference that the caller holds, without adding one; releases what was held.
    void attach(T* object) noexcept { *this = owning(object); }
    /// Passes the reference to the caller, who releases it; nothing is left here.
    [[nodiscard]] T* detach() noexcept { return std::exchange(object_, nullptr); }
    /// Releases the reference.
    void reset() noexcept { *this = ComPtr(); }
    /// Adds a reference and stores it in an out argument of a method; null for nothing.
    void copyTo(T** out) const noexcept { *out = ComPtr(*this).detach(); }

    /// Another interface of the same object; nothing if the object does not have it, or if there is no object.
    template <class Other> [[nodiscard]] ComPtr<Other> as() const noexcept {
        ComPtr<Other> other;
        if (object_ != nullptr && FAILED(object_->QueryInterface(__uuidof(Other), other.putVoid()))) {
            other.reset();
        }
        return other;
    }

    /// Equal if both hold the same interface pointer. Objects are the same if their IUnknown pointers are.
    friend bool operator==(const ComPtr& a, const ComPtr& b) noexcept { return a.object_ == b.object_; }

private:
    T* object_ = nullptr;
};

} // namespace z7::adapters::automation
