#include "doubles/ContextGuard.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::test {
namespace {

std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

const std::string columns =
    "RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,md,mc,ccode,md_f,mc_f,nd_s,nc_s,"
    "cdept_id,cperson_id,ccus_id,csup_id,citem_class,citem_id,cDefine1,cDefine2,cDefine3,"
    "cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,"
    "cDefine13,cDefine14,cDefine15,dbill_date,cDefine16";

class InsertStatement : public LoginTest {
protected:
    InsertStatement() {
        collection->UpdateCol(1, 2, 5, Date(41279.0));
        row = collection->CreateCFObject();
    }

    std::string sql() const { return row->InsertSql("gl_cashtable", collection->CFStruct()); }
    /// The text of a field in the statement.
    std::string textOf(const std::string& field, const Variant& value) {
        CashFlowStruct structure;
        structure.Add(collection->CFStruct().Item(field));
        row->SetValue(field, value);
        const std::string statement = row->InsertSql("t", structure);
        const std::string head = "insert into t (" + field + ") values(";
        EXPECT_EQ(statement.substr(0, head.size()), head);
        EXPECT_TRUE(statement.ends_with(")")) << statement;
        return statement.substr(head.size(), statement.size() - head.size() - 1);
    }

    const std::shared_ptr<CashFlowCollection> collection = CashFlowCollection::Create();
    std::shared_ptr<CashFlow> row;
};

TEST_F(InsertStatement, OfANewRow) {
    EXPECT_EQ(sql(), "insert into gl_cashtable (" + columns + ") values(N'" + GuidSequence::text(1) +
                         "',2013,1,2,N'',5,Null,N'',0,0,N'',0,0,0,0,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,"
                         "Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,N'2013-01-05',Null)");
}

TEST_F(InsertStatement, OfAFullRow) {
    const std::vector<std::pair<const char*, Variant>> values{{"RowGuid", "G1"},
                                                              {"iYear", i16(2012)},
                                                              {"csign", "记"},
                                                              {"inid", i16(3)},
                                                              {"cCashItem", "01"},
                                                              {"cCashItemName", "n"},
                                                              {"md", 100.5},
                                                              {"mc", "1,234.50"},
                                                              {"ccode", "1001"},
                                                              {"ccode_name", "cash"},
                                                              {"md_f", 1e-7},
                                                              {"mc_f", i16(-2)},
                                                              {"nd_s", 0.1 + 0.2},
                                                              {"nc_s", "3"},
                                                              {"cdept_id", "D"},
                                                              {"cperson_id", ""},
                                                              {"ccus_id", "C"},
                                                              {"csup_id", "S"},
                                                              {"citem_class", "98"},
                                                              {"citem_id", "I"},
                                                              {"ccashitem_id", "never"},
                                                              {"cDefine1", "d1"},
                                                              {"cDefine2", true},
                                                              {"cDefine3", i16(7)},
                                                              {"cDefine4", Date(41279)},
                                                              {"cDefine5", "5.5"},
                                                              {"cDefine6", Date(41279.5)},
                                                              {"cDefine7", 7.25},
                                                              {"cDefine8", "d8"},
                                                              {"cDefine9", "d9"},
                                                              {"cDefine10", "d10"},
                                                              {"cDefine11", "d11"},
                                                              {"cDefine12", "d12"},
                                                              {"cDefine13", "d13"},
                                                              {"cDefine14", "d14"},
                                                              {"cDefine15", i16(15)},
                                                              {"cDefine16", i16(16)}};
    for (const auto& [field, value] : values) {
        row->SetValue(field, value);
    }
    EXPECT_EQ(sql(),
              "insert into gl_cashtable (" + columns +
                  ") values(N'G1',2012,1,2,N'记',5,3,N'01',100.5,1234.50,N'1001',0.0000001,-2,0.3,3,N'D',N'',N'C',"
                  "N'S',N'98',N'I',N'd1',N'True',N'7',N'2013-01-05',5.5,N'2013-01-05 12:00:00',7.25,N'd8',N'd9',"
                  "N'd10',N'd11',N'd12',N'd13',N'd14',15,N'2013-01-05',16)");
}

TEST_F(InsertStatement, NamesTheTableAsItComes) {
    EXPECT_TRUE(row->InsertSql("dbo.[My Table]", collection->CFStruct())
                    .starts_with("insert into dbo.[My Table] (RowGuid,iYear,"));
}

TEST_F(InsertStatement, WritesTheContextsYearWhereTheRowHasNone) {
    for (const Variant& none : {Variant(), Variant(""), Variant("0"), Variant(i16(0)), Variant(0.0)}) {
        EXPECT_EQ(textOf("iYear", none), "2013");
    }
    modPublic::SetIYear(2010);
    EXPECT_EQ(textOf("iYear", Null{}), "2010");
    EXPECT_EQ(textOf("iYear", "2012"), "2012");
    EXPECT_EQ(textOf("iYear", i16(2012)), "2012");
    EXPECT_EQ(textOf("iYear", "2,012"), "2,012");
}

TEST_F(InsertStatement, NullTakesTheDefaultOrNull) {
    EXPECT_EQ(textOf("md", Null{}), "0");
    EXPECT_EQ(textOf("inid", Null{}), "Null");
    EXPECT_EQ(textOf("cCashItem", Null{}), "N''");
    EXPECT_EQ(textOf("cDefine1", Null{}), "Null");
    EXPECT_EQ(textOf("cDefine4", Null{}), "Null");
    EXPECT_EQ(textOf("iPeriod", Null{}), "Null");
}

TEST_F(InsertStatement, AnEmptyTextIsNullOnlyInANumber) {
    EXPECT_EQ(textOf("cDefine1", ""), "N''");
    EXPECT_EQ(textOf("cCashItem", ""), "N''");
    EXPECT_EQ(textOf("dbill_date", ""), "N''");
    EXPECT_EQ(textOf("md", ""), "Null");
    EXPECT_EQ(textOf("inid", ""), "Null");
    EXPECT_EQ(textOf("cDefine5", ""), "Null");
}

TEST_F(InsertStatement, TheFirstOfJanuary1900MeansNoDate) {
    EXPECT_EQ(textOf("dbill_date", Date(2.0)), "Null");
    EXPECT_EQ(textOf("dbill_date", Date(2.75)), "Null");
    EXPECT_EQ(textOf("dbill_date", "1900-01-01"), "Null");
    EXPECT_EQ(textOf("cDefine1", "1900-01-01"), "Null");
    EXPECT_EQ(textOf("cDefine1", "1900/1/1"), "Null");
    EXPECT_EQ(textOf("cDefine1", " 1900.1.1 23:59:59 "), "Null");
    EXPECT_EQ(textOf("cCashItem", "1900-1-1"), "Null");
    EXPECT_EQ(textOf("iYear", "1900-01-01"), "Null");
    EXPECT_EQ(textOf("md", Date(2.0)), "Null");
}

TEST_F(InsertStatement, OtherDatesAreWrittenAsTheyStand) {
    EXPECT_EQ(textOf("dbill_date", Date(1.0)), "N'1899-12-31'");
    EXPECT_EQ(textOf("dbill_date", Date(3.0)), "N'1900-01-02'");
    EXPECT_EQ(textOf("dbill_date", Date(41279.5)), "N'2013-01-05 12:00:00'");
    EXPECT_EQ(textOf("cDefine1", "2013/1/5"), "N'2013/1/5'");
    EXPECT_EQ(textOf("cDefine1", "01/01/1900"), "N'01/01/1900'");
}

TEST_F(InsertStatement, ANumberIsNeverADate) {
    EXPECT_EQ(textOf("mc", i16(2)), "2");
    EXPECT_EQ(textOf("mc", 2.0), "2");
    EXPECT_EQ(textOf("cDefine5", std::int32_t{2}), "2");
    EXPECT_EQ(textOf("mc", "2"), "2");
}

TEST_F(InsertStatement, OnlyNumbersThatMayNotBeNullLoseTheirCommas) {
    EXPECT_EQ(textOf("md", "1,234,567.50"), "1234567.50");
    EXPECT_EQ(textOf("iNo_id", "1,0"), "10");
    EXPECT_EQ(textOf("md", ","), "Null");
    EXPECT_EQ(textOf("cDefine5", "1,234.50"), "1,234.50");
    EXPECT_EQ(textOf("inid", "1,2"), "1,2");
    EXPECT_EQ(textOf("cDefine1", "1,2"), "N'1,2'");
}

TEST_F(InsertStatement, QuotesInValuesAreNotDoubled) {
    EXPECT_EQ(textOf("cCashItem", "O'Brien"), "N'O'Brien'");
    EXPECT_EQ(textOf("md", "1); drop table t --"), "1); drop table t --");
    EXPECT_EQ(textOf("cDefine1", "a\r\n\"借\""), "N'a\r\n\"借\"'");
}

TEST_F(InsertStatement, ComparesTwoNamesWithoutRegardToCase) {
    const auto document = XmlDocument::load("<row IYEAR='' CCashItem_Id='x' Type='5,0'/>");
    row->Load(document->documentElement());
    CashFlowStruct structure;
    for (const char* name : {"IYEAR", "CCashItem_Id", "Type"}) {
        auto item = std::make_shared<CashFlowStructItem>();
        item->FieldName = name;
        item->DataType = "Num"; // not "num", hence a text
        item->DefaultValue = "def";
        item->isSave = true;
        structure.Add(item);
    }
    EXPECT_EQ(row->InsertSql("t", structure), "insert into t (IYEAR,Type) values(2013,N'5,0')");
    row->SetValue("Type", Null{});
    EXPECT_EQ(row->InsertSql("t", structure), "insert into t (IYEAR,Type) values(2013,N'def')");
}

TEST_F(InsertStatement, NeedsEveryFieldThatIsWritten) {
    const auto document = XmlDocument::load("<row RowGuid='G'/>");
    row->Load(document->documentElement());
    const Error error = errorOf([&] { (void)sql(); });
    EXPECT_EQ(error.number(), 1000);
    EXPECT_EQ(error.source(), "CashFlow");
}

TEST_F(InsertStatement, DoesNotAskForFieldsThatAreNotWritten) {
    std::string attributes;
    for (const std::string& field : collection->CFStruct().Fields()) {
        if (field != "key" && field != "cCashItemName" && field != "ccode_name" && field != "ccashitem_id") {
            attributes += field + "='1' ";
        }
    }
    row->Load(XmlDocument::load("<row " + attributes + "/>")->documentElement());
    EXPECT_TRUE(sql().starts_with("insert into gl_cashtable (" + columns + ") values(N'1',1,1,1,N'1',1,"));
}

TEST_F(InsertStatement, OfAnEmptyCollectionIsTheDeleteAlone) {
    EXPECT_EQ(collection->InsertSql("gl_cashtable", collection->CFStruct()),
              "delete from gl_cashtable where Iperiod = 1 and ISignSeq=2 and INo_id=5");
}

TEST_F(InsertStatement, OfACollectionIsTheDeleteAndItsRows) {
    collection->Add(row);
    const auto second = collection->CreateCFObject();
    second->SetValue("cDefine1", ";");
    collection->Add(second);
    EXPECT_EQ(collection->InsertSql("gl_v_cashtable", collection->CFStruct()),
              "delete from gl_v_cashtable where Iperiod = 1 and ISignSeq=2 and INo_id=5;" +
                  row->InsertSql("gl_v_cashtable", collection->CFStruct()) + ";" +
                  second->InsertSql("gl_v_cashtable", collection->CFStruct()));
}

TEST_F(InsertStatement, OfACollectionUsesItsOwnNumbersAndNotTheRows) {
    collection->Add(row);
    collection->iPeriod(12);
    collection->isignseq(i16(-1));
    collection->iNo_id(0);
    EXPECT_TRUE(collection->InsertSql("t", collection->CFStruct())
                    .starts_with("delete from t where Iperiod = 12 and ISignSeq=-1 and INo_id=0;insert into t ("));
}

TEST_F(InsertStatement, OfACollectionOverflowsBeyondSixteenBits) {
    collection->UpdateCol(1, 2, 40000, Date(41279.0));
    EXPECT_ERROR(collection->InsertSql("t", collection->CFStruct()), errors::overflow);
    EXPECT_EQ(textOf("iNo_id", std::int32_t{40000}), "40000");
}

} // namespace
} // namespace z7::cashflow::test
