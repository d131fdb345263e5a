#include "com/threadStates.h"

#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/system.h"
#include "com/hostServices.h"
#include "z7cashflow/model/modPublic.h"

#include <atomic>
#include <memory>
#include <new>

namespace z7::com {

namespace {

using cashflow::modPublic::Context;

// A slot of the system and not a thread_local object: the destructor of such an object would keep the DLL in memory
// until the thread ends, and run after COM has closed on it.
constinit DWORD slot = TLS_OUT_OF_INDEXES;
constinit std::atomic<long> states = 0;

// Learns from the system that the thread is about to close COM.
class ClosingSpy final : public IInitializeSpy {
public:
    ClosingSpy() = default;
    ClosingSpy(const ClosingSpy&) = delete;
    ClosingSpy& operator=(const ClosingSpy&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) noexcept override {
        *out = nullptr;
        if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IInitializeSpy)) {
            return E_NOINTERFACE;
        }
        *out = static_cast<IInitializeSpy*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD /*type*/, DWORD /*count*/) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD /*type*/, DWORD /*count*/) noexcept override {
        return result;
    }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD count) noexcept override {
        if (count == 1) {
            destroyThreadState();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD /*count*/) noexcept override { return S_OK; }

private:
    ~ClosingSpy() = default;

    std::atomic<ULONG> references_ = 0;
};

struct ThreadState {
    Context context;
    ULARGE_INTEGER spy{}; ///< under which the system knows the spy
    bool isSpying = false;
};

ThreadState* stateOfThread() noexcept { return static_cast<ThreadState*>(TlsGetValue(slot)); }

Context& contextOfThread() noexcept {
    makeThreadState();
    return stateOfThread()->context;
}

} // namespace

bool openThreadStates() noexcept {
    slot = TlsAlloc();
    if (slot == TLS_OUT_OF_INDEXES) {
        return false;
    }
    cashflow::modPublic::keepContextsIn(contextOfThread);
    return true;
}

void closeThreadStates() noexcept { TlsFree(slot); }

void makeThreadState() {
    if (hasThreadState()) {
        return;
    }
    auto made = std::make_unique<ThreadState>();
    equip(made->context);
    const adapters::automation::ComPtr<ClosingSpy> spy(new ClosingSpy());
    if (TlsSetValue(slot, made.get()) == FALSE) {
        throw std::bad_alloc();
    }
    made->isSpying = SUCCEEDED(CoRegisterInitializeSpy(spy.get(), &made->spy));
    static_cast<void>(made.release()); // the slot's now
    ++states;
}

long threadStateCount() noexcept { return states; }

bool hasThreadState() noexcept { return stateOfThread() != nullptr; }

void destroyThreadState() noexcept {
    std::unique_ptr<ThreadState> state(stateOfThread());
    if (!state) {
        return;
    }
    TlsSetValue(slot, nullptr);
    if (state->isSpying) {
        CoRevokeInitializeSpy(state->spy);
    }
    state.reset(); // the host's objects that are released here may call the library again; they find a new state then
    --states;
}

void abandonThreadState() noexcept {
    if (stateOfThread() != nullptr) {
        TlsSetValue(slot, nullptr);
        --states;
    }
}

} // namespace z7::com
