#include "standins/AdoClasses.h"

#include "standins/AdoConnection.h"
#include "standins/AdoRecordset.h"

#include <array>
#include <atomic>
#include <stdexcept>
#include <utility>

namespace z7::cashflow::test {

namespace {

constexpr CLSID connectionClass{0x00000514, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x6D, 0x2E, 0xA4}};
constexpr CLSID recordsetClass{0x00000535, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x6D, 0x2E, 0xA4}};

class Factory final : public IClassFactory {
public:
    explicit Factory(std::function<ComPtr<IDispatch>()> make) : make_(std::move(make)) {}

    STDMETHOD(QueryInterface)(REFIID iid, void** out) override {
        if (iid != IID_IUnknown && iid != IID_IClassFactory) {
            *out = nullptr;
            return E_NOINTERFACE;
        }
        *out = this;
        AddRef();
        return S_OK;
    }
    STDMETHOD_(ULONG, AddRef)() override { return ++references_; }
    STDMETHOD_(ULONG, Release)() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    STDMETHOD(CreateInstance)(IUnknown* outer, REFIID iid, void** out) override {
        *out = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : make_()->QueryInterface(iid, out);
    }
    STDMETHOD(LockServer)(BOOL) override { return S_OK; }

private:
    virtual ~Factory() = default;

    std::atomic<ULONG> references_{1};
    std::function<ComPtr<IDispatch>()> make_;
};

void require(HRESULT result, const char* what) {
    if (FAILED(result)) {
        throw std::runtime_error(what);
    }
}

} // namespace

RegisteredClass::RegisteredClass(const CLSID& classId, std::function<ComPtr<IDispatch>()> make) {
    const auto factory = ComPtr<IClassFactory>::owning(new Factory(std::move(make)));
    require(CoRegisterClassObject(classId, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
            "A class cannot be registered on this thread");
}

RegisteredClass::~RegisteredClass() { CoRevokeClassObject(cookie_); }

AdoClasses::AdoClasses(const std::shared_ptr<AdoDatabase>& database)
    : connections_(
          connectionClass,
          [database] {
              return ComPtr<IDispatch>(
                  makeObject<AdoConnection>(database, std::shared_ptr<Connection>(database->makeConnection())).get());
          }),
      recordsets_(recordsetClass, [database] { return ComPtr<IDispatch>(makeObject<AdoRecordset>(database).get()); }) {}

RegisteredProgramId::RegisteredProgramId(const std::wstring& programId, const CLSID& classId) : key_(programId) {
    std::array<wchar_t, 64> text{};
    const int length = StringFromGUID2(classId, text.data(), static_cast<int>(text.size()));
    require(HRESULT_FROM_WIN32(
                static_cast<DWORD>(RegSetKeyValueW(HKEY_CLASSES_ROOT, (key_ + L"\\CLSID").c_str(), nullptr, REG_SZ,
                                                   text.data(), static_cast<DWORD>(length) * sizeof(wchar_t)))),
            "A program identifier cannot be registered");
}

RegisteredProgramId::~RegisteredProgramId() { RegDeleteTreeW(HKEY_CLASSES_ROOT, key_.c_str()); }

} // namespace z7::cashflow::test
