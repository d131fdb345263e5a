#include "com/ComTest.h"

#include <functional>
#include <thread>

namespace z7::test {
namespace {

class Lifetime : public ComTest {
protected:
    // Runs an action on another thread that opens and closes COM.
    static void onThreadWithCom(const std::function<void()>& action) {
        std::thread([&] {
            CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
            action();
            CoUninitialize();
        }).join();
    }
    [[nodiscard]] HRESULT canUnload() const { return library().call("DllCanUnloadNow"); }
};

TEST_F(Lifetime, AnObjectKeepsTheLibrary) {
    auto kept = provider();
    EXPECT_EQ(canUnload(), S_FALSE);
    kept.reset();
    EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(Lifetime, AnInterfacePointerOrAnEnumeratorKeepsTheLibrary) {
    auto rows = collection();
    addRow(*rows, 1);
    auto enumerator = objectOf<IUnknown>([&](auto** out) { return rows->get_NewEnum(out); });
    rows.reset();
    EXPECT_EQ(canUnload(), S_FALSE);
    enumerator.reset();
    EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(Lifetime, ALockKeepsTheLibrary) {
    auto factory = library().factory(CLSID_VoucherProvider);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.reset();
    EXPECT_EQ(canUnload(), S_FALSE);
    factory = library().factory(CLSID_VoucherProvider);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(canUnload(), S_FALSE) << "the factory itself";
    factory.reset();
    EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(Lifetime, AFactoryMakesOneClassAndNoParts) {
    HRESULT code = S_OK;
    EXPECT_FALSE(library().factory(IID_IUnknown, &code));
    EXPECT_EQ(code, CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_FALSE(library().factory(CLSID_CashFlowCollection, &code));
    EXPECT_EQ(code, CLASS_E_CLASSNOTAVAILABLE);
    const auto factory = library().factory(CLSID_VoucherProvider);
    const auto outer = provider();
    ComPtr<IUnknown> part;
    EXPECT_EQ(factory->CreateInstance(outer.get(), IID_IUnknown, part.putVoid()), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID__clsMain, part.putVoid()), E_NOINTERFACE);
}

TEST_F(Lifetime, AContractAloneDoesNothing) {
    const auto contract = library().create<_IGlVoucherProvider>(CLSID_IGlVoucherProvider);
    EXPECT_OK(contract->put_VoucherTempTable(Bstr("temp").get()));
    EXPECT_EQ(textOf([&](auto* out) { return contract->get_VoucherTempTable(out); }), "");
    EXPECT_FALSE(objectOf<_CashFlowCollection>(
        [&](auto** out) { return contract->GetCashFlowColFromDB(nullptr, nullptr, 1, 1, 1, 2.0, out); }));
    EXPECT_EQ(value<VARIANT_BOOL>([&](auto* out) {
                  return contract->SaveCashFlowCol(nullptr, nullptr, 1, 1, 1, nullptr, nullptr, out);
              }),
              VARIANT_FALSE);
    EXPECT_FALSE(contract.as<_VoucherProvider>());
    const auto sql = library().create<_ISQLSerializable>(CLSID_ISQLSerializable);
    EXPECT_EQ(textOf([&](auto* out) { return sql->InsertSql(nullptr, nullptr, out); }), "");
    const auto xml = library().create<_IXmlSerializable>(CLSID_IXmlSerializable);
    EXPECT_OK(xml->Load(OwnedVariant("not XML").get()));
    EXPECT_EQ(textOf([&](auto* out) { return xml->Save(out); }), "");
    const auto outside = library().create<_IOutVoucherProvider>(CLSID_IOutVoucherProvider);
    EXPECT_EQ(textOf([&](auto* out) { return outside->GetCashFlowColFromDB(nullptr, nullptr, nullptr, out); }), "");
}

TEST_F(Lifetime, AThreadThatClosesComLeavesNothingBehind) {
    onThreadWithCom([&] {
        const auto rows = collection();
        addRow(*rows, 1);
    });
    EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(Lifetime, AThreadThatIsStillUsingTheLibraryKeepsIt) {
    onThreadWithCom([&] {
        addRow(*collection(), 1); // gives the thread its state
        std::thread([&] { EXPECT_EQ(canUnload(), S_FALSE); }).join();
        EXPECT_EQ(canUnload(), S_OK) << "asked by the thread itself, which loses its state then";
        std::thread([&] { EXPECT_EQ(canUnload(), S_OK); }).join();
    });
}

TEST_F(Lifetime, AThreadThatEndsWithoutClosingComDoesNotKeepTheLibrary) {
    std::thread([&] { addRow(*collection(), 1); }).join();
    EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(Lifetime, TheStateIsClosedWithTheLastOfNestedInitializations) {
    onThreadWithCom([&] {
        addRow(*collection(), 1);
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        CoUninitialize();
        std::thread([&] { EXPECT_EQ(canUnload(), S_FALSE); }).join();
    });
    EXPECT_EQ(canUnload(), S_OK);
}

TEST(Unloading, TheSystemUnloadsTheLibraryWhenNothingIsLeft) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        const LoadedLibrary own;
        ASSERT_EQ(own.call("DllRegisterServer"), S_OK);
    }
    EXPECT_EQ(GetModuleHandleW(L"Z7CashFlow.dll"), nullptr);
    {
        const Dispatch provider = Dispatch::create(L"Z7CashFlow.VoucherProvider");
        const Dispatch rows = provider.callObject(L"CreateCashFlowCollection");
        rows.call(L"Add", rows.callObject(L"CreateCFObject").pointer());
        CoFreeUnusedLibraries();
        EXPECT_NE(GetModuleHandleW(L"Z7CashFlow.dll"), nullptr);
    }
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"Z7CashFlow.dll"), nullptr);
    {
        const LoadedLibrary own;
        EXPECT_EQ(own.call("DllUnregisterServer"), S_OK);
    }
    CoUninitialize();
}

} // namespace
} // namespace z7::test
