#include "com/ComTest.h"

#include <array>
#include <stdexcept>

namespace z7::test {

LoadedLibrary::LoadedLibrary() : module_(LoadLibraryW(path().c_str())) {
    if (module_ == nullptr) {
        throw std::runtime_error("Z7CashFlow.dll cannot be loaded: error " + std::to_string(GetLastError()));
    }
}

LoadedLibrary::~LoadedLibrary() { FreeLibrary(module_); }

std::wstring LoadedLibrary::path() {
    std::array<wchar_t, 1024> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    const std::wstring text = program.data();
    return text.substr(0, text.find_last_of(L'\\') + 1) + L"Z7CashFlow.dll";
}

HRESULT LoadedLibrary::call(const char* entryPoint) const {
    using EntryPoint = HRESULT(WINAPI*)();
    const auto address = reinterpret_cast<void*>(GetProcAddress(module_, entryPoint));
    return address == nullptr ? E_NOTIMPL : reinterpret_cast<EntryPoint>(address)();
}

ComPtr<IClassFactory> LoadedLibrary::factory(REFCLSID classId, HRESULT* code) const {
    using EntryPoint = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto address = reinterpret_cast<void*>(GetProcAddress(module_, "DllGetClassObject"));
    ComPtr<IClassFactory> factory;
    const HRESULT result = reinterpret_cast<EntryPoint>(address)(classId, IID_IClassFactory, factory.putVoid());
    if (code != nullptr) {
        *code = result;
    }
    return factory;
}

HostError errorOf(HRESULT code) {
    HostError error{code, {}, {}};
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) == S_OK) {
        Bstr text;
        info->GetSource(text.put());
        error.source = text.utf8();
        info->GetDescription(text.put());
        error.description = text.utf8();
    }
    return error;
}

bool isSameObject(IUnknown* a, IUnknown* b) {
    return ComPtr<IUnknown>(a).as<IUnknown>() == ComPtr<IUnknown>(b).as<IUnknown>();
}

ComTest::Apartment::Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }

ComTest::Apartment::~Apartment() { CoUninitialize(); }

ComTest::ComTest() = default;

ComTest::~ComTest() = default;

void ComTest::TearDown() { EXPECT_EQ(library_.call("DllCanUnloadNow"), S_OK) << "something is still alive"; }

ComPtr<_VoucherProvider> ComTest::provider() const { return library_.create<_VoucherProvider>(CLSID_VoucherProvider); }

ComPtr<_CashFlowCollection> ComTest::collection() const {
    const auto made = provider();
    return objectOf<_CashFlowCollection>([&](auto** out) { return made->CreateCashFlowCollection(out); });
}

ComPtr<_CashFlow> ComTest::addRow(_CashFlowCollection& rows, std::int32_t inid) {
    auto row = objectOf<_CashFlow>([&](auto** out) { return rows.CreateCFObject(out); });
    EXPECT_OK(row->SetValue(Bstr("inid").get(), OwnedVariant(inid).get()));
    EXPECT_OK(rows.Add(row.get()));
    return row;
}

} // namespace z7::test
