// The two pop-ups of the grid, with clients of the suite and with the library's own.

#include "dialog/DialogTest.h"
#include "z7cashflow/dialog/DefineRef.h"
#include "z7cashflow/dialog/referenceClients.h"

namespace z7::cashflow::test {
namespace {

/// A reference client of a suite: records its calls and returns what the test sets.
class SuiteServerClient final : public ServerRefClient {
public:
    using Answer = std::function<bool(std::shared_ptr<Recordset>& picked, std::string& errorText)>;
    SuiteServerClient(Lines& log, Answer answer) : log_(log), answer_(std::move(answer)) {}

    void RefName(const std::string& name) override { log_.push_back("RefName " + name); }
    void RefStyle(std::int32_t style) override { log_.push_back("RefStyle " + std::to_string(style)); }
    bool ShowServerRef(std::shared_ptr<ReferenceProvider>& provider, std::shared_ptr<Recordset>& shown,
                       std::shared_ptr<Recordset>& picked, std::string& errorText) override {
        log_.push_back(std::string("ShowServerRef ") + (dynamic_cast<DefineRef*>(provider.get()) ? "DefineRef" : "?"));
        EXPECT_EQ(shown->State(), ObjectState::closed);
        EXPECT_EQ(picked->State(), ObjectState::closed);
        EXPECT_NE(shown, picked);
        return answer_(picked, errorText);
    }

private:
    Lines& log_;
    Answer answer_;
};

class SuiteItemClient final : public ZQReferClient {
public:
    SuiteItemClient(Lines& log, bool ready, std::shared_ptr<Recordset> picked)
        : log_(log), ready_(ready), picked_(std::move(picked)) {}

    void SetRWAuth(const std::string& first, const std::string& second, bool third) override {
        log_.push_back("SetRWAuth [" + first + "][" + second + "]" + (third ? "true" : "false"));
    }
    bool ItemRefInit(std::shared_ptr<Z7Login>& login, bool flag, const std::string& itemClass,
                     std::string& filter) override {
        log_.push_back("ItemRefInit " + login->userId() + (flag ? " true " : " false ") + itemClass + " " + filter);
        return ready_;
    }
    void Show() override { log_.emplace_back("Show"); }
    [[nodiscard]] std::shared_ptr<Recordset> recmx() override { return picked_; }

private:
    Lines& log_;
    bool ready_;
    std::shared_ptr<Recordset> picked_;
};

class References : public DialogTest {
protected:
    References() {
        addTwoRows();
        open();
    }
    void pickLine(const Table& table) {
        database.answer("picked", table);
        useServerClient([](std::shared_ptr<Recordset>& picked, std::string&) {
            picked->Open("picked", ActiveConnection(), CursorType::snapshot, LockType::readOnly);
            return true;
        });
    }
    void useServerClient(SuiteServerClient::Answer answer) {
        factory->makeServerRefClient = [this, answer = std::move(answer)] {
            return std::make_unique<SuiteServerClient>(log_, [answer](auto& picked, auto& text) {
                if (picked) {
                    picked->ActiveConnection(ScriptedDatabase::connectionString());
                }
                return answer(picked, text);
            });
        };
    }
    std::shared_ptr<Recordset> openItems(const Table& table) {
        database.answer("items", table);
        auto items = own_->createRecordset();
        items->Open("items", own_.get(), CursorType::snapshot, LockType::readOnly);
        return items;
    }
    void useItemClient(bool ready, const std::shared_ptr<Recordset>& picked) {
        factory->makeReferClient = [this, ready, picked] {
            return std::make_unique<SuiteItemClient>(log_, ready, picked);
        };
    }

    Lines log_;
    std::unique_ptr<Connection> own_ = database.newConnection("suite");
};

TEST_F(References, APickedLineFillsTheCellsButTheRowOnlyWithTheCellsCheck) {
    pickLine(voucherLine("6002", i16(3), 0.0, 45.0));
    form().press("cmdAdd");
    cells().reference(3, 1);
    EXPECT_EQ(log_, (Lines{"RefName voucher", "RefStyle 5", "ShowServerRef DefineRef"}));
    EXPECT_EQ(cells().editorText(), "6002");
    EXPECT_EQ(cells().line(3), "||贷|5.00|||3|" + collection->Item(3)->key()) << "45 less the 40 of the row there is";
    EXPECT_EQ(rows()[2], "::::");
    EXPECT_EQ(cells().Col(), 1);
    expectAllClosed();
}

TEST_F(References, APickedDebitLineShowsItsDebit) {
    pickLine(voucherLine("1001", i16(1), 1100.0, 0.0));
    form().press("cmdAdd");
    cells().reference(3, 1);
    EXPECT_EQ(cells().TextMatrix(3, 2), "借");
    EXPECT_EQ(cells().TextMatrix(3, 3), "1,100.00");
}

TEST_F(References, PickingALineOverAFilledAmountTakesTheLinesWholeAmount) {
    pickLine(voucherLine("6002", i16(3), 0.0, 45.0));
    cells().reference(1, 1);
    EXPECT_EQ(cells().TextMatrix(1, 3), "45.00");
    EXPECT_EQ(cells().TextMatrix(1, 6), "3");
    cells().TextMatrix(1, 3, " 0.00 ");
    cells().Col(1);
    cells().reference(1, 1);
    EXPECT_EQ(cells().TextMatrix(1, 3), "5.00") << "a zero is no amount";
}

TEST_F(References, AFailedPopUpSaysWhyInAPlainBox) {
    useServerClient([](std::shared_ptr<Recordset>&, std::string& errorText) {
        errorText = "why";
        return false;
    });
    cells().reference(1, 1);
    EXPECT_EQ(boxes(), Lines{"why|0|"});
    EXPECT_EQ(cells().editorText(), "6001");
}

TEST_F(References, NothingPickedChangesNothing) {
    const std::string before = cells().line(1);
    useServerClient([](std::shared_ptr<Recordset>&, std::string&) { return true; }); // left closed
    cells().reference(1, 1);
    pickLine(noLine());
    cells().Col(1);
    cells().reference(1, 1);
    useServerClient([](std::shared_ptr<Recordset>& picked, std::string&) {
        picked = nullptr;
        return true;
    });
    cells().Col(1);
    cells().reference(1, 1);
    EXPECT_EQ(cells().line(1), before);
    EXPECT_EQ(cells().editorText(), "6001");
    expectAllClosed();
}

TEST_F(References, APickedItemGoesIntoTheEditorAlone) {
    useItemClient(true, openItems(one("citemcode", "02")));
    cells().reference(1, 4);
    EXPECT_EQ(log_, (Lines{"SetRWAuth [][]false",
                           "ItemRefInit u1 false 98 citemcode like N'%01%' or citemname like N'%01%'", "Show"}));
    EXPECT_EQ(cells().editorText(), "02");
    EXPECT_EQ(cells().TextMatrix(1, 5), "item 01") << "the name comes with the check of the cell";
    EXPECT_TRUE(cells().leaveCell());
    EXPECT_EQ(cells().TextMatrix(1, 5), "item 02");
    expectAllClosed();
}

TEST_F(References, TheItemsFollowWhatWasTypedInTheCell) {
    useItemClient(false, nullptr);
    for (const char* typed : {"sal", ""}) {
        EXPECT_TRUE(cells().beginTyping(1, 4, typed));
        cells().reference(1, 4);
        EXPECT_EQ(log_.back(), "ItemRefInit u1 false 98 citemcode like N'%" + std::string(typed) +
                                   "%' or citemname like N'%" + typed + "%'");
        EXPECT_EQ(cells().TextMatrix(1, 4), "01") << "the cell has its text back";
        cells().Col(4);
    }
}

TEST_F(References, AnItemPopUpThatBringsNothingChangesNothing) {
    useItemClient(false, nullptr);
    cells().reference(1, 4);
    EXPECT_EQ(log_.size(), 2U) << "it is not shown";
    for (const auto& picked : {std::shared_ptr<Recordset>(), own_->createRecordset(), openItems(none("citemcode"))}) {
        useItemClient(true, picked);
        cells().Col(4);
        cells().reference(1, 4);
        EXPECT_EQ(cells().editorText(), "01");
    }
    expectAllClosed();
}

TEST_F(References, OtherColumnsHaveNoPopUpButBecomeCurrent) {
    int moved = 0;
    cells().beforeOperation = [&](const std::string& operation) { moved += operation == "Col=" ? 1 : 0; };
    for (const std::int32_t col : {0, 2, 3, 5, 6}) {
        cells().reference(1, col);
        cells().Col(0);
    }
    EXPECT_EQ(moved, 2 * 5) << "by the pop-up's event and by this test";
    EXPECT_EQ(log_, Lines{});
    EXPECT_EQ(database.statements(), Lines{});
}

TEST_F(References, TheLibrarysOwnLineClientShowsTheProvidersColumnsAndRows) {
    for (const char* key : {"58", "59", "60", "61", "62"}) {
        login->texts->texts[std::string("Z7.CW.GL.CashFlow.000") + key] = std::string("t") + key;
    }
    database.answerPrefix("select  cast(0 as bit)",
                          {{"bRefSelectColumn", "inid", "ccode", "md", "mc"},
                           {{false, i16(2), "6001", 0.0, 1060.0}, {false, i16(3), "6002", Null{}, 45.0}},
                           {}});
    form().press("cmdAdd");
    factory->picks.choices = {1, std::nullopt};
    cells().reference(3, 1);
    EXPECT_EQ(factory->picks.shown,
              Lines{"t58: t59 1000 t60 1500 t61 1500 right t62 1500 right ; 2 6001 0.00 1,060.00 ; 3 6002  45.00"});
    EXPECT_EQ(database.countOf("select  cast(0 as bit) as bRefSelectColumn,inid,a.ccode,md,mc from gl_accvouch a inner "
                               "join gl_v_code on a.ccode=gl_v_code.ccode and gl_v_code.bCashItem=0 where iperiod=1 "
                               "and isignseq=2 and ino_id=5"),
              1U)
        << "the lines of this voucher";
    EXPECT_EQ(cells().editorText(), "6002");
    EXPECT_EQ(cells().TextMatrix(3, 6), "3");
    EXPECT_EQ(cells().TextMatrix(3, 3), "5.00");
    cells().reference(3, 1);
    EXPECT_EQ(cells().editorText(), "6002") << "Escape";
    expectAllClosed();
}

TEST_F(References, TheLibrarysOwnLineClientHidesAColumnThatIsNotForDisplay) {
    class Provider final : public ReferenceProvider {
    public:
        explicit Provider(std::shared_ptr<Recordset> records) : records_(std::move(records)) {}
        void GetSrvRefMeta(const std::string& /*sRefID*/, const std::string& /*sXML*/, std::string& MetaXML,
                           std::string& /*sMsg*/, bool& /*bFlag*/) override {
            MetaXML = "<Ref cRefName='r'><RefColSet><Z7ColSet><Data>"
                      "<ColSet cFld='inid' bDisp='0' cCaption='hidden' iColWidth='1000'/>"
                      "<ColSet cFld='ccode' bDisp='1' cCaption='account' iColWidth='1500'/>"
                      "</Data></Z7ColSet></RefColSet></Ref>";
        }
        void GetSrvData(const std::string& /*sRefID*/, const std::string& /*sXML*/, const std::string& /*EleMeta*/,
                        std::shared_ptr<Recordset>& /*RstClass*/, std::shared_ptr<Recordset>& RstGrid,
                        std::shared_ptr<Recordset>& /*RstColSet*/, std::string& /*sMsg*/, bool& /*bFlag*/) override {
            RstGrid = records_;
        }

    private:
        std::shared_ptr<Recordset> records_;
    };
    factory->picks.choices = {0};
    std::shared_ptr<ReferenceProvider> provider =
        std::make_shared<Provider>(openItems(voucherLine("6002", i16(3), 0.0, 45.0)));
    std::shared_ptr<Recordset> shown;
    std::shared_ptr<Recordset> picked;
    std::string errorText;
    EXPECT_TRUE(createServerRefClient()->ShowServerRef(provider, shown, picked, errorText)) << errorText;
    EXPECT_EQ(factory->picks.shown, Lines{"r: account 1500 ; 6002"});
    EXPECT_EQ(toText(picked->Fields().Item("inid")), "3");
    picked->Close();
}

TEST_F(References, TheLibrarysOwnLineClientReportsAFailureOfTheProvider) {
    for (const char* key : {"58", "59", "60", "61", "62"}) {
        login->texts->texts[std::string("Z7.CW.GL.CashFlow.000") + key] = "t";
    }
    database.failPrefix("select  cast(0 as bit)", Error(208, "server", "no lines"));
    cells().reference(1, 1);
    database.fail("select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ",
                  Error(208, "server", "no option"));
    cells().Col(1);
    cells().reference(1, 1);
    EXPECT_EQ(boxes(), (Lines{"no lines|0|", "no option|0|"}));
    login->texts->texts["Z7.CW.GL.CashFlow.00058"] = "it's";
    cells().Col(1);
    cells().reference(1, 1);
    EXPECT_EQ(boxes().size(), 3U) << "a description that is not XML";
}

TEST_F(References, TheLibrarysOwnItemClientShowsTheItemsUnderTheFilter) {
    const std::string query = "select citemcode,citemname from fitemss98 where citemcode like N'%01%' or citemname "
                              "like N'%01%' order by citemcode";
    database.answerPrefix("select citemcode,citemname from fitemss98 where citemcode like N'%02%'",
                          {{"citemcode", "citemname"}, {{"02", "other"}}, {}});
    database.answer(query, {{"citemcode", "citemname"}, {{"01", "sales"}, {"02", "other"}}, {}});
    factory->picks.choices = {1, std::nullopt};
    cells().reference(1, 4);
    EXPECT_EQ(cells().editorText(), "02");
    EXPECT_EQ(factory->picks.shown, Lines{"<Z7.CW.GL.CashFlow.00036>: <Z7.CW.GL.CashFlow.00035> 1500 "
                                          "<Z7.CW.GL.CashFlow.00036> 4500 ; 01 sales ; 02 other"});
    EXPECT_EQ(database.statements(), (Lines{"con3: Open", "con3(3,1): " + query})) << "on a session of its own";
    cells().reference(1, 4);
    EXPECT_EQ(cells().editorText(), "02");
    expectAllClosed();
}

TEST_F(References, WithoutADialogFactoryThereIsNoPopUp) {
    modPublic::context().dialogFactory = nullptr;
    EXPECT_ERROR(cells().reference(1, 1), errors::objectNotSet);
    cells().Col(1);
    EXPECT_ERROR(cells().reference(1, 4), errors::objectNotSet);
}

} // namespace
} // namespace z7::cashflow::test
