#include "doubles/ContextGuard.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/schemaDocument.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>
#ifndef _WIN32 // Debian has no rapidcheck for Windows
#include <rapidcheck.h>
#endif

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {
namespace {

std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

class XmlForm : public LoginTest {
protected:
    XmlForm() { collection->UpdateCol(1, 2, 5, Date(41279.0)); }

    std::shared_ptr<CashFlow> addRow() {
        auto row = collection->CreateCFObject();
        collection->Add(row);
        return row;
    }

    const std::shared_ptr<CashFlowCollection> collection = CashFlowCollection::Create();
};

TEST_F(XmlForm, OfAnEmptyCollection) {
    EXPECT_EQ(collection->Save(),
              "<root iperiod='1' isignseq='2' ino_id='5'>" + schemaDocument() + "<rows>\r\n</rows></root>");
}

TEST_F(XmlForm, OfARow) {
    const auto row = collection->CreateCFObject();
    row->SetValue("md", 1234.5);
    row->SetValue("mc", "1,000");
    row->SetValue("ccode", "<10'01>");
    row->SetValue("cDefine1", "a&b\"c");
    row->SetValue("cDefine2", true);
    row->SetValue("cDefine4", Date(41279.5));
    EXPECT_EQ(row->Save(),
              "<row key='" + GuidSequence::text(2) + "' RowGuid='" + GuidSequence::text(1) +
                  "' iYear='' iPeriod='1' iSignSeq='2' csign='' iNo_id='5' inid='' cCashItem='' cCashItemName='' "
                  "md='1234.5' mc='1,000' ccode='&lt;10&apos;01&gt;' ccode_name='' md_f='' mc_f='' nd_s='' nc_s='' "
                  "cdept_id='' cperson_id='' ccus_id='' csup_id='' citem_class='' citem_id='' ccashitem_id='' "
                  "cDefine1='a&amp;b&quot;c' cDefine2='True' cDefine3='' cDefine4='2013-01-05 12:00:00' cDefine5='' "
                  "cDefine6='' cDefine7='' cDefine8='' cDefine9='' cDefine10='' cDefine11='' cDefine12='' cDefine13='' "
                  "cDefine14='' cDefine15='' dbill_date='2013-01-05' cDefine16='' />\r\n");
}

TEST_F(XmlForm, OfACollectionHoldsItsRowsInTheirOrder) {
    const auto first = addRow();
    const auto second = addRow();
    collection->UpdateCol(255, i16(-2), 100000, Date(41279.0));
    EXPECT_EQ(collection->Save(), "<root iperiod='255' isignseq='-2' ino_id='100000'>" + schemaDocument() +
                                      "<rows>\r\n" + first->Save() + second->Save() + "</rows></root>");
}

TEST_F(XmlForm, OfARowWithoutFields) { EXPECT_EQ(CashFlow().Save(), "<row />\r\n"); }

TEST_F(XmlForm, ComesBackWithTheSameValuesAsTexts) {
    const auto row = addRow();
    row->SetValue("md", 0.1);
    row->SetValue("cDefine1", "");
    row->SetValue("cDefine2", "O'Brien & <Söhne> \"借\"");
    row->SetValue("cDefine4", Date(41279.0));
    addRow();
    const auto copy = CashFlowCollection::Create();
    copy->Load(collection->Save());
    ASSERT_EQ(copy->Count(), 2);
    EXPECT_TRUE(copy->Changed());
    for (std::int32_t i = 1; i <= 2; ++i) {
        const auto from = collection->Item(i);
        const auto to = copy->Item(i);
        EXPECT_EQ(to->Fields(), from->Fields());
        EXPECT_EQ(to->objParent(), copy);
        for (const std::string& field : from->Fields()) {
            const std::string text = toTextOrEmpty(from->Item(field));
            EXPECT_EQ(to->Item(field), text.empty() ? Variant() : Variant(text)) << field;
        }
    }
    EXPECT_EQ(copy->iPeriod(), 0);
    EXPECT_EQ(copy->iNo_id(), 0);
}

TEST_F(XmlForm, SavedLoadedAndSavedAgainIsTheSameText) {
    addRow()->SetValue("cDefine1", "&amp;'");
    addRow()->SetValue("md", 1e-9);
    const auto copy = CashFlowCollection::Create();
    copy->UpdateCol(1, 2, 5, Date(41279.0));
    copy->Load(collection->Save());
    EXPECT_EQ(copy->Save(), collection->Save());
}

TEST_F(XmlForm, ARowKeepsItsFreshKeyBesideTheLoadedField) {
    const auto row = addRow();
    const auto copy = CashFlowCollection::Create();
    copy->Load(collection->Save());
    const auto loaded = copy->Item(1);
    EXPECT_EQ(loaded->Item("key"), Variant(row->key()));
    EXPECT_NE(loaded->key(), row->key());
    EXPECT_EQ(loaded->key(), GuidSequence::text(4));
    EXPECT_EQ(copy->Item(GuidSequence::text(4)), loaded);
    EXPECT_ERROR(copy->Item(row->key()), errors::badArgument);
    EXPECT_EQ(loaded->Item("RowGuid"), row->Item("RowGuid"));
}

TEST_F(XmlForm, LoadReplacesTheRows) {
    const auto old = addRow();
    collection->Load("<root><rows><row a='1'/><row b='2' a=''/></rows></root>");
    ASSERT_EQ(collection->Count(), 2);
    EXPECT_EQ(collection->Item(1)->Fields(), std::vector<std::string>{"a"});
    EXPECT_EQ(collection->Item(1)->Item("a"), Variant("1"));
    EXPECT_EQ(collection->Item(2)->Fields(), (std::vector<std::string>{"b", "a"}));
    EXPECT_TRUE(collection->Item(2)->Item("a").isNull());
    EXPECT_EQ(old->objParent(), collection);
    EXPECT_EQ(collection->iPeriod(), 1);
    EXPECT_EQ(collection->iNo_id(), 5);
}

TEST_F(XmlForm, LoadOfAForeignDocumentEmptiesTheList) {
    addRow();
    for (const char* text : {"<foreign><row a='1'/></foreign>", "<root/>", "<root><rows/></root>",
                             "<root><Rows><row a='1'/></Rows></root>", "<rows><row a='1'/></rows>"}) {
        addRow();
        collection->Load(text);
        EXPECT_EQ(collection->Count(), 0) << text;
    }
}

TEST_F(XmlForm, LoadWithoutRowsMarksNoChange) {
    collection->Load("<root/>");
    EXPECT_FALSE(collection->Changed());
}

TEST_F(XmlForm, LoadOfNoXmlRaisesAndKeepsTheRows) {
    const auto row = addRow();
    for (const char* text : {"", "no xml", "<root>", "<root><rows><row a='1' a='2'/></rows></root>",
                             "<root><rows><row p:a='1'/></rows></root>", "<root>&unknown;</root>"}) {
        const Error error = errorOf([&] { collection->Load(text); });
        EXPECT_EQ(error.number(), 1002) << text;
        EXPECT_EQ(error.source(), "CashFlow");
        EXPECT_EQ(error.description(), "<Z7.CW.GL.CashFlow.00017>");
        EXPECT_EQ(collection->Count(), 1);
        EXPECT_EQ(collection->Item(1), row);
    }
}

TEST_F(XmlForm, FieldsLoseTheirNamespacePrefix) {
    collection->Load("<root xmlns:p='urn:p'><rows><row p:md='1' mc='2'/></rows></root>");
    ASSERT_EQ(collection->Count(), 1);
    EXPECT_EQ(collection->Item(1)->Fields(), (std::vector<std::string>{"md", "mc"}));
    EXPECT_EQ(collection->Item(1)->Item("md"), Variant("1"));
}

TEST_F(XmlForm, TwoAttributesOfOneBaseNameEndTheLoadAfterTheListWasEmptied) {
    const auto old = addRow();
    EXPECT_ERROR(collection->Load("<root xmlns:p='urn:p'><rows><row a='1'/><row p:x='1' x='2'/></rows></root>"),
                 errors::keyExists);
    ASSERT_EQ(collection->Count(), 1);
    EXPECT_EQ(collection->Item(1)->Fields(), std::vector<std::string>{"a"});
}

TEST_F(XmlForm, TakesEveryRowsElementBelowTheRoot) {
    collection->Load("<any iperiod='9'><struct><row x='0'/></struct><rows><row n='1'/><other/></rows>"
                     "<rows><row n='2'/><deep><row n='3'/></deep></rows></any>");
    ASSERT_EQ(collection->Count(), 2);
    EXPECT_EQ(collection->Item(2)->Item("n"), Variant("2"));
    EXPECT_EQ(collection->iPeriod(), 1);
}

TEST_F(XmlForm, ARowThatEndsWithinTheFieldsOfTheSchemaHasOnlyItsOwn) {
    collection->Load(
        "<root><rows><row key='a' RowGuid='b' iYear='2013'/><row key='c' RowGuid='d'/><row/></rows></root>");
    ASSERT_EQ(collection->Count(), 3);
    EXPECT_EQ(collection->Item(1)->Count(), 3);
    EXPECT_EQ(collection->Item(2)->Count(), 2);
    EXPECT_EQ(collection->Item(2)->Fields(), (std::vector<std::string>{"key", "RowGuid"}));
    EXPECT_ERROR(collection->Item(2)->Item("iYear"), errors::unknownRowField);
    EXPECT_EQ(collection->Item(3)->Count(), 0);
}

TEST_F(XmlForm, FieldsThatTheSchemaDoesNotKnowTravelAlong) {
    collection->Load("<root><rows><row unknown='1' 借='2'/></rows></root>");
    EXPECT_EQ(collection->Item(1)->Save(), "<row unknown='1' 借='2' />\r\n");
}

TEST_F(XmlForm, RefusesASourceOfTheWrongKind) {
    const auto row = addRow();
    EXPECT_ERROR(row->Load(std::string("<row/>")), errors::typeMismatch);
    EXPECT_EQ(row->Count(), 42);
    EXPECT_ERROR(collection->Load(XmlDocument::load("<root/>")->documentElement()), errors::typeMismatch);
    EXPECT_EQ(collection->Count(), 1);
}

TEST_F(XmlForm, LoadOfARowMarksItsParent) {
    const auto row = collection->CreateCFObject();
    row->objParent(collection);
    row->Load(XmlDocument::load("<row a='1'/>")->documentElement());
    EXPECT_TRUE(collection->Changed());
    EXPECT_ERROR(row->Item("md"), 1000);
}

TEST_F(XmlForm, TakesAnEncodingDeclarationNotAtItsWord) {
    collection->Load("<?xml version='1.0' encoding='gb2312'?><root><rows><row a='现金'/></rows></root>");
    EXPECT_EQ(collection->Item(1)->Item("a"), Variant("现金"));
}

#ifndef _WIN32
TEST_F(XmlForm, CarriesAnyPrintableText) {
    EXPECT_TRUE(rc::check("texts through XML", [] {
        static const std::vector<std::string> pieces{"a", "'",   "\"", "<", ">", "&", "&amp;", "借",   "é", "😀",
                                                     " ", "]]>", ";",  "#", "{", "=", "/>",    "<!--", "\\"};
        const auto picks =
            *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, pieces.size()));
        std::string text;
        for (const std::size_t pick : picks) {
            text += pieces[pick];
        }
        const auto from = CashFlowCollection::Create();
        const auto row = from->CreateCFObject();
        row->SetValue("cDefine1", text);
        from->Add(row);
        const auto to = CashFlowCollection::Create();
        to->Load(from->Save());
        RC_ASSERT(to->Count() == 1);
        RC_ASSERT(toTextOrEmpty(to->Item(1)->Item("cDefine1")) == text);
    }));
}
#endif

TEST_F(XmlForm, CarriesManyRows) {
    for (int i = 0; i < 3000; ++i) {
        addRow()->SetValue("inid", i16(i));
    }
    const auto copy = CashFlowCollection::Create();
    copy->Load(collection->Save());
    ASSERT_EQ(copy->Count(), 3000);
    EXPECT_EQ(copy->Item(3000)->Item("inid"), Variant("2999"));
}

TEST_F(XmlForm, OfACollectionOfAnySizeIsReadBack) {
    constexpr int length = 50000; // more attributes than one document may have
    const std::string empty = collection->Save();
    std::string saved = empty.substr(0, empty.find("</rows>"));
    const auto row = collection->CreateCFObject();
    row->SetValue("cDefine1", "a/>\r\n'b");
    for (int i = 0; i < length; ++i) {
        row->SetValue("md", static_cast<std::int32_t>(i));
        saved += row->Save();
    }
    collection->Load(saved + "</rows></root>");
    ASSERT_EQ(collection->Count(), length);
    for (const int place : {1, 2, 14000, 30000, length}) {
        EXPECT_EQ(collection->Item(place)->Item("md"), Variant(std::to_string(place - 1)));
    }
    EXPECT_EQ(collection->Item(length)->Item("cDefine1"), Variant("a/> 'b")) << "a line end in a value becomes a blank";
    EXPECT_EQ(collection->Item(length)->Count(), 42);
}

TEST_F(XmlForm, OfALongCollectionWithABrokenRowLeavesTheRows) {
    for (int i = 0; i < 16000; ++i) {
        addRow();
    }
    std::string broken = collection->Save();
    broken[broken.size() - 100] = '<';
    const auto first = collection->Item(1);
    EXPECT_ERROR(collection->Load(broken), errors::badCollectionXml);
    EXPECT_EQ(collection->Item(1), first);
    EXPECT_EQ(collection->Count(), 16000);
}

TEST_F(XmlForm, CarriesMoreThanSixtyFourMebibytes) {
    const std::string digest(12000, 'x');
    for (int i = 0; i < 6000; ++i) {
        addRow()->SetValue("cDefine1", digest);
    }
    const std::string text = collection->Save();
    EXPECT_GT(text.size(), std::size_t{64} << 20U);
    collection->Load(text);
    ASSERT_EQ(collection->Count(), 6000);
    EXPECT_EQ(collection->Item(6000)->Item("cDefine1"), Variant(digest));
}

} // namespace
} // namespace z7::cashflow::test
