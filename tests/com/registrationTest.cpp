#include "com/ComTest.h"

#include <array>
#include <thread>

namespace z7::test {
namespace {

bool hasKey(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    const bool found = RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
    if (found) {
        RegCloseKey(key);
    }
    return found;
}

std::wstring braced(REFGUID id) {
    std::array<wchar_t, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

class Registration : public ComTest {
protected:
    static constexpr const wchar_t* providerName = L"Z7CashFlow.VoucherProvider";

    void TearDown() override {
        EXPECT_EQ(library().call("DllUnregisterServer"), S_OK);
        ComTest::TearDown();
    }
    static HRESULT idOfName(const wchar_t* name) {
        CLSID id{};
        return CLSIDFromProgID(name, &id);
    }
};

TEST_F(Registration, MakesTheClassesKnownByNameAndMayBeRepeated) {
    EXPECT_EQ(library().call("DllRegisterServer"), S_OK);
    EXPECT_EQ(library().call("DllRegisterServer"), S_OK);
    for (const wchar_t* name :
         {providerName, L"Z7CashFlow.clsMain", L"Z7CashFlow.CashFlowStructItem", L"Z7CashFlow.IGlVoucherProvider",
          L"Z7CashFlow.IOutVoucherProvider", L"Z7CashFlow.ISQLSerializable", L"Z7CashFlow.IXmlSerializable"}) {
        CLSID id{};
        ASSERT_EQ(CLSIDFromProgID(name, &id), S_OK) << adapters::automation::utf8(name);
        ComPtr<IUnknown> object;
        EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.putVoid()), S_OK)
            << adapters::automation::utf8(name);
    }
    for (const wchar_t* name : {L"Z7CashFlow.CashFlow", L"Z7CashFlow.CashFlowCollection", L"Z7CashFlow.CashFlowStruct",
                                L"Z7CashFlow.DataProvider", L"Z7CashFlow.DefineRef", L"Z7CashFlow.frmCashFlow"}) {
        EXPECT_NE(idOfName(name), S_OK) << adapters::automation::utf8(name) << " is not for hosts to create";
    }
}

TEST_F(Registration, MakesTheTypeLibraryKnown) {
    EXPECT_EQ(library().call("DllRegisterServer"), S_OK);
    ComPtr<ITypeLib> types;
    EXPECT_EQ(LoadRegTypeLib(LIBID_Z7CashFlow, 1, 0, 0, types.put()), S_OK);
}

TEST_F(Registration, IsTakenBackAndThatMayBeRepeated) {
    EXPECT_EQ(library().call("DllRegisterServer"), S_OK);
    EXPECT_EQ(library().call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(library().call("DllUnregisterServer"), S_OK);
    EXPECT_NE(idOfName(providerName), S_OK);
    ComPtr<ITypeLib> types;
    EXPECT_NE(LoadRegTypeLib(LIBID_Z7CashFlow, 1, 0, 0, types.put()), S_OK);
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        EXPECT_FALSE(hasKey(root, L"Software\\Classes\\Z7CashFlow.VoucherProvider"));
        EXPECT_FALSE(hasKey(root, L"Software\\Classes\\Interface\\{BCED6637-D2C4-4203-B584-2EC36C070202}"));
        EXPECT_FALSE(hasKey(root, L"Software\\Classes\\TypeLib\\{569E390E-D341-4831-9EEB-D4AAAB19043C}"));
    }
}

TEST_F(Registration, LeavesWhatTheOtherWordSizeNeeds) {
    const std::wstring languages = L"Software\\Classes\\TypeLib\\{569E390E-D341-4831-9EEB-D4AAAB19043C}\\1.0\\0";
    const std::wstring other = languages + (sizeof(void*) == 8 ? L"\\win32" : L"\\win64");
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, other.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(library().call("DllRegisterServer"), S_OK);
    EXPECT_EQ(library().call("DllUnregisterServer"), S_OK);
    EXPECT_TRUE(hasKey(HKEY_LOCAL_MACHINE, other));
    EXPECT_EQ(idOfName(providerName), S_OK) << "both have these names in common";
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\TypeLib\\{569E390E-D341-4831-9EEB-D4AAAB19043C}");
    EXPECT_EQ(library().call("DllUnregisterServer"), S_OK);
    EXPECT_NE(idOfName(providerName), S_OK);
}

TEST_F(Registration, ForAllUsersEndsTheUsersOwn) {
    const std::wstring own = L"Software\\Classes\\CLSID\\" + braced(CLSID_VoucherProvider) + L"\\InprocServer32";
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, own.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(library().call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(hasKey(HKEY_LOCAL_MACHINE, own));
    EXPECT_FALSE(hasKey(HKEY_CURRENT_USER, own)) << "this user would still get the DLL that is named there";
}

// Runs the messages of this thread, through which calls of other threads arrive, until a thread has ended.
void answerCallsUntilEndOf(std::thread& other) {
    HANDLE ended = reinterpret_cast<HANDLE>(pthread_gethandle(other.native_handle()));
    while (MsgWaitForMultipleObjects(1, &ended, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            DispatchMessageW(&message);
        }
    }
    other.join();
}

TEST_F(Registration, AnotherApartmentCallsThroughTheTypeLibrary) {
    EXPECT_EQ(library().call("DllRegisterServer"), S_OK);
    auto rows = collection();
    addRow(*rows, 1);
    ComPtr<IStream> stream;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID__CashFlowCollection, rows.get(), stream.put()), S_OK);
    std::string seen;
    std::thread other([&] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        {
            ComPtr<_CashFlowCollection> proxy;
            const HRESULT code =
                CoGetInterfaceAndReleaseStream(stream.detach(), IID__CashFlowCollection, proxy.putVoid());
            if (FAILED(code)) {
                seen = "no proxy";
            } else {
                LONG count = 0;
                const HRESULT counted = proxy->get_Count(&count);
                _CashFlow* row = nullptr;
                const HRESULT refused = proxy->get_Item(OwnedVariant(2).get(), &row);
                seen = std::to_string(counted) + " " + std::to_string(count) + " " +
                       std::to_string(refused == codeOfNumber(9)) + " " + std::to_string(proxy.get() != rows.get());
            }
        }
        CoUninitialize();
    });
    answerCallsUntilEndOf(other);
    EXPECT_EQ(seen, "0 1 1 1") << "success, one row, the list's error, a proxy";
}

} // namespace
} // namespace z7::test
