#include "data/DataTest.h"
#include "z7cashflow/statements/itemStatements.h"

namespace z7::cashflow::test {
namespace {

class CashItems : public DataTest {
protected:
    CashItems() {
        data.CashFlowTemplateSave = [this](const std::string& message, std::int32_t style, bool& bCancel) {
            EXPECT_FALSE(bCancel);
            events.push_back(message + "|" + std::to_string(style) + " after " +
                             (database.trace().empty() ? "" : database.trace().back()));
            bCancel = cancel;
        };
    }

    const std::string itemName = sent(statements::itemName, "01");
    const std::string templateOf = sent(statements::itemTemplate, 2011, "1001", true);
    const std::string draftOf = sent(statements::draftItem, "u1", 3);
    const std::string editTemplate = sent(statements::itemTemplatesNewestFirst, "1001", true);
    const std::vector<std::string> templateColumns{"iyear",     "bDataStyle", "cDataSource", "bdir",
                                                   "cItemCode", "dStartDate", "dEndDate",    "iID"};
    std::vector<std::string> events;
    bool cancel = false;
};

TEST_F(CashItems, AnItemHasItsNameAndAnUnknownOneNone) {
    database.answerInTurn(itemName, {one("citemname", "Sales"), none("citemname")});
    EXPECT_EQ(data.GetCFItemName(connection, "01"), "Sales");
    EXPECT_EQ(data.GetCFItemName(connection, "01"), "");
    expectStatements({"own(0,1,3): " + itemName, "own(0,1,3): " + itemName});
}

TEST_F(CashItems, NameThatIsNullIsAnInvalidNull) {
    database.answer(itemName, one("citemname", Null{}));
    EXPECT_ERROR(data.GetCFItemName(connection, "01"), errors::invalidNull);
    EXPECT_EQ(database.openRecordsets(), Lines{});
}

TEST_F(CashItems, TemplateOfAnAccountAndSide) {
    database.answer(templateOf, {templateColumns,
                                 {{i16(2011), i16(0), "1001", true, "01", Date(3.0), Date(4.0), std::int32_t{7}},
                                  {i16(2011), i16(0), "1001", true, "02", Date(3.0), Null{}, std::int32_t{9}}},
                                 {}});
    std::string code = "before";
    EXPECT_TRUE(data.GetCashFlowTemplate(connection, "1001", true, Date(41279.0), code));
    EXPECT_EQ(code, "01");
    expectStatements({"own(0,1,3): " + templateOf});
}

TEST_F(CashItems, TemplateOfTheOtherSideThatIsNotThere) {
    const std::string credit = sent(statements::itemTemplate, 2011, "1001", false);
    database.answer(credit, none("cItemCode"));
    std::string code = "before";
    EXPECT_FALSE(data.GetCashFlowTemplate(connection, "1001", false, Date(2.0), code));
    EXPECT_EQ(code, "");
    expectStatements({"own(0,1,3): " + credit});
}

TEST_F(CashItems, TemplateWithoutAnItemIsAnInvalidNull) {
    database.answer(templateOf, one("cItemCode", Null{}));
    std::string code;
    EXPECT_ERROR(data.GetCashFlowTemplate(connection, "1001", true, Date(2.0), code), errors::invalidNull);
}

TEST_F(CashItems, ItemOfTheUsersDraft) {
    database.answerInTurn(draftOf, {one("cCashItem", "01"), one("cCashItem", Null{}), none("cCashItem")});
    std::string item = "before";
    EXPECT_TRUE(data.GetCashFlowFromDraft(connection, 3, item));
    EXPECT_EQ(item, "01");
    EXPECT_TRUE(data.GetCashFlowFromDraft(connection, 3, item));
    EXPECT_EQ(item, "");
    item = "before";
    EXPECT_FALSE(data.GetCashFlowFromDraft(connection, 3, item));
    EXPECT_EQ(item, "");
    expectStatements({"own(0,1,3): " + draftOf, "own(0,1,3): " + draftOf, "own(0,1,3): " + draftOf});
}

TEST_F(CashItems, ItemOfATemplateValidOnADate) {
    const std::string text = sent(statements::itemTemplateOnDate, "1001", true, "2013-01-05", "2013-01-05");
    database.answerInTurn(text, {one("cItemcode", "01"), none("cItemcode"), one("cItemcode", "")});
    database.answer(itemName, one("citemname", "Sales"));
    std::string code = "before";
    std::string name = "before";
    EXPECT_FALSE(data.GetCashFlowItem(connection, "1001", true, Date(41279.0), code, name));
    EXPECT_EQ(code, "01");
    EXPECT_EQ(name, "Sales");
    for (int i = 0; i < 2; ++i) {
        code = name = "before";
        EXPECT_FALSE(data.GetCashFlowItem(connection, "1001", true, Date(41279.0), code, name));
        EXPECT_EQ(code, "");
        EXPECT_EQ(name, "before");
    }
    expectStatements({"own(0,1,3): " + text, "own(0,1,3): " + itemName, "own(0,1,3): " + text, "own(0,1,3): " + text});
}

TEST_F(CashItems, ItemOfATemplateOnTheCreditSide) {
    const std::string text = sent(statements::itemTemplateOnDate, "1001", false, "2013-01-05", "2013-01-05");
    database.answer(text, none("cItemcode"));
    std::string code;
    std::string name;
    EXPECT_FALSE(data.GetCashFlowItem(connection, "1001", false, Date(41279.0), code, name));
    expectStatements({"own(0,1,3): " + text});
}

TEST_F(CashItems, ANewTemplateIsAddedAndReported) {
    database.answer(editTemplate, {templateColumns, {}, {}});
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "1001", true, "01", Date(41279.0)));
    EXPECT_EQ(database.trace(), (Lines{"own(2,2,3): " + editTemplate, "AddNew", "bDataStyle = 0", "cDataSource = 1001",
                                       "bDir = 1", "cItemCode = 01", "dStartDate = 2013-01-05", "Update", "Close"}));
    EXPECT_EQ(events, Lines{"<Z7.CW.GL.CashFlow.00064>|64 after Update"});
}

TEST_F(CashItems, ANewTemplateOfTheCreditSide) {
    const std::string credit = sent(statements::itemTemplatesNewestFirst, "1001", false);
    database.answer(credit, {templateColumns, {}, {}});
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "1001", false, "01", Date(41279.0)));
    EXPECT_EQ(database.statements(), Lines{"own(2,2,3): " + credit});
    EXPECT_EQ(std::count(database.trace().begin(), database.trace().end(), "bDir = 0"), 1);
}

TEST_F(CashItems, ATemplateThatIsThereIsReplacedAfterAQuestion) {
    database.answer(editTemplate, {templateColumns,
                                   {{i16(2011), i16(0), "1001", true, "01", Date(3.0), Null{}, std::int32_t{9}},
                                    {i16(2011), i16(0), "1001", true, "02", Date(3.0), Null{}, std::int32_t{7}}},
                                   {}});
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "1001", true, "01", Date(41279.0)));
    EXPECT_EQ(database.trace(), (Lines{"own(2,2,3): " + editTemplate, "bDataStyle = 0", "cDataSource = 1001",
                                       "bDir = True", "cItemCode = 01", "Update", "Close"}));
    EXPECT_EQ(events, (Lines{"<Z7.CW.GL.CashFlow.00065>|32 after own(2,2,3): " + editTemplate,
                             "<Z7.CW.GL.CashFlow.00064>|64 after Update"}));
}

TEST_F(CashItems, ANoToTheQuestionChangesNothing) {
    database.answer(editTemplate, one("cItemCode", "02"));
    cancel = true;
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "1001", true, "01", Date(41279.0)));
    EXPECT_EQ(database.trace(), (Lines{"own(2,2,3): " + editTemplate, "Close"}));
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(CashItems, TheNoticeCannotBeCancelled) {
    database.answer(editTemplate, {templateColumns, {}, {}});
    cancel = true;
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "1001", true, "01", Date(41279.0)));
    EXPECT_EQ(std::count(database.trace().begin(), database.trace().end(), "Update"), 1);
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(CashItems, WithoutAListenerATemplateIsSavedAllTheSame) {
    data.CashFlowTemplateSave = nullptr;
    database.answer(editTemplate, {templateColumns, {std::vector<Variant>(8)}, {}});
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "1001", true, "01", Date(41279.0)));
    EXPECT_EQ(std::count(database.trace().begin(), database.trace().end(), "Update"), 1);
}

TEST_F(CashItems, WithoutAnItemOrAnAccountNothingHappens) {
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "1001", true, "", Date(41279.0)));
    EXPECT_FALSE(data.SaveCashFlowTemplate(connection, "", true, "01", Date(41279.0)));
    expectStatements({});
    EXPECT_EQ(events, Lines{});
}

TEST_F(CashItems, AFailedUpdateIsTheCallersErrorAndNotReported) {
    database.answer(editTemplate, {templateColumns, {}, {}});
    database.failUpdate(Error(2627, "server", "duplicate key"));
    const Error error =
        errorOf([&] { (void)data.SaveCashFlowTemplate(connection, "1001", true, "01", Date(41279.0)); });
    EXPECT_EQ(error.number(), 2627);
    EXPECT_EQ(error.source(), "server");
    EXPECT_EQ(events, Lines{});
}

TEST_F(CashItems, AFailingStatementIsTheCallersError) {
    database.failPrefix("select", Error(4060, "server", "cannot open"));
    std::string text;
    std::string name;
    EXPECT_ERROR(data.GetCFItemName(connection, "01"), 4060);
    EXPECT_ERROR(data.GetCashFlowTemplate(connection, "1001", true, Date(2.0), text), 4060);
    EXPECT_ERROR(data.GetCashFlowFromDraft(connection, 3, text), 4060);
    EXPECT_ERROR(data.GetCashFlowItem(connection, "1001", true, Date(2.0), text, name), 4060);
    EXPECT_ERROR(data.SaveCashFlowTemplate(connection, "1001", true, "01", Date(2.0)), 4060);
}

TEST_F(CashItems, QuotesGoDownAsTheyCome) {
    database.answerPrefix("select", none("x"));
    std::string text;
    (void)data.GetCFItemName(connection, "0'1");
    (void)data.GetCashFlowTemplate(connection, "10'01", true, Date(2.0), text);
    login->answers.userId = "u'1";
    (void)data.GetCashFlowFromDraft(connection, i16(-3), text);
    EXPECT_TRUE(database.texts()[0].ends_with("citemcode=N'0'1'"));
    EXPECT_NE(database.texts()[1].find("cDataSource=N'10'01' and bdir =1"), std::string::npos);
    EXPECT_EQ(database.texts()[2], "select cCashItem from GL_VouchDraft where cUserId=N'u'1' and inid=-3");
}

} // namespace
} // namespace z7::cashflow::test
