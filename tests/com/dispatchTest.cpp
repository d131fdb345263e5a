#include "com/ComTest.h"

#include "z7cashflow/support/Error.h"

#include <array>
#include <string>
#include <vector>

namespace z7::test {
namespace {

using cashflow::Variant;

class CallsByName : public ComTest {
protected:
    struct Outcome {
        HRESULT code = S_OK;
        OwnedVariant result;
        HostError reported;
        UINT wrongArgument = 99;
    };

    ComPtr<IDispatch> provider_ = provider().as<IDispatch>();
    ComPtr<IDispatch> rows_ = collection().as<IDispatch>();

    void TearDown() override {
        provider_.reset();
        rows_.reset();
        ComTest::TearDown();
    }

    static DISPID idOf(IDispatch& object, const wchar_t* name) {
        auto* unchanged = const_cast<wchar_t*>(name);
        DISPID id = DISPID_UNKNOWN;
        return object.GetIDsOfNames(IID_NULL, &unchanged, 1, 0, &id) == S_OK ? id : DISPID_UNKNOWN;
    }
    // The arguments in the order of the parameters, some of the first of them named at the caller's choice.
    static Outcome call(IDispatch& object, const wchar_t* name, std::vector<VARIANT> arguments,
                        WORD flags = DISPATCH_METHOD, std::vector<DISPID> named = {}) {
        std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
        DISPPARAMS parameters{reversed.data(), named.data(), static_cast<UINT>(reversed.size()),
                              static_cast<UINT>(named.size())};
        EXCEPINFO exception{};
        Outcome outcome;
        outcome.code = object.Invoke(idOf(object, name), IID_NULL, 0, flags, &parameters, outcome.result.put(),
                                     &exception, &outcome.wrongArgument);
        outcome.reported = {exception.scode, adapters::automation::utf8OfBstr(exception.bstrSource),
                            adapters::automation::utf8OfBstr(exception.bstrDescription)};
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        return outcome;
    }
    static VARIANT reference(VARTYPE type, void* variable) {
        VARIANT argument{};
        argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
        argument.byref = variable;
        return argument;
    }
    [[nodiscard]] ComPtr<IDispatch> newRow() const {
        return ComPtr<IDispatch>(Dispatch(rows_.get()).callObject(L"CreateCFObject").pointer());
    }
};

TEST_F(CallsByName, NamesAreFoundInAnyLetterCase) {
    EXPECT_EQ(idOf(*rows_, L"updatecol"), 3);
    EXPECT_EQ(idOf(*rows_, L"INO_ID"), 9);
    EXPECT_EQ(idOf(*rows_, L"Item"), DISPID_VALUE);
    EXPECT_EQ(idOf(*rows_, L"NewEnum"), DISPID_NEWENUM);
    EXPECT_EQ(idOf(*rows_, L"Rows"), DISPID_UNKNOWN);
}

TEST_F(CallsByName, ParametersHaveNames) {
    std::wstring member = L"UpdateCol";
    std::wstring number = L"ino_id";
    std::wstring unknown = L"iNumber";
    std::array<LPOLESTR, 3> names{member.data(), number.data(), unknown.data()};
    std::array<DISPID, 3> ids{};
    EXPECT_EQ(rows_->GetIDsOfNames(IID_NULL, names.data(), 2, 0, ids.data()), S_OK);
    EXPECT_EQ(ids[1], 2);
    EXPECT_EQ(rows_->GetIDsOfNames(IID_NULL, names.data(), 3, 0, ids.data()), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[2], DISPID_UNKNOWN);
}

TEST_F(CallsByName, ArgumentsMayBeNamed) {
    // UpdateCol(1, dbill_date:=41279, iNo_id:=7, isignseq:=3)
    std::vector<VARIANT> arguments{OwnedVariant(1).get(), OwnedVariant(41279.0).get(), OwnedVariant(7).get(),
                                   OwnedVariant(3).get()};
    EXPECT_EQ(call(*rows_, L"UpdateCol", arguments, DISPATCH_METHOD, {1, 2, 3}).code, S_OK);
    const Dispatch rows(rows_.get());
    EXPECT_EQ(rows.get(L"iPeriod").value(), Variant(std::uint8_t{1}));
    EXPECT_EQ(rows.get(L"isignseq").value(), Variant(std::int16_t{3}));
    EXPECT_EQ(rows.get(L"iNo_id").value(), Variant(std::int16_t{7}));
    EXPECT_EQ(rows.get(L"dbill_date").value(), Variant(cashflow::Date(41279.0)));
}

TEST_F(CallsByName, ArgumentsAreConvertedByTheRulesOfTheLibrary) {
    const OwnedVariant period("12");
    const OwnedVariant kind(2.5);
    const OwnedVariant number(std::int16_t{7});
    const OwnedVariant date("2013-01-05");
    EXPECT_EQ(call(*rows_, L"UpdateCol", {period.get(), kind.get(), number.get(), date.get()}).code, S_OK);
    const Dispatch rows(rows_.get());
    EXPECT_EQ(rows.get(L"iPeriod").value(), Variant(std::uint8_t{12}));
    EXPECT_EQ(rows.get(L"isignseq").value(), Variant(std::int16_t{2})) << "half to even";
    EXPECT_EQ(rows.get(L"dbill_date").value(), Variant(cashflow::Date(41279.0)));
}

TEST_F(CallsByName, AnArgumentThatCannotBeConvertedIsReported) {
    const OwnedVariant text("twelve");
    const OwnedVariant number(1);
    const auto outcome = call(*rows_, L"UpdateCol", {number.get(), text.get(), number.get(), number.get()});
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.reported.code, codeOfNumber(13));
    EXPECT_EQ(outcome.reported.source, "Z7CashFlow");
    EXPECT_NE(outcome.reported.description.find("twelve"), std::string::npos);
    EXPECT_EQ(outcome.wrongArgument, 2U) << "counted from the last one";
}

TEST_F(CallsByName, TooManyOrTooFewArgumentsAreRefused) {
    const OwnedVariant number(1);
    EXPECT_EQ(call(*rows_, L"Remove", {number.get(), number.get()}).code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(*rows_, L"Remove", {}).code, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(call(*rows_, L"Remove", {OwnedVariant::missing().get()}).code, DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(CallsByName, AMemberThatDoesNotExistIsRefused) {
    DISPPARAMS none{};
    EXPECT_EQ(rows_->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(rows_->Invoke(0x50001, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(call(*rows_, L"Count", {OwnedVariant(1).get()}, DISPATCH_PROPERTYPUT, {DISPID_PROPERTYPUT}).code,
              DISP_E_MEMBERNOTFOUND)
        << "read-only";
}

TEST_F(CallsByName, AFailureHasNumberSourceAndDescription) {
    const auto outcome = call(*rows_, L"Item", {OwnedVariant(1).get()}, DISPATCH_PROPERTYGET);
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.reported.code, codeOfNumber(9));
    EXPECT_FALSE(outcome.reported.description.empty());
}

TEST_F(CallsByName, AVariableOfAScriptTakesTheTextOfACheck) {
    const auto row = newRow();
    OwnedVariant reason; // Empty, as a variable that was never set
    const auto outcome = call(*row, L"CheckCashFlow", {OwnedVariant::byReference(reason).get()});
    // Without a login there is no text, and that is what the caller is told.
    EXPECT_EQ(outcome.reported.code, codeOfNumber(91));
    EXPECT_OK(row.as<_CashFlow>()->SetValue(Bstr("cCashItem").get(), OwnedVariant("01").get()));
    EXPECT_OK(row.as<_CashFlow>()->SetValue(Bstr("ccode").get(), OwnedVariant("1001").get()));
    EXPECT_OK(row.as<_CashFlow>()->SetValue(Bstr("md").get(), OwnedVariant(1.5).get()));
    EXPECT_EQ(call(*row, L"CheckCashFlow", {OwnedVariant::byReference(reason).get()}).result.value(), Variant(true));
    EXPECT_EQ(reason.get().vt, VT_BSTR) << "the variable has the parameter's type afterwards";
}

TEST_F(CallsByName, VariablesOfFixedTypesTakeResults) {
    const auto row = newRow();
    for (const char* field : {"cCashItem", "ccode", "md"}) {
        EXPECT_OK(row.as<_CashFlow>()->SetValue(Bstr(field).get(), OwnedVariant("1").get()));
    }
    BSTR text = Bstr("before").detach();
    EXPECT_EQ(call(*row, L"CheckCashFlow", {reference(VT_BSTR, &text)}).code, S_OK);
    EXPECT_EQ(adapters::automation::utf8OfBstr(text), "before");
    SysFreeString(text);
    const OwnedVariant value("by value");
    EXPECT_EQ(call(*row, L"CheckCashFlow", {value.get()}).code, S_OK);
}

TEST_F(CallsByName, AVariableThatCannotTakeATextIsRefusedBeforeTheCall) {
    LONG number = 5;
    const auto outcome = call(*newRow(), L"CheckCashFlow", {reference(VT_I4, &number)});
    EXPECT_EQ(outcome.reported.code, codeOfNumber(13)) << "and not 91, with which the call itself would have failed";
    EXPECT_NE(outcome.reported.description.find("use a Variant"), std::string::npos) << outcome.reported.description;
    EXPECT_EQ(number, 5);
}

TEST_F(CallsByName, ARefersToAVariableOfAnotherNumberType) {
    SHORT number = 5;
    const auto contract = provider_.as<_IGlVoucherProvider>();
    const auto outcome = call(*contract, L"SetOldVouchNoID", {reference(VT_I2, &number)});
    EXPECT_EQ(outcome.code, S_OK);
    EXPECT_EQ(outcome.result.get().vt, VT_EMPTY) << "Empty, not Null";
    EXPECT_EQ(number, 5);
    OwnedVariant variable("6");
    EXPECT_EQ(call(*contract, L"SetOldVouchNoID", {OwnedVariant::byReference(variable).get()}).code, S_OK);
    EXPECT_EQ(variable.value(), Variant(std::int32_t{6}));
}

TEST_F(CallsByName, AContractIsReachedByItsLongNames) {
    const Dispatch object(provider_.get());
    object.put(L"IGlVoucherProvider_VoucherTempTable", "temp");
    EXPECT_EQ(object.get(L"IOutVoucherProvider_VoucherTempTable").value(), Variant("temp"))
        << "both contracts share the setting";
    object.put(L"iglvoucherprovider_bfromdraft", true);
    EXPECT_EQ(idOf(*provider_, L"IGlVoucherProvider_bFromDraft"), 2) << "of the default interface itself";
    EXPECT_EQ(idOf(*provider_, L"IGlVoucherProvider_None"), DISPID_UNKNOWN);
    EXPECT_EQ(idOf(*provider_, L"IGlVoucherProvider_"), DISPID_UNKNOWN);
    EXPECT_EQ(idOf(*provider_, L"VoucherTempTable"), DISPID_UNKNOWN);
    const auto contract = provider_.as<_IGlVoucherProvider>();
    EXPECT_EQ(idOf(*contract, L"IGlVoucherProvider_VoucherTempTable"), DISPID_UNKNOWN)
        << "the contract's own interface has its own names";
    EXPECT_EQ(idOf(*contract, L"VoucherTempTable"), 1);
}

TEST_F(CallsByName, RowsAndCollectionsHaveLongNames) {
    const Dispatch rows(rows_.get());
    const std::string xml =
        cashflow::Variant(rows.call(L"IXmlSerializable_Save").value()).get<std::string>()->substr(0, 5);
    EXPECT_EQ(xml, "<root");
    rows.call(L"IXmlSerializable_Load", "<root><rows><row inid='4'/></rows></root>");
    EXPECT_EQ(rows.get(L"Count").value(), Variant(std::int32_t{1}));
    const Dispatch row = rows.getObject(L"Item", 1);
    row.call(L"IXmlSerializable_Load", "<row inid='5'/>");
    EXPECT_EQ(row.get(L"Item", "inid").value(), Variant("5"));
}

TEST_F(CallsByName, APropertyThatIsOnlySetMayBeCalled) {
    const auto screen = library().create<_clsMain>(CLSID_clsMain);
    EXPECT_EQ(call(*screen, L"SetVouchState", {OwnedVariant(2).get()}).code, S_OK);
    EXPECT_EQ(call(*screen, L"SetVouchState", {OwnedVariant(2).get()}, DISPATCH_PROPERTYPUT, {DISPID_PROPERTYPUT}).code,
              S_OK);
    EXPECT_EQ(call(*screen, L"ReadOnly", {OwnedVariant(true).get()}, DISPATCH_PROPERTYPUT, {DISPID_PROPERTYPUT}).code,
              S_OK);
    EXPECT_EQ(Dispatch(screen.as<IDispatch>()).get(L"ReadOnly").value(), Variant(true));
}

TEST_F(CallsByName, APropertyThatRefersToAnObjectIsSetEitherWay) {
    const auto screen = library().create<_clsMain>(CLSID_clsMain);
    const OwnedVariant rows(rows_.get());
    for (const WORD flags : {DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT}) {
        EXPECT_EQ(call(*screen, L"CashFlowCol", {rows.get()}, flags, {DISPID_PROPERTYPUT}).code, S_OK);
        EXPECT_TRUE(isSameObject(Dispatch(screen.as<IDispatch>()).getObject(L"CashFlowCol").pointer(), rows_.get()));
        EXPECT_EQ(call(*screen, L"CashFlowCol", {OwnedVariant(static_cast<IDispatch*>(nullptr)).get()}, flags,
                       {DISPID_PROPERTYPUT})
                      .code,
                  S_OK);
    }
}

TEST_F(CallsByName, AnObjectOfAnotherClassIsRefused) {
    const OwnedVariant provider(provider_.get());
    const auto outcome = call(*rows_, L"Add", {provider.get()});
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.reported.code, codeOfNumber(13));
    const OwnedVariant text("row");
    EXPECT_EQ(call(*rows_, L"Add", {text.get()}).reported.code, codeOfNumber(13));
}

TEST_F(CallsByName, TheTypeIsDescribed) {
    ComPtr<ITypeInfo> type;
    EXPECT_OK(rows_->GetTypeInfo(0, 0, type.put()));
    Bstr name;
    EXPECT_OK(type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr));
    EXPECT_EQ(name.utf8(), "_CashFlowCollection");
    EXPECT_EQ(rows_->GetTypeInfo(1, 0, type.put()), DISP_E_BADINDEX);
}

} // namespace
} // namespace z7::test
