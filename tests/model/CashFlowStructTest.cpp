#include "doubles/ContextGuard.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/schemaDocument.h"

#include <gtest/gtest.h>

#include <array>

namespace z7::cashflow::test {
namespace {

class Schema : public LoginTest {
protected:
    const std::shared_ptr<CashFlowCollection> collection = CashFlowCollection::Create();
    const CashFlowStruct& schema = collection->CFStruct();
};

struct Expected {
    const char* name;
    const char* type;
    bool canNull;
    const char* defaultValue;
    bool save;
};

constexpr std::array<Expected, 42> expectedFields{{
    {"key", "string", false, "", false},
    {"RowGuid", "string", true, "", true},
    {"iYear", "num", false, "", true},
    {"iPeriod", "num", false, "", true},
    {"iSignSeq", "num", false, "", true},
    {"csign", "string", false, "", true},
    {"iNo_id", "num", false, "", true},
    {"inid", "num", true, "", true},
    {"cCashItem", "string", false, "", true},
    {"cCashItemName", "string", false, "", false},
    {"md", "num", false, "0", true},
    {"mc", "num", false, "0", true},
    {"ccode", "string", false, "", true},
    {"ccode_name", "string", true, "", false},
    {"md_f", "num", false, "0", true},
    {"mc_f", "num", false, "0", true},
    {"nd_s", "num", false, "0", true},
    {"nc_s", "num", false, "0", true},
    {"cdept_id", "string", true, "", true},
    {"cperson_id", "string", true, "", true},
    {"ccus_id", "string", true, "", true},
    {"csup_id", "string", true, "", true},
    {"citem_class", "string", true, "", true},
    {"citem_id", "string", true, "", true},
    {"ccashitem_id", "string", true, "", true},
    {"cDefine1", "string", true, "", true},
    {"cDefine2", "string", true, "", true},
    {"cDefine3", "string", true, "", true},
    {"cDefine4", "date", true, "", true},
    {"cDefine5", "num", true, "", true},
    {"cDefine6", "date", true, "", true},
    {"cDefine7", "num", true, "", true},
    {"cDefine8", "string", true, "", true},
    {"cDefine9", "string", true, "", true},
    {"cDefine10", "string", true, "", true},
    {"cDefine11", "string", true, "", true},
    {"cDefine12", "string", true, "", true},
    {"cDefine13", "string", true, "", true},
    {"cDefine14", "string", true, "", true},
    {"cDefine15", "num", true, "", true},
    {"dbill_date", "date", true, "", true},
    {"cDefine16", "num", true, "", true},
}};

TEST_F(Schema, HoldsTheFortyTwoFieldsInTheirOrder) {
    ASSERT_EQ(schema.Fields().size(), expectedFields.size());
    for (std::size_t i = 0; i < expectedFields.size(); ++i) {
        const Expected& expected = expectedFields.at(i);
        ASSERT_EQ(schema.Fields()[i], expected.name) << i;
        const auto item = schema.Item(expected.name);
        ASSERT_NE(item, nullptr) << expected.name;
        EXPECT_EQ(item->FieldName, expected.name);
        EXPECT_EQ(item->DataType, expected.type) << expected.name;
        EXPECT_EQ(item->DataCanNull, expected.canNull) << expected.name;
        EXPECT_EQ(item->DefaultValue, Variant(expected.defaultValue)) << expected.name;
        EXPECT_EQ(item->isSave, expected.save) << expected.name;
    }
    EXPECT_EQ(schema.Fields().front(), "key");
    EXPECT_EQ(schema.Fields()[41], "cDefine16");
}

TEST_F(Schema, CountsItsFieldsAsA32BitInteger) { EXPECT_EQ(schema.Count(), Variant(std::int32_t{42})); }

TEST_F(Schema, FindsNamesExactly) {
    EXPECT_NE(schema.Item("iYear"), nullptr);
    EXPECT_EQ(schema.Item("iyear"), nullptr);
    EXPECT_EQ(schema.Item("isignseq"), nullptr);
    EXPECT_EQ(schema.Item(""), nullptr);
}

TEST_F(Schema, KeepsDefaultsAsTexts) {
    EXPECT_TRUE(schema.Item("md")->DefaultValue.is<std::string>());
    EXPECT_EQ(schema.Item("md")->DefaultValue, Variant("0"));
}

TEST_F(Schema, TravelsAsThisDocument) {
    std::string document = "<struct>\r\n";
    for (const Expected& field : expectedFields) {
        const std::string name = field.name;
        if (name == "cCashItem") {
            document += "<item name='cCashItem' type='string' isnull='false' default=''  save='true' />\r\n";
        } else if (name == "cCashItemName") {
            document += "<item name='cCashItemName' type='string' isnull='false' default=''  save='false'/>\r\n";
        } else {
            document += "<item name='" + name + "' type='" + field.type + "' isnull='" +
                        (field.canNull ? "true" : "false") + "' default='" + field.defaultValue + "' save='" +
                        (field.save ? "true" : "false") + "' />\r\n";
        }
    }
    document += "</struct>\r\n";
    EXPECT_EQ(schemaDocument(), document);
}

TEST_F(Schema, BelongsToOneCollection) {
    const auto other = CashFlowCollection::Create();
    EXPECT_NE(&other->CFStruct(), &collection->CFStruct());
}

TEST(CashFlowStruct, RefusesANameTwice) {
    CashFlowStruct structure;
    auto item = std::make_shared<CashFlowStructItem>();
    item->FieldName = "a";
    structure.Add(item);
    EXPECT_ERROR(structure.Add(std::make_shared<CashFlowStructItem>(*item)), errors::keyExists);
    EXPECT_EQ(structure.Count(), Variant(std::int32_t{1}));
    EXPECT_EQ(structure.Item("a"), item);
}

TEST(CashFlowStruct, RefusesNothing) {
    CashFlowStruct structure;
    EXPECT_ERROR(structure.Add(nullptr), errors::objectNotSet);
    EXPECT_EQ(structure.Count(), Variant(std::int32_t{0}));
}

} // namespace
} // namespace z7::cashflow::test
