#include "host/cli/jsonText.h"

#include "z7cashflow/model/CashFlowCollection.h"

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
              "\"error\":{\"number\":10009,\"description\":\"a\\r\\nb \\\"c\\\"\"}}");
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
    EXPECT_EQ(errorJson({Error(10009, "CashFlow", "x"), {sums, line, item}}, Language::chinese).dump(),
              R"({"number":10009,"description":"x","findings":[{"kind":"sums-differ","voucher":-8800.0,"rows":0.0},)"
              R"({"kind":"no-template","line":1,"account":"1123","side":"debit","amount":8800.0},)"
              R"({"kind":"item-unknown","line":2,"account":"6602","item":"9999","origin":"template"}]})");
}

TEST(JsonText, EscapesEveryControlCharacterAndSurvivesBadBytes) {
    EXPECT_EQ(jsonText("\x1b[31m\x7f\xC2\x9B"
                       "借"),
              "\"\\u001b[31m\\u007f\\u009b借\"");
    EXPECT_EQ(jsonText("a\xFF"), "\"a\xEF\xBF\xBD\"");
}

TEST(JsonText, WritesRowsWithAllFieldsInTheirTypes) {
    const auto rows = CashFlowCollection::Create();
    rows->UpdateCol(1, 2, 40000, Date::fromCivil(2024, 1, 31, 12));
    const auto row = rows->CreateCFObject();
    row->SetValue("md", Variant(12.5));
    row->SetValue("cCashItem", Variant("0101"));
    row->SetValue("cDefine1", Variant(true));
    rows->Add(row);
    const auto json = rowsJson(*rows);
    ASSERT_EQ(json.size(), 1U);
    EXPECT_EQ(json[0].size(), 42U);
    EXPECT_EQ(json[0].begin().key(), "key") << "fields stand in the order of the schema";
    EXPECT_EQ(json[0]["iNo_id"].dump(), "40000");
    EXPECT_EQ(json[0]["md"].dump(), "12.5");
    EXPECT_EQ(json[0]["mc"].dump(), "null");
    EXPECT_EQ(json[0]["cCashItem"].dump(), "\"0101\"");
    EXPECT_EQ(json[0]["cDefine1"].dump(), "true");
    EXPECT_EQ(json[0]["dbill_date"].dump(), "\"2024-01-31\"");
    EXPECT_EQ(rowsJson(*CashFlowCollection::Create()).dump(), "[]");
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
    for (const auto& row : rowsJson(*rows)) {
        items += row["cCashItem"].get<std::string>();
    }
    EXPECT_EQ(items, "cbda") << "the two rows of line 2 stay in their order";
}

} // namespace
} // namespace z7::cashflow::host
