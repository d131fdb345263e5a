#include "doubles/ContextGuard.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {
namespace {

std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

class Row : public LoginTest {
protected:
    Row() { collection->UpdateCol(1, 2, 5, Date(41279.0)); }

    /// A row with exactly the given attributes.
    std::shared_ptr<CashFlow> fromXml(const std::string& attributes) {
        const auto document = XmlDocument::load("<row " + attributes + "/>");
        EXPECT_TRUE(document) << attributes;
        auto row = collection->CreateCFObject();
        row->Load(document->documentElement());
        return row;
    }

    std::shared_ptr<CashFlowCollection> collection = CashFlowCollection::Create();
};

TEST_F(Row, IsBornWithAllFieldsOfTheSchemaAndTheHeader) {
    const auto row = collection->CreateCFObject();
    EXPECT_EQ(row->Count(), 42);
    EXPECT_EQ(row->Fields(), collection->CFStruct().Fields());
    EXPECT_EQ(row->Item("iPeriod"), Variant(std::uint8_t{1}));
    EXPECT_EQ(row->Item("iSignSeq"), Variant(i16(2)));
    EXPECT_EQ(row->Item("iNo_id"), Variant(std::int32_t{5}));
    EXPECT_EQ(row->Item("dbill_date"), Variant(Date(41279.0)));
    EXPECT_EQ(row->Item("RowGuid"), Variant(GuidSequence::text(1)));
    EXPECT_EQ(row->Item("key"), Variant(GuidSequence::text(2)));
    EXPECT_EQ(row->key(), GuidSequence::text(2));
    EXPECT_EQ(guids.count(), 2U);
    for (const std::string& field : row->Fields()) {
        const bool isSet = field == "iPeriod" || field == "iSignSeq" || field == "iNo_id" || field == "dbill_date" ||
                           field == "RowGuid" || field == "key";
        EXPECT_EQ(row->Item(field).isNull(), !isSet) << field;
    }
    EXPECT_EQ(row->objParent(), nullptr);
    EXPECT_FALSE(collection->Changed());
    EXPECT_EQ(collection->Count(), 0);
}

TEST_F(Row, DoesNotTakeDefaultsOfTheSchema) { EXPECT_TRUE(collection->CreateCFObject()->Item("md").isNull()); }

TEST_F(Row, KnowsFieldsByTheirExactName) {
    const auto row = collection->CreateCFObject();
    const Error error = errorOf([&] { (void)row->Item("iyear"); });
    EXPECT_EQ(error.number(), 1000);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00018>");
    EXPECT_ERROR(row->Item(""), 1000);
    EXPECT_ERROR(row->SetValue("isignseq", i16(1)), 1000);
}

TEST_F(Row, KeepsWhatItWasGivenInItsType) {
    const auto row = collection->CreateCFObject();
    for (const Variant& value : {Variant(), Variant(""), Variant("1,000"), Variant(std::uint8_t{1}), Variant(i16(1)),
                                 Variant(std::int32_t{1}), Variant(1.0), Variant(true), Variant(Date(1.0))}) {
        row->SetValue("md", value);
        EXPECT_EQ(row->Item("md"), value);
    }
}

TEST_F(Row, WithoutAParentChangesNothingElse) {
    const auto row = collection->CreateCFObject();
    row->SetValue("md", 5.0);
    EXPECT_EQ(row->Item("md"), Variant(5.0));
    EXPECT_FALSE(collection->Changed());
}

TEST_F(Row, MarksItsParentAsChangedAlsoWithTheSameValue) {
    const auto row = collection->CreateCFObject();
    row->objParent(collection);
    EXPECT_FALSE(collection->Changed());
    row->SetValue("md", Null{});
    EXPECT_TRUE(collection->Changed());
}

TEST_F(Row, LeavesItsParentAloneOnAnUnknownField) {
    const auto row = collection->CreateCFObject();
    row->objParent(collection);
    EXPECT_ERROR(row->SetValue("unknown", 1.0), 1000);
    EXPECT_FALSE(collection->Changed());
    EXPECT_EQ(row->Count(), 42);
}

TEST_F(Row, WritesItsKeyToTheFieldAsWell) {
    const auto row = collection->CreateCFObject();
    row->objParent(collection);
    row->key("other");
    EXPECT_EQ(row->key(), "other");
    EXPECT_EQ(row->Item("key"), Variant("other"));
    EXPECT_TRUE(collection->Changed());
}

TEST_F(Row, ChangesItsKeyBeforeTheMissingFieldIsNoticed) {
    const auto row = fromXml("md='1'");
    EXPECT_ERROR(row->key("other"), 1000);
    EXPECT_EQ(row->key(), "other");
}

TEST_F(Row, LosesItsParentWithTheCollection) {
    const auto row = collection->CreateCFObject();
    collection->Add(row);
    EXPECT_EQ(row->objParent(), collection);
    collection.reset();
    EXPECT_EQ(row->objParent(), nullptr);
    row->SetValue("md", 1.0);
    EXPECT_EQ(row->Item("md"), Variant(1.0));
    EXPECT_NE(row->Save(), "");
}

TEST_F(Row, ANewRowLacksItsItemFirst) {
    const auto row = collection->CreateCFObject();
    std::string info = "before";
    EXPECT_FALSE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00020>\t\t4");
}

TEST_F(Row, IsCheckedInAFixedOrder) {
    const auto row = collection->CreateCFObject();
    std::string info;
    row->SetValue("inid", i16(3));
    row->SetValue("cCashItem", "");
    EXPECT_FALSE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00020>\t3\t4");
    row->SetValue("cCashItem", "01");
    EXPECT_FALSE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00021>\t3\t1");
    row->SetValue("ccode", "");
    EXPECT_FALSE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00021>\t3\t1");
    row->SetValue("ccode", "1001");
    EXPECT_FALSE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00022>\t3\t3");
    row->SetValue("inid", Null{});
    EXPECT_FALSE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "<Z7.CW.GL.CashFlow.00022>\t\t3");
}

TEST_F(Row, IsCompleteWithOneAmountOfZero) {
    const auto row = collection->CreateCFObject();
    row->SetValue("cCashItem", "01");
    row->SetValue("ccode", "1001");
    row->SetValue("mc", i16(0));
    std::string info = "before";
    EXPECT_TRUE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "before");
    row->SetValue("mc", Null{});
    row->SetValue("md", 0.0);
    EXPECT_TRUE(row->CheckCashFlow(info));
    EXPECT_EQ(info, "before");
}

TEST_F(Row, TakesAnItemOfAnotherTypeAsPresent) {
    const auto row = collection->CreateCFObject();
    row->SetValue("cCashItem", i16(0));
    row->SetValue("ccode", i16(1001));
    row->SetValue("md", "");
    std::string info;
    EXPECT_TRUE(row->CheckCashFlow(info));
}

TEST_F(Row, FromXmlLacksFieldsThatItsElementLacks) {
    std::string info;
    EXPECT_ERROR(fromXml("ccode='1001' md='1'")->CheckCashFlow(info), 1000);
    EXPECT_ERROR(fromXml("cCashItem='01' md='1'")->CheckCashFlow(info), 1000);
    EXPECT_ERROR(fromXml("cCashItem='01' ccode='1001' md='1'")->CheckCashFlow(info), 1000);
    EXPECT_ERROR(fromXml("cCashItem='01' ccode='1001' mc='1'")->CheckCashFlow(info), 1000);
    EXPECT_ERROR(fromXml("cCashItem=''")->CheckCashFlow(info), 1000); // the line's number belongs to the text
    EXPECT_TRUE(fromXml("cCashItem='01' ccode='1001' md='1' mc=''")->CheckCashFlow(info));
}

TEST_F(Row, MadeWithoutRandomBytesHasEmptyIdentities) {
    modPublic::context().guidSource = [] { return std::nullopt; };
    const auto row = collection->CreateCFObject();
    EXPECT_EQ(row->Item("RowGuid"), Variant(""));
    EXPECT_EQ(row->key(), "");
    collection->Add(row);
    EXPECT_ERROR(collection->Add(collection->CreateCFObject()), errors::keyExists);
}

TEST_F(Row, TakesLongAndForeignTexts) {
    const auto row = collection->CreateCFObject();
    const std::string text = std::string(1 << 20, 'x') + "借\"'<&>\t\n";
    row->SetValue("cDefine1", text);
    EXPECT_EQ(row->Item("cDefine1"), Variant(text));
}

} // namespace
} // namespace z7::cashflow::test
