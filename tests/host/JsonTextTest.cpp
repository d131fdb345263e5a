#include "host/cli/jsonText.h"
#include "host/cli/failureJson.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::Finding;
using workbench::ItemOrigin;
using workbench::Outcome;
using workbench::Refusal;
namespace {

TEST(JsonText, WritesAResultInItsForm) {
    const workbench::VoucherKinds kinds({{2, "付"}});
    EXPECT_EQ(jsonText(resultJson({{2013, 1, 2, 5}, Outcome::stored, 2, 2, {}, {}}, kinds, Language::english)),
              R"({"voucher":"2013/1/2/5","sign":"付","outcome":"stored","rows":2})");
    EXPECT_EQ(jsonText(resultJson({{2013, 1, 2, 5}, Outcome::noCash, 0, 0, {}, {}}, kinds, Language::english)),
              R"({"voucher":"2013/1/2/5","sign":"付","outcome":"no-cash","rows":0})");
    EXPECT_EQ(jsonText(resultJson({{2013, 1, 2, 5}, Outcome::nothing, 0, 0, {}, {}}, kinds, Language::english)),
              R"({"voucher":"2013/1/2/5","sign":"付","outcome":"nothing","rows":0})");
    EXPECT_EQ(jsonText(resultJson({{2013, 1, 2, 5}, Outcome::nothing, 0, 3, {}, {}}, kinds, Language::english)),
              R"({"voucher":"2013/1/2/5","sign":"付","outcome":"nothing","rows":0,"removed":3})");
    const Refusal refusal{Error(10009, "CashFlow", "a\r\nb \"c\""), {}};
    EXPECT_EQ(jsonText(resultJson({{2013, 1, 2, 5}, Outcome::refused, 0, 0, refusal, {}}, kinds, Language::english)),
              "{\"voucher\":\"2013/1/2/5\",\"sign\":\"付\",\"outcome\":\"refused\",\"rows\":0,"
              "\"error\":{\"code\":\"voucher-failed\",\"number\":10009,\"text\":\"a; b \\\"c\\\"\","
              "\"description\":\"a\\r\\nb \\\"c\\\"\"}}");
}

TEST(JsonText, WritesTheFindingsOfARefusalInTheSameWordsInEveryLanguage) {
    Finding sums;
    sums.kind = Finding::Kind::sumsDiffer;
    sums.voucherSum = -8800.0;
    Finding line;
    line.kind = Finding::Kind::noTemplate;
    line.line = 1;
    line.account = "1123";
    line.debit = true;
    line.amount = 8800.0;
    Finding item;
    item.kind = Finding::Kind::itemUnknown;
    item.line = 2;
    item.account = "6602";
    item.item = "9999";
    item.origin = ItemOrigin::templateOfAccount;
    auto error = errorJson({Error(10009, "CashFlow", "x"), {sums, line, item}}, Language::chinese);
    EXPECT_THAT(error["text"], testing::HasSubstr("科目 1123"));
    error.erase("text");
    EXPECT_EQ(jsonText(error),
              R"({"code":"sums-differ","number":10009,"description":"x",)"
              R"("findings":[{"kind":"sums-differ","voucher":-8800.00,"rows":0.00},)"
              R"({"kind":"no-template","line":1,"account":"1123","side":"debit","amount":8800.00},)"
              R"({"kind":"item-unknown","line":2,"account":"6602","item":"9999","origin":"template"}]})");
}

TEST(JsonText, EscapesEveryControlCharacterAndSurvivesBadBytes) {
    EXPECT_EQ(jsonText("\x1b[31m\x7f\xC2\x9B"
                       "借"),
              "\"\\u001b[31m\\u007f\\u009b借\"");
    EXPECT_EQ(jsonText("a\xFF"), "\"a\xEF\xBF\xBD\"");
}

TEST(JsonText, WritesNumbersWithDecimalsExactly) {
    const auto text = [](double number) { return jsonText(nlohmann::ordered_json(number)); };
    EXPECT_EQ(text(12000.0), "12000.00");
    EXPECT_EQ(text(-0.5), "-0.50");
    EXPECT_EQ(text(-0.0), "0.00");
    EXPECT_EQ(text(0.125), "0.1250");
    EXPECT_EQ(text(899999999999.9999), "899999999999.9999");
    EXPECT_EQ(text(7.13456), "7.13456") << "a rate of exchange has as many decimals as it has";
    EXPECT_EQ(text(0.1 + 0.2), "0.30000000000000004") << "only amounts are rounded";
    EXPECT_EQ(text(1e300), "1e+300");
}

TEST(JsonText, AmountsHaveNoBinaryRemainder) {
    EXPECT_EQ(jsonText(amountJson(0.1 + 0.2)), "0.30");
    EXPECT_EQ(jsonText(amountJson(1234567890.12 - 1234567890.0)), "0.12");
    EXPECT_EQ(jsonText(amountJson(0.00004)), "0.00");
    EXPECT_EQ(jsonText(amountJson(0.00005)), "0.0001");
    EXPECT_EQ(jsonText(amountJson(2e12)), "2000000000000") << "too large for an amount";
}

TEST(JsonText, AFailureNamesItsFaultsAndItsCause) {
    EXPECT_EQ(
        jsonText(failureJson(
            Failure(2, HostText::csvFaults, {"2"}, {{"key-taken", "a, line 1"}, {"not-a-date", "a, line 2"}}),
            Language::english)),
        R"({"code":"csv-faults","text":"2 faults, see above; nothing was created","exitCode":2,"arguments":["2"],)"
        R"("faults":[{"code":"key-taken","text":"a, line 1"},{"code":"not-a-date","text":"a, line 2"}]})");
    const Refusal cause{Error(18456, "ODBC", "Login failed", "28000"), {}};
    const auto json =
        failureJson(Failure(3, HostText::notConnected, {"Login failed"}).because(cause), Language::english);
    EXPECT_EQ(json["code"], "not-connected");
    EXPECT_EQ(jsonText(json["cause"]),
              R"({"code":"database-failed","number":18456,"text":"Login failed","description":"Login failed"})");
}

TEST(JsonText, AFailureThatIsOnlyAnErrorIsThatError) {
    const Refusal cause{Error(94, "CashFlow", "Invalid use of Null"), {}};
    EXPECT_EQ(jsonText(failureJson(Failure(1, HostText::voucherFailed, {"94", "Invalid use of Null"}).because(cause),
                                   Language::english)),
              R"({"code":"voucher-failed","number":94,"text":"Invalid use of Null",)"
              R"("description":"Invalid use of Null","exitCode":1})");
}

TEST(JsonText, ALineBeginsWithTheVersionOfTheForm) {
    EXPECT_EQ(jsonLine({{"widths", 8}}), "{\"form\":1,\"widths\":8}\n");
}

TEST(JsonText, WritesRowsWithAllFieldsInTheirTypes) {
    const auto rows = CashFlowCollection::Create();
    rows->UpdateCol(1, 2, 40000, Date::fromCivil(2024, 1, 31, 12));
    const auto row = rows->CreateCFObject();
    row->SetValue("md", Variant(12.5));
    row->SetValue("cCashItem", Variant("0101"));
    row->SetValue("cDefine1", Variant(true));
    rows->Add(row);
    ASSERT_EQ(rowsJson(*rows, true).size(), 1U);
    EXPECT_EQ(rowsJson(*rows, true)[0].size(), 42U);
    EXPECT_EQ(rowsJson(*rows, true)[0].begin().key(), "key") << "fields stand in the order of the schema";
    const auto json = rowsJson(*rows, false);
    ASSERT_EQ(json.size(), 1U);
    EXPECT_EQ(json[0].size(), 40U);
    EXPECT_EQ(json[0].begin().key(), "iYear") << "random identities are written only if asked for";
    EXPECT_EQ(json[0]["iNo_id"].dump(), "40000");
    EXPECT_EQ(json[0]["md"].dump(), "12.5");
    EXPECT_EQ(json[0]["mc"].dump(), "null");
    EXPECT_EQ(json[0]["cCashItem"].dump(), "\"0101\"");
    EXPECT_EQ(json[0]["cDefine1"].dump(), "true");
    EXPECT_EQ(json[0]["dbill_date"].dump(), "\"2024-01-31 12:00:00\"") << "no time of day is lost";
    EXPECT_EQ(rowsJson(*CashFlowCollection::Create(), false).dump(), "[]");
}

TEST(JsonText, ListsRowsByTheirLines) {
    const auto rows = CashFlowCollection::Create();
    for (const auto& [line, item] : {std::pair{10, "a"}, {2, "b"}, {1, "c"}, {2, "d"}}) {
        const auto row = rows->CreateCFObject();
        row->SetValue("inid", Variant(static_cast<std::int16_t>(line)));
        row->SetValue("cCashItem", Variant(item));
        rows->Add(row);
    }
    std::string items;
    for (const auto& row : rowsJson(*rows, false)) {
        items += row["cCashItem"].get<std::string>();
    }
    EXPECT_EQ(items, "cbda") << "the two rows of line 2 stay in their order";
}

} // namespace
} // namespace z7::cashflow::host
