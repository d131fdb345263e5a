#pragma once

#include "adapters/ado/automation/system.h"
#include "com/ModuleUse.h"
#include "com/classes.h"

#include <atomic>

namespace z7::com {

/// Creates objects of one class for hosts. Objects cannot be parts of others (aggregation).
class ClassFactory final : public IClassFactory {
public:
    /// A factory without references; the class outlives it.
    explicit ClassFactory(const CreatableClass& created) noexcept : created_(created) {}
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** out) noexcept override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override;

private:
    ~ClassFactory() = default;

    ModuleUse use_;
    std::atomic<ULONG> references_ = 0;
    const CreatableClass& created_;
};

} // namespace z7::com
