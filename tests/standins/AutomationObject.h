#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/Dispatch.h"
#include "adapters/ado/automation/OwnedVariant.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::test {

using adapters::automation::ComPtr;
using adapters::automation::Dispatch;
using adapters::automation::OwnedVariant;

/// How a call of an automation object fails: with a code alone, or as an exception with a source and a description.
struct Failure {
    HRESULT code = E_FAIL;
    std::string source;
    std::string description;
    bool isException = true;
};

/// Counts the calls of a group of automation objects and lets one of them fail.
class CallPlan {
public:
    /// The n-th call from now, counted from 1, fails.
    void failAt(std::size_t n, Failure failure) { failure_ = {count_ + n, std::move(failure)}; }
    /// No call fails any more.
    void forgetFailure() { failure_.reset(); }
    /// Whether a planned failure has not occurred yet.
    [[nodiscard]] bool isFailurePending() const { return failure_.has_value(); }
    /// The number of calls so far.
    [[nodiscard]] std::size_t count() const { return count_; }

    /// Counts a call. Throws the Failure that is planned for it.
    void enter();

private:
    std::size_t count_ = 0;
    std::optional<std::pair<std::size_t, Failure>> failure_;
};

/// The arguments of a call in their order.
class Call {
public:
    Call(WORD flags, const DISPPARAMS& parameters);

    /// Whether an argument was passed, and not left out.
    [[nodiscard]] bool has(std::size_t position) const;
    /// An argument; Error 13 for one that the library has no value for, null for one that was left out.
    [[nodiscard]] Variant value(std::size_t position) const;
    /// An argument as text, or the default for one that was left out.
    [[nodiscard]] std::string text(std::size_t position, const std::string& otherwise = {}) const;
    /// An argument as a whole number, or the default for one that was left out.
    [[nodiscard]] std::int32_t number(std::size_t position, std::int32_t otherwise = 0) const;
    /// The object in an argument; null for anything else.
    [[nodiscard]] IDispatch* object(std::size_t position) const;
    /// The elements of an argument that is an array of variants, by value or by reference. Error 13 for anything else.
    [[nodiscard]] std::vector<Variant> elements(std::size_t position) const;
    /// Stores a value in an argument that was passed by reference; otherwise it does nothing.
    void store(std::size_t position, std::int32_t number) const;
    /// Whether a property is to refer to an object.
    [[nodiscard]] bool isPutRef() const { return (flags_ & DISPATCH_PROPERTYPUTREF) != 0; }
    /// The number of arguments, including those that were left out.
    [[nodiscard]] std::size_t size() const { return arguments_.size(); }

private:
    WORD flags_;
    std::vector<const VARIANT*> arguments_;
};

/// An automation object whose members are functions. They raise Error, which a caller sees as an exception with the
/// code 0x800A0000 plus its number, or Failure. An object begins with one reference, see makeObject().
class AutomationObject : public IDispatch {
public:
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;

    /// The number of objects in this process that are not released yet.
    [[nodiscard]] static long liveObjects() { return live_; }

    STDMETHOD(QueryInterface)(REFIID iid, void** out) override;
    STDMETHOD_(ULONG, AddRef)() override;
    STDMETHOD_(ULONG, Release)() override;
    STDMETHOD(GetTypeInfoCount)(UINT* count) override;
    STDMETHOD(GetTypeInfo)(UINT, LCID, ITypeInfo** out) override;
    STDMETHOD(GetIDsOfNames)(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    STDMETHOD(Invoke)
    (DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
     UINT*) override;

protected:
    using Handler = std::function<OwnedVariant(const Call&)>;

    /// An object that answers QueryInterface for its own identifier with itself, so that its kind can be recognised
    /// even through a pointer of another module.
    AutomationObject(std::shared_ptr<CallPlan> plan, const IID& kind);
    virtual ~AutomationObject();

    /// Adds a method.
    void method(const wchar_t* name, Handler run);
    /// Adds a property, read-only without a second function.
    void property(const wchar_t* name, Handler get, Handler put = {});
    /// The member that a caller means who names none.
    void defaultMember(const wchar_t* name);

    /// The objects of the same group.
    [[nodiscard]] const std::shared_ptr<CallPlan>& plan() const { return plan_; }
    /// The object behind a pointer if it is of a kind; otherwise null. Adds no reference.
    [[nodiscard]] static AutomationObject* ofKind(IDispatch* object, const IID& kind);

private:
    struct Member {
        std::wstring name;
        Handler run;
        Handler get;
        Handler put;
    };
    Member& memberOf(const wchar_t* name);
    [[nodiscard]] const Member* find(DISPID id) const;
    OwnedVariant run(const Member& member, WORD flags, const DISPPARAMS& parameters) const;

    static std::atomic<long> live_;
    std::atomic<ULONG> references_{1};
    std::shared_ptr<CallPlan> plan_;
    IID kind_;
    std::vector<Member> members_;
    DISPID default_ = DISPID_UNKNOWN;
};

/// A new object with one owner.
template <class T, class... Arguments> [[nodiscard]] ComPtr<T> makeObject(Arguments&&... arguments) {
    return ComPtr<T>::owning(new T(std::forward<Arguments>(arguments)...));
}

/// An object as the result of a member.
template <class T> [[nodiscard]] OwnedVariant asValue(const ComPtr<T>& object) {
    return OwnedVariant(static_cast<IDispatch*>(object.get()));
}

} // namespace z7::cashflow::test
