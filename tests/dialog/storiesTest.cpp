// Complete stories on the embedded database: what an accountant does with the dialog, and what is stored afterwards.

#include "dialog/RecordingForm.h"
#include "outside/CompanyTest.h"
#include "z7cashflow/dialog/clsMain.h"

namespace z7::cashflow::test {
namespace {

/// Opens sessions on the company's database and counts their statements.
class CompanyConnections final : public ConnectionFactory {
public:
    [[nodiscard]] std::unique_ptr<Connection> create(const std::string& /*connectionString*/) override {
        auto made = std::make_unique<sqlite::Connection>();
        made->onStatement([count = count](int, const std::string& text) { count->push_back(text); });
        return made;
    }
    std::shared_ptr<Lines> count = std::make_shared<Lines>();
};

class Stories : public CompanyTest {
protected:
    Stories() {
        login->connectionString = connection.ConnectionString();
        modPublic::context().dialogFactory = factory;
        modPublic::context().connectionFactory = connections;
        for (const char* key : {"58", "59", "60", "61", "62"}) {
            login->texts->texts[std::string("Z7.CW.GL.CashFlow.000") + key] = std::string("t") + key;
        }
        entry.Login(login);
        modPublic::context().literalPolicy = statements::LiteralPolicy::wholeLiterals;
    }
    void show(const std::function<void(RecordingForm&)>& user, std::int32_t number = 6) {
        factory->user = user;
        entry.ShowCashFlow("gl_accvouch", 1, number == 6 ? 1 : 2, number, Date(41279.0));
    }
    void save() {
        auto rows = entry.CashFlowCol();
        connection.BeginTrans();
        EXPECT_TRUE(gl.SaveCashFlowCol(connection, "gl_accvouch", 1, 1, 6, &rows));
        connection.CommitTrans();
    }
    static std::string line(RecordingForm& form, std::int32_t row) {
        const std::string text = form.cells.line(row);
        return text.substr(0, text.rfind('|')); // without the key
    }
    Lines boxes() const {
        Lines shown;
        for (const std::string& entryOfLog : messages->log) {
            if (entryOfLog.starts_with("Show ")) {
                shown.push_back(entryOfLog.substr(5, entryOfLog.find('|') - 5));
            }
        }
        return shown;
    }
    Lines widths() {
        return company.records(
            "select cfieldnum,ilength from GL_myoutput where cauth=N'frmCashFlow' order by cfieldnum");
    }

    std::shared_ptr<RecordingDialogFactory> factory = std::make_shared<RecordingDialogFactory>();
    std::shared_ptr<CompanyConnections> connections = std::make_shared<CompanyConnections>();
    clsMain entry;
};

TEST_F(Stories, APaymentIsSplitOverTwoItemsAndStored) {
    show([this](RecordingForm& form) {
        EXPECT_EQ(line(form, 1), "a & b|6001|贷|250.50|01|销售商品收到的现金|2");
        EXPECT_TRUE(form.cells.type(1, 3, "200"));
        form.press("cmdOk");
        EXPECT_EQ(form.unloads, 0) << "the rows do not cover the voucher";
        form.key(116);
        factory->picks.choices = {0, 1};
        form.cells.reference(2, 1);
        EXPECT_EQ(line(form, 2), "||贷|50.50|||2");
        EXPECT_TRUE(form.cells.leaveCell());
        EXPECT_EQ(line(form, 2), "a & b|6001|贷|50.50|||2");
        form.cells.reference(2, 4);
        EXPECT_TRUE(form.cells.leaveCell());
        EXPECT_EQ(line(form, 2), "a & b|6001|贷|50.50|02|other receipts|2");
        form.key(117);
        EXPECT_EQ(form.unloads, 1);
    });
    EXPECT_EQ(factory->picks.shown,
              (Lines{"t58: t59 1000 t60 1500 t61 1500 right t62 1500 right ; 2 6001 0.00 250.50",
                     "<Z7.CW.GL.CashFlow.00036>: <Z7.CW.GL.CashFlow.00035> 1500 <Z7.CW.GL.CashFlow.00036> 4500 ; 01 "
                     "销售商品收到的现金 ; 02 other receipts"}));
    save();
    EXPECT_EQ(company.storedRows(), (Lines{stored("01", "200"), stored("02", "50.5")}));
}

TEST_F(Stories, CancelRestoresTheRowsThatWereOpened) {
    storeRow("02");
    show([](RecordingForm& form) {
        EXPECT_TRUE(form.cells.type(1, 4, "01"));
        form.press("cmdInsert");
        form.press("cmdCancel");
    });
    const auto& rows = *entry.CashFlowCol();
    EXPECT_EQ(rows.Count(), 1);
    EXPECT_EQ(toText(rows.Item(1)->Item("cCashItem")), "02");
    EXPECT_FALSE(rows.Changed());
    save();
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")});
}

TEST_F(Stories, TheCloseBoxIsACancel) {
    show([](RecordingForm& form) {
        EXPECT_TRUE(form.cells.type(1, 4, "02"));
        form.closeBox();
    });
    EXPECT_EQ(toText(entry.CashFlowCol()->Item(1)->Item("cCashItem")), "01");
    EXPECT_EQ(widths().size(), 8U);
}

TEST_F(Stories, RegenerationBringsTheVouchersOwnRowsBack) {
    storeRow("02");
    messages->answers = {6};
    show([](RecordingForm& form) {
        EXPECT_EQ(form.cells.TextMatrix(1, 4), "02");
        form.press("cmdAutoGetData");
        EXPECT_EQ(form.cells.TextMatrix(1, 4), "01") << "of the account's template";
        form.press("cmdOk");
    });
    save();
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
}

TEST_F(Stories, ATemplateIsStoredAfterItsQuestionAndServesGeneration) {
    company.execute("delete from GL_CashItemDataSource");
    storeRow("02");
    show([this](RecordingForm& form) {
        form.press("cmdTemplate");
        EXPECT_EQ(boxes(), Lines{"<Z7.CW.GL.CashFlow.00064>"}) << "a new template asks nothing";
        messages->log.clear();
        EXPECT_TRUE(form.cells.type(1, 4, "01"));
        messages->answers = {7};
        form.press("cmdTemplate");
        EXPECT_EQ(boxes(), Lines{"<Z7.CW.GL.CashFlow.00065><Z7.CW.GL.CashFlow.00038>"});
        messages->log.clear();
        messages->answers = {6};
        form.press("cmdCancel");
    });
    EXPECT_EQ(company.records("select cDataSource,cItemCode,bDir from GL_CashItemDataSource"),
              Lines{"cDataSource=6001 cItemCode=02 bdir=False"});
    company.execute("delete from gl_cashtable");
    clsMain fresh;
    EXPECT_TRUE(fresh.InitCashFlow("gl_accvouch", 1, 1, 6, Date(41279.0)));
    EXPECT_EQ(toText(fresh.CashFlowCol()->Item(1)->Item("cCashItem")), "02");
}

TEST_F(Stories, WidthsAreKeptFromShowingToShowingAfterAQuestion) {
    show([](RecordingForm& form) { form.press("cmdCancel"); });
    EXPECT_EQ(widths().size(), 8U);
    EXPECT_EQ(boxes(), Lines{}) << "the first close does not ask";
    show([](RecordingForm& form) {
        form.cells.ColWidth(1, 1660);
        form.press("cmdCancel");
    });
    EXPECT_EQ(boxes(), Lines{}) << "60 twips are no change";
    for (const std::int32_t answer : {7, 6}) {
        messages->answers = {answer};
        show([](RecordingForm& form) {
            form.cells.ColWidth(1, 1700);
            form.press("cmdOk");
        });
    }
    EXPECT_EQ(boxes().size(), 2U);
    show([](RecordingForm& form) {
        EXPECT_EQ(form.cells.ColWidth(1), 1700);
        form.press("cmdCancel");
    });
    EXPECT_EQ(widths()[1], "cfieldnum=1 ilength=1700");
}

TEST_F(Stories, WidthsThatAnotherSessionBlocksCauseOneMessageAndTheDialogCloses) {
    show([this](RecordingForm& form) {
        connection.BeginTrans();
        form.press("cmdCancel");
        EXPECT_EQ(form.unloads, 1);
    });
    connection.RollbackTrans();
    EXPECT_EQ(boxes().size(), 1U);
    EXPECT_EQ(widths(), Lines{});
}

TEST_F(Stories, ATemplateThatAnotherSessionBlocksIsTheDatabasesError) {
    show([this](RecordingForm& form) {
        connection.BeginTrans();
        EXPECT_NE(errorNumberOf([&] { form.press("cmdTemplate"); }), 0);
        EXPECT_EQ(boxes(), Lines{"<Z7.CW.GL.CashFlow.00065><Z7.CW.GL.CashFlow.00038>"})
            << "the question, and no notice of a template that was not saved";
        connection.RollbackTrans();
        form.press("cmdCancel");
    });
    EXPECT_EQ(company.records("select count(*) as n from GL_CashItemDataSource"), Lines{"n=1"});
}

TEST_F(Stories, WrongInputIsRefusedWithItsMessageAndNothingIsLost) {
    show([this](RecordingForm& form) {
        EXPECT_FALSE(form.cells.type(1, 3, "abc"));
        EXPECT_FALSE(form.cells.type(1, 1, "1001")) << "a cash account while the option is off";
        EXPECT_FALSE(form.cells.type(1, 1, "9999"));
        EXPECT_FALSE(form.cells.type(1, 4, "99"));
        EXPECT_EQ(boxes(), (Lines{"<Z7.CW.GL.CashFlow.00049>", "请使用非现金流量科目!", "<Z7.CW.GL.CashFlow.00045>",
                                  "<Z7.CW.GL.CashFlow.00054>"}));
        EXPECT_ERROR(form.cells.type(1, 4, "0'1"), errors::statementRefused);
        form.cells.Col(4);
        EXPECT_EQ(line(form, 1), "a & b|6001|贷|250.50|01|销售商品收到的现金|2");
        form.press("cmdOk");
        EXPECT_EQ(form.unloads, 1);
    });
}

TEST_F(Stories, AVoucherWithoutCashShowsItsMessageAlone) {
    company.execute("insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,ccode,md,mc) "
                    "values(2013,1,2,77,1,'2013-01-05',N'6602',1,0)");
    show([](RecordingForm&) { ADD_FAILURE() << "no dialog"; }, 77);
    EXPECT_EQ(boxes(), Lines{"<Z7.CW.GL.CashFlow.00012>"});
}

/// A voucher 1/2/900 with many lines and a stored row for each.
class LongVoucher : public Stories {
protected:
    struct Cost {
        std::size_t statements;
        std::size_t gridCalls;
        friend bool operator==(const Cost&, const Cost&) = default;
        friend std::ostream& operator<<(std::ostream& out, const Cost& cost) {
            return out << cost.statements << " statements, " << cost.gridCalls << " operations of the grid";
        }
    };
    std::shared_ptr<CashFlowCollection> rowsOfLength(int length) {
        auto rows = CashFlowCollection::Create();
        rows->UpdateCol(1, 1, 6, Date(41279.0));
        rows->VoucherTable("gl_accvouch");
        for (int i = 0; i < length; ++i) {
            const auto row = rows->CreateCFObject();
            row->SetValue("inid", std::int16_t{2});
            row->SetValue("ccode", "6001");
            row->SetValue("cCashItem", "01");
            row->SetValue("md", 0.0);
            row->SetValue("mc", 250.5 / length);
            rows->Add(row);
        }
        return rows;
    }
    /// The cost of each user action in a dialog with that many rows.
    std::map<std::string, Cost> costs(int length) {
        std::map<std::string, Cost> found;
        entry.CashFlowCol(rowsOfLength(length));
        show([&](RecordingForm& form) {
            const auto measure = [&](const std::string& name, const std::function<void()>& action) {
                connections->count->clear();
                (void)form.cells.takeCalls();
                action();
                found[name] = {connections->count->size(), form.cells.takeCalls()};
            };
            measure("amount", [&] { form.cells.type(1, 3, "0.2"); });
            measure("item", [&] { form.cells.type(1, 4, "02"); });
            measure("account", [&] { form.cells.type(1, 1, "6001"); });
            measure("line", [&] { form.cells.goToLine(2); });
            measure("insert", [&] { form.press("cmdInsert"); });
            measure("delete", [&] { form.key(46); });
            measure("add", [&] { form.key(116); });
            form.press("cmdCancel");
        });
        return found;
    }
};

TEST_F(LongVoucher, NoKeyPressDoesWorkThatGrowsWithTheRows) {
    const auto few = costs(10);
    const auto many = costs(1000);
    for (const auto& [name, cost] : few) {
        EXPECT_EQ(many.at(name), cost) << name;
    }
    EXPECT_EQ(few.size(), 7U);
}

TEST_F(LongVoucher, OpeningAsksTwoStatementsForEachRowAndAFewMore) {
    for (const int length : {10, 1000}) {
        entry.CashFlowCol(rowsOfLength(length));
        connections->count->clear();
        show([&](RecordingForm& form) {
            EXPECT_EQ(connections->count->size(), static_cast<std::size_t>(2 * length + 6)) << length;
            form.press("cmdCancel");
        });
        EXPECT_EQ(entry.CashFlowCol()->Count(), length);
    }
}

} // namespace
} // namespace z7::cashflow::test
