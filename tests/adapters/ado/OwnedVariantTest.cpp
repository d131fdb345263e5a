#include "adapters/ado/automation/OwnedVariant.h"

#include "adapters/ado/automation/Bstr.h"
#include "standins/AutomationObject.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace z7::adapters::automation {
namespace {

using cashflow::Date;
using cashflow::Error;
using cashflow::Variant;

VARIANT of(VARTYPE type, const std::function<void(VARIANT&)>& fill = {}) {
    VARIANT value;
    VariantInit(&value);
    if (fill) {
        fill(value);
    }
    value.vt = type;
    return value;
}

VARIANT decimal(std::uint64_t low, std::uint32_t high, int scale, bool negative = false) {
    return of(VT_DECIMAL, [&](VARIANT& value) {
        value.decVal.Lo64 = low;
        value.decVal.Hi32 = high;
        value.decVal.scale = static_cast<BYTE>(scale);
        value.decVal.sign = negative ? DECIMAL_NEG : 0;
    });
}

VARIANT money(std::int64_t tenThousandths) {
    return of(VT_CY, [&](VARIANT& value) { value.cyVal.int64 = tenThousandths; });
}

int numberOf(const VARIANT& value) {
    try {
        static_cast<void>(fromAutomation(value));
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(FromAutomation, EmptyAndNullAreNull) {
    EXPECT_EQ(fromAutomation(of(VT_EMPTY)), Variant());
    EXPECT_EQ(fromAutomation(of(VT_NULL)), Variant());
}

TEST(FromAutomation, TypesOfTheLibraryStayAsTheyAre) {
    EXPECT_EQ(fromAutomation(of(VT_UI1, [](VARIANT& v) { v.bVal = 255; })), Variant(std::uint8_t{255}));
    EXPECT_EQ(fromAutomation(of(VT_I2, [](VARIANT& v) { v.iVal = -32768; })), Variant(std::int16_t{-32768}));
    EXPECT_EQ(fromAutomation(of(VT_I4, [](VARIANT& v) { v.lVal = -5; })), Variant(std::int32_t{-5}));
    EXPECT_EQ(fromAutomation(of(VT_R8, [](VARIANT& v) { v.dblVal = 0.1; })), Variant(0.1));
    EXPECT_EQ(fromAutomation(of(VT_BOOL, [](VARIANT& v) { v.boolVal = VARIANT_TRUE; })), Variant(true));
    EXPECT_EQ(fromAutomation(of(VT_BOOL)), Variant(false));
    EXPECT_EQ(fromAutomation(of(VT_DATE, [](VARIANT& v) { v.date = 41279.5; })), Variant(Date(41279.5)));
    EXPECT_EQ(fromAutomation(of(VT_BSTR)), Variant("")) << "a null pointer is the empty text";
    EXPECT_EQ(OwnedVariant("付").value(), Variant("付"));
}

TEST(FromAutomation, OtherWholeNumbersAreIntegersWhereTheyFit) {
    EXPECT_EQ(fromAutomation(of(VT_I1, [](VARIANT& v) { v.cVal = -1; })), Variant(std::int32_t{-1}));
    EXPECT_EQ(fromAutomation(of(VT_UI2, [](VARIANT& v) { v.uiVal = 65535; })), Variant(std::int32_t{65535}));
    EXPECT_EQ(fromAutomation(of(VT_INT, [](VARIANT& v) { v.intVal = -7; })), Variant(std::int32_t{-7}));
    EXPECT_EQ(fromAutomation(of(VT_UINT, [](VARIANT& v) { v.uintVal = 7; })), Variant(std::int32_t{7}));
    EXPECT_EQ(fromAutomation(of(VT_UINT, [](VARIANT& v) { v.uintVal = 4294967295U; })), Variant(4294967295.0));
    EXPECT_EQ(fromAutomation(of(VT_UI4, [](VARIANT& v) { v.ulVal = 2147483647; })), Variant(std::int32_t{2147483647}));
    EXPECT_EQ(fromAutomation(of(VT_UI4, [](VARIANT& v) { v.ulVal = 2147483648U; })), Variant(2147483648.0));
    EXPECT_EQ(fromAutomation(of(VT_I8, [](VARIANT& v) { v.llVal = -2147483648LL; })),
              Variant(std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(fromAutomation(of(VT_I8, [](VARIANT& v) { v.llVal = -2147483649LL; })), Variant(-2147483649.0));
    EXPECT_EQ(fromAutomation(of(VT_UI8, [](VARIANT& v) { v.ullVal = 12; })), Variant(std::int32_t{12}));
    EXPECT_EQ(fromAutomation(of(VT_UI8, [](VARIANT& v) { v.ullVal = 18446744073709551615ULL; })),
              Variant(18446744073709551615.0));
}

TEST(FromAutomation, ASingleIsTheNumberThatItShows) {
    EXPECT_EQ(fromAutomation(of(VT_R4, [](VARIANT& v) { v.fltVal = 0.1F; })), Variant(0.1));
    EXPECT_EQ(fromAutomation(of(VT_R4, [](VARIANT& v) { v.fltVal = -1234.56F; })), Variant(-1234.56));
    EXPECT_EQ(fromAutomation(of(VT_R4, [](VARIANT& v) { v.fltVal = 16777216.0F; })), Variant(16777216.0));
}

TEST(FromAutomation, MoneyIsTheNearestDouble) {
    EXPECT_EQ(fromAutomation(money(1002500)), Variant(100.25));
    EXPECT_EQ(fromAutomation(money(-1)), Variant(-0.0001));
    EXPECT_EQ(fromAutomation(money(1000)), Variant(0.1));
    EXPECT_EQ(fromAutomation(money(std::numeric_limits<std::int64_t>::max())), Variant(922337203685477.5807));
    EXPECT_EQ(fromAutomation(money(std::numeric_limits<std::int64_t>::min())), Variant(-922337203685477.5808));
    EXPECT_EQ(fromAutomation(money(0)), Variant(0.0));
}

TEST(FromAutomation, ADecimalIsTheNearestDouble) {
    EXPECT_EQ(fromAutomation(decimal(12345, 0, 2)), Variant(123.45));
    EXPECT_EQ(fromAutomation(decimal(1, 0, 28)), Variant(1e-28));
    EXPECT_EQ(fromAutomation(decimal(5, 0, 1, true)), Variant(-0.5));
    EXPECT_EQ(fromAutomation(decimal(0xFFFFFFFFFFFFFFFFULL, 0xFFFFFFFFU, 0)), Variant(79228162514264337593543950335.0));
    EXPECT_EQ(fromAutomation(decimal(0xFFFFFFFFFFFFFFFFULL, 0xFFFFFFFFU, 28)), Variant(7.9228162514264337593543950335));
    EXPECT_EQ(fromAutomation(decimal(12345678901234567890ULL, 0, 10)), Variant(1234567890.1234567890));
    EXPECT_EQ(fromAutomation(decimal(0, 0, 28)), Variant(0.0));
}

TEST(FromAutomation, ReferencesAreFollowed) {
    BYTE byte = 7;
    SHORT small16 = -3;
    LONG whole = 70000;
    double real = 2.5;
    VARIANT_BOOL truth = VARIANT_TRUE;
    LONGLONG large = 5;
    const Bstr text("汉字");
    BSTR textPointer = text.get();
    CY amount{};
    amount.int64 = 15000;
    DECIMAL number = decimal(25, 0, 1).decVal;
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_UI1, [&](VARIANT& v) { v.pbVal = &byte; })), Variant(std::uint8_t{7}));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_I2, [&](VARIANT& v) { v.piVal = &small16; })), Variant(std::int16_t{-3}));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_I4, [&](VARIANT& v) { v.plVal = &whole; })),
              Variant(std::int32_t{70000}));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_R8, [&](VARIANT& v) { v.pdblVal = &real; })), Variant(2.5));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_DATE, [&](VARIANT& v) { v.pdate = &real; })), Variant(Date(2.5)));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_BOOL, [&](VARIANT& v) { v.pboolVal = &truth; })), Variant(true));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_I8, [&](VARIANT& v) { v.pllVal = &large; })), Variant(std::int32_t{5}));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_BSTR, [&](VARIANT& v) { v.pbstrVal = &textPointer; })), Variant("汉字"));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_CY, [&](VARIANT& v) { v.pcyVal = &amount; })), Variant(1.5));
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_DECIMAL, [&](VARIANT& v) { v.pdecVal = &number; })), Variant(2.5));
}

TEST(FromAutomation, VariantsWithinVariantsAreFollowed) {
    OwnedVariant text("x");
    EXPECT_EQ(OwnedVariant::byReference(text).value(), Variant("x"));
    LONG whole = 3;
    VARIANT reference = of(VT_BYREF | VT_I4, [&](VARIANT& v) { v.plVal = &whole; });
    EXPECT_EQ(fromAutomation(of(VT_BYREF | VT_VARIANT, [&](VARIANT& v) { v.pvarVal = &reference; })),
              Variant(std::int32_t{3}));
    VARIANT circle;
    VariantInit(&circle);
    circle.vt = VT_BYREF | VT_VARIANT;
    circle.pvarVal = &circle;
    EXPECT_EQ(numberOf(circle), 13) << "a circle ends";
}

TEST(FromAutomation, EverythingElseIsRefused) {
    EXPECT_EQ(numberOf(of(VT_DISPATCH)), 13);
    EXPECT_EQ(numberOf(of(VT_UNKNOWN)), 13);
    EXPECT_EQ(numberOf(of(VT_ARRAY | VT_VARIANT)), 13);
    EXPECT_EQ(numberOf(of(VT_ARRAY | VT_UI1)), 13) << "a binary column";
    EXPECT_EQ(numberOf(OwnedVariant::missing().get()), 13);
    EXPECT_EQ(numberOf(of(VT_BYREF | VT_I4)), 13) << "a reference to nothing";
    EXPECT_EQ(numberOf(of(VT_BYREF | VT_VARIANT)), 13);
    EXPECT_EQ(numberOf(of(VT_BYREF | VT_DISPATCH)), 13);
}

TEST(ToAutomation, EveryValueKeepsItsType) {
    const std::vector<std::pair<Variant, VARTYPE>> cases{{Variant(), VT_NULL},
                                                         {Variant(std::uint8_t{255}), VT_UI1},
                                                         {Variant(std::int16_t{-1}), VT_I2},
                                                         {Variant(std::int32_t{70000}), VT_I4},
                                                         {Variant(0.1), VT_R8},
                                                         {Variant(true), VT_BOOL},
                                                         {Variant(false), VT_BOOL},
                                                         {Variant(Date(41279.5)), VT_DATE},
                                                         {Variant(""), VT_BSTR},
                                                         {Variant(std::string("a\0凭", 5)), VT_BSTR}};
    for (const auto& [value, type] : cases) {
        const OwnedVariant stored(value);
        EXPECT_EQ(stored.get().vt, type);
        EXPECT_EQ(stored.value(), value);
    }
    EXPECT_EQ(OwnedVariant(true).get().boolVal, VARIANT_TRUE);
}

TEST(OwnedVariantTest, CopiesAreIndependentAndMovesLeaveEmpty) {
    OwnedVariant first("x");
    const OwnedVariant copy(first);
    EXPECT_NE(copy.get().bstrVal, first.get().bstrVal);
    const OwnedVariant moved(std::move(first));
    EXPECT_EQ(moved.value(), Variant("x"));
    OwnedVariant assigned(std::int32_t{1});
    assigned = moved;
    EXPECT_EQ(assigned.value(), Variant("x"));
    VARIANT taken = assigned.detach();
    EXPECT_EQ(assigned.get().vt, VT_EMPTY);
    VariantClear(&taken);
}

TEST(OwnedVariantTest, AnObjectIsKeptAliveByEachCopy) {
    class Plain final : public cashflow::test::AutomationObject {
    public:
        Plain() : AutomationObject(std::make_shared<cashflow::test::CallPlan>(), IID{}) {}
    };
    const long before = Plain::liveObjects();
    OwnedVariant copy;
    {
        const auto object = cashflow::test::makeObject<Plain>();
        const OwnedVariant value(static_cast<IDispatch*>(object.get()));
        copy = value;
    }
    EXPECT_EQ(Plain::liveObjects(), before + 1);
    copy = OwnedVariant();
    EXPECT_EQ(Plain::liveObjects(), before);
}

} // namespace
} // namespace z7::adapters::automation
