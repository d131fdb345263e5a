#include "com/ComTest.h"
#include "com/SuiteHost.h"
#include "standins/AutomationObject.h"

#include <optional>
#include <thread>

namespace z7::test {
namespace {

using Lines = std::vector<std::string>;

class ProviderThroughCom : public ComTest {
protected:
    static constexpr DATE day = 41279.0; // 2013-01-05

    std::optional<SuiteHost> suite_{std::in_place};
    ComPtr<_IGlVoucherProvider> gl_ = provider().as<_IGlVoucherProvider>();
    ComPtr<IDispatch> con_ = suite_->connection();
    IDispatch* lent_ = con_.get(); ///< the host's variable, passed by reference
    Bstr table_{"gl_accvouch"};

    void SetUp() override { EXPECT_OK(gl_->putref_objLogin(suite_->login().get())); }
    void TearDown() override {
        gl_.reset();
        con_.reset();
        suite_.reset();
        ComTest::TearDown();
        EXPECT_EQ(cashflow::test::AutomationObject::liveObjects(), 0) << "objects of the host are still held";
    }
    [[nodiscard]] ComPtr<_CashFlowCollection> generated() {
        return objectOf<_CashFlowCollection>(
            [&](auto** out) { return gl_->CreateCashFlowColFromDB(&lent_, table_.get(), 1, 1, 6, day, out); });
    }
    HRESULT save(_CashFlowCollection** rows, VARIANT_BOOL* check = nullptr) {
        VARIANT_BOOL saved = VARIANT_FALSE;
        return gl_->SaveCashFlowCol(&lent_, table_.get(), 1, 1, 6, rows, check, &saved);
    }
    static ComPtr<_CashFlow> firstOf(_CashFlowCollection& rows) {
        return objectOf<_CashFlow>([&](auto** out) { return rows.get_Item(OwnedVariant(1).get(), out); });
    }
};

TEST_F(ProviderThroughCom, ASaveWithoutRowsReturnsThoseItFound) {
    ComPtr<_CashFlowCollection> rows;
    EXPECT_OK(save(rows.put()));
    ASSERT_TRUE(rows);
    EXPECT_EQ(value<LONG>([&](auto* out) { return rows->get_Count(out); }), 1);
    EXPECT_EQ(suite_->company().storedRows(), Lines{"2013/1/1/6 line 2 account 6001 item 01 0 250.5"});
}

TEST_F(ProviderThroughCom, ASaveKeepsTheCallersRows) {
    const auto rows = generated();
    _CashFlowCollection* passed = rows.get();
    EXPECT_OK(save(&passed));
    EXPECT_EQ(passed, rows.get());
    EXPECT_OK(save(nullptr));
}

TEST_F(ProviderThroughCom, AWrongSumIsAnErrorWithNumberSourceAndText) {
    auto rows = generated();
    EXPECT_OK(firstOf(*rows)->SetValue(Bstr("mc").get(), OwnedVariant(9.0).get()));
    _CashFlowCollection* passed = rows.get();
    const HRESULT code = save(&passed);
    const HostError error = errorOf(code);
    EXPECT_EQ(code, codeOfNumber(10009));
    EXPECT_EQ(error.source, "CashFlow");
    EXPECT_EQ(error.description, "Cash moved by the voucher: debit 250.50\r\nSum of the cash-flow rows: debit 9.00");
    VARIANT_BOOL unchecked = VARIANT_FALSE;
    EXPECT_OK(save(&passed, &unchecked));
}

TEST_F(ProviderThroughCom, AFailedSaveReturnsTheRowsItHadFound) {
    suite_->company().execute("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,iNo_id,csign,inid,cCashItem,"
                              "ccode,mc,dbill_date) values(N'x',2013,1,1,6,N'x',2,N'02',N'6001',9,'2013-01-05')");
    ComPtr<_CashFlowCollection> rows;
    EXPECT_EQ(save(rows.put()), codeOfNumber(10009));
    EXPECT_TRUE(rows);
}

TEST_F(ProviderThroughCom, ACheckReturnsItsReason) {
    const auto rows = generated();
    Bstr reason("before");
    BSTR text = reason.detach();
    VARIANT_BOOL fits = VARIANT_FALSE;
    EXPECT_OK(gl_->CheckCFColFromDB(&lent_, table_.get(), 1, 1, 6, rows.get(), &text, &fits));
    EXPECT_EQ(fits, VARIANT_TRUE);
    EXPECT_EQ(adapters::automation::utf8OfBstr(text), "before");
    EXPECT_OK(firstOf(*rows)->SetValue(Bstr("cCashItem").get(), OwnedVariant("").get()));
    EXPECT_OK(gl_->CheckKmFrom(&lent_, rows.get(), &text, &fits));
    EXPECT_EQ(fits, VARIANT_FALSE);
    EXPECT_NE(adapters::automation::utf8OfBstr(text), "before");
    SysFreeString(text);
    EXPECT_OK(gl_->CheckKmFrom(&lent_, rows.get(), nullptr, &fits));
}

TEST_F(ProviderThroughCom, TheAccountDecidesAboutSumsOfRowsFromXml) {
    suite_->company().setOption("bXJLL", "true");
    VARIANT_BOOL check = VARIANT_FALSE;
    VARIANT_BOOL saved = VARIANT_FALSE;
    BSTR xml = nullptr;
    EXPECT_OK(gl_->SaveCashFlowColFromXml(&lent_, table_.get(), 1, 1, 6, &xml, &check, &saved));
    EXPECT_EQ(check, VARIANT_TRUE);
    EXPECT_EQ(saved, VARIANT_TRUE);
    EXPECT_EQ(xml, nullptr);
}

TEST_F(ProviderThroughCom, AnOutsideSaveReturnsTheXmlItFound) {
    VARIANT_BOOL saved = VARIANT_FALSE;
    Bstr xml;
    EXPECT_OK(gl_.as<_IOutVoucherProvider>()->SaveCashFlowCol(&lent_, table_.get(), Bstr("OUT").get(), xml.put(),
                                                              nullptr, &saved));
    EXPECT_EQ(xml.utf8().substr(0, 5), "<root");
    EXPECT_EQ(suite_->company().storedRows(), Lines{"2013/1/1/6 line 2 account 6001 item 01 0 250.5"});
}

TEST_F(ProviderThroughCom, RowsThatAreNotStoredAreNothing) {
    ComPtr<_CashFlowCollection> rows;
    EXPECT_OK(gl_->GetCashFlowColFromDB(&lent_, table_.get(), 1, 1, 6, day, rows.put()));
    EXPECT_FALSE(rows);
    EXPECT_OK(gl_->put_bFromDraft(VARIANT_TRUE));
    EXPECT_OK(gl_->GetCashFlowColFromDB(&lent_, table_.get(), 1, 1, 6, day, rows.put()));
    EXPECT_TRUE(rows) << "a voucher from a draft gets rows";
}

TEST_F(ProviderThroughCom, AMissingConnectionIsAnError) {
    ComPtr<_CashFlowCollection> rows;
    EXPECT_EQ(gl_->GetCashFlowColFromDB(nullptr, table_.get(), 1, 1, 6, day, rows.put()), codeOfNumber(91));
    lent_ = nullptr;
    EXPECT_EQ(gl_->GetCashFlowColFromDB(&lent_, table_.get(), 1, 1, 6, day, rows.put()), codeOfNumber(91));
    EXPECT_FALSE(rows);
}

TEST_F(ProviderThroughCom, TheConnectionIsPassedByReferenceAndStaysTheHosts) {
    const auto references = [this] {
        con_->AddRef();
        return con_->Release();
    };
    const ULONG before = references();
    EXPECT_TRUE(generated());
    EXPECT_EQ(lent_, con_.get());
    EXPECT_EQ(references(), before);
}

TEST_F(ProviderThroughCom, AnErrorOfTheDatabaseKeepsItsNumber) {
    ComPtr<_CashFlowCollection> rows;
    const HRESULT code = gl_->CreateCashFlowColFromDB(&lent_, Bstr("none").get(), 1, 1, 6, day, rows.put());
    const HostError error = errorOf(code);
    EXPECT_TRUE(FAILED(code));
    EXPECT_NE(error.description.find("none"), std::string::npos) << error.description;
    EXPECT_NE(error.source, "CashFlow");
}

TEST_F(ProviderThroughCom, SettingNoLoginKeepsTheTexts) {
    EXPECT_OK(gl_->putref_objLogin(nullptr));
    ComPtr<_CashFlowCollection> rows;
    EXPECT_EQ(gl_->CreateCashFlowColFromDB(&lent_, table_.get(), 1, 1, 6, day, rows.put()), codeOfNumber(91))
        << "the year is the login's";
    const auto row = addRow(*collection(), 1);
    EXPECT_EQ(row->SetValue(Bstr("none").get(), OwnedVariant(1).get()), codeOfNumber(1000));
    EXPECT_EQ(errorOf(codeOfNumber(1000)).description, "A cash-flow row has no field of that name.");
}

TEST_F(ProviderThroughCom, AnotherThreadHasAStateOfItsOwn) {
    HRESULT there = S_OK;
    std::thread([&] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        there = addRow(*collection(), 1)->SetValue(Bstr("none").get(), OwnedVariant(1).get());
        CoUninitialize();
    }).join();
    EXPECT_EQ(there, codeOfNumber(91)) << "no login was set on that thread";
    EXPECT_EQ(addRow(*collection(), 1)->SetValue(Bstr("none").get(), OwnedVariant(1).get()), codeOfNumber(1000));
}

TEST_F(ProviderThroughCom, TheScreensEntryPreparesTheRowsOfAVoucher) {
    const auto screen = library().create<_clsMain>(CLSID_clsMain);
    EXPECT_OK(screen->putref_Login(suite_->login().get()));
    const auto prepared = [&](LONG number) {
        return value<VARIANT_BOOL>([&](auto* out) {
            return screen->InitCashFlow(table_.get(), 1, 1, number, day, VARIANT_TRUE, nullptr, out);
        });
    };
    EXPECT_EQ(prepared(99), VARIANT_FALSE) << "there is no such voucher";
    EXPECT_FALSE(objectOf<_CashFlowCollection>([&](auto** out) { return screen->get_CashFlowCol(out); }));
    EXPECT_EQ(prepared(6), VARIANT_TRUE);
    const auto rows = objectOf<_CashFlowCollection>([&](auto** out) { return screen->get_CashFlowCol(out); });
    ASSERT_TRUE(rows);
    EXPECT_EQ(value<LONG>([&](auto* out) { return rows->get_Count(out); }), 1);
}

#ifndef Z7_HAS_WINDOW

TEST_F(ProviderThroughCom, ALibraryThatWasBuiltWithoutAWindowSaysSo) {
    const auto screen = library().create<_clsMain>(CLSID_clsMain);
    EXPECT_OK(screen->putref_Login(suite_->login().get()));
    EXPECT_EQ(screen->ShowCashFlow(table_.get(), 1, 1, 6, day, VARIANT_TRUE, nullptr, nullptr), codeOfNumber(438));
    EXPECT_EQ(
        errorOf(codeOfNumber(438)).description,
        "This build of Z7CashFlow.dll has no window: use InitCashFlow, edit the rows in CashFlowCol and save them "
        "with VoucherProvider");
}

#endif

} // namespace
} // namespace z7::test
