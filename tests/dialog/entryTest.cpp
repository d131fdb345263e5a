// The dialog's entry point: what is prepared for a voucher, when the dialog is shown, and the state for the host
// afterwards.

#include "dialog/RecordingForm.h"
#include "dialog/ScriptedConnectionFactory.h"
#include "providers/ProviderTest.h"
#include "z7cashflow/dialog/clsMain.h"

namespace z7::cashflow::test {
namespace {

class DialogEntry : public ProviderTest {
protected:
    DialogEntry() {
        login->connectionString = ScriptedDatabase::connectionString();
        modPublic::context().dialogFactory = factory;
        modPublic::context().connectionFactory = connections;
        ScriptedDatabase& database = world.database;
        setUpdateOption("0");
        database.answerPrefix("select cdigest from ", {{"cdigest"}, {{"digest"}}, {}});
        database.answerPrefix("select * from GL_myoutput", {{"ilength"}, {}, {}});
        database.acceptPrefix("Delete from GL_myoutput");
        database.acceptPrefix("insert into GL_myoutput");
        factory->user = [this](RecordingForm& form) {
            ++shown;
            shownRows = rowsInGrid(form);
            form.press(leaveBy);
        };
        entry.Login(login);
    }
    /// Dropped and open recordsets are tested elsewhere.
    void TearDown() override {}

    static Lines rowsInGrid(RecordingForm& form) {
        Lines rows;
        for (std::int32_t row = 1; row < form.cells.Rows(); ++row) {
            rows.push_back(form.cells.TextMatrix(row, 6) + ":" + form.cells.TextMatrix(row, 3) + ":" +
                           form.cells.TextMatrix(row, 4));
        }
        return rows;
    }
    void setUpdateOption(const Variant& value) {
        world.database.answerPrefix("select * from GL_VoucherOption", {{"iUpdateCashFlow"}, {{value}}, {}});
    }
    void show(bool blnCreate = true, const bool* blnCheckCF = nullptr, const std::int16_t* iyear = nullptr) {
        entry.ShowCashFlow("gl_accvouch", 1, 2, 5, Date(41279.0), blnCreate, blnCheckCF, iyear);
    }
    bool init(bool blnCreate = true) { return entry.InitCashFlow("gl_accvouch", 1, 2, 5, Date(41279.0), blnCreate); }
    Lines boxes() const {
        Lines list;
        for (const std::string& text : messages->log) {
            if (text.starts_with("Show ")) {
                list.push_back(text.substr(5));
            }
        }
        return list;
    }
    Lines rows() const { return rowsOf(entry.CashFlowCol()); }
    std::size_t readsOfStoredRows() const { return world.database.countOf("select table1.*,"); }
    bool hasTrace(const std::string& text) const {
        const auto& trace = world.database.trace();
        return std::find(trace.begin(), trace.end(), text) != trace.end();
    }

    std::shared_ptr<RecordingDialogFactory> factory = std::make_shared<RecordingDialogFactory>();
    std::shared_ptr<ScriptedConnectionFactory> connections =
        std::make_shared<ScriptedConnectionFactory>(world.database);
    clsMain entry;
    std::string leaveBy = "cmdCancel";
    int shown = 0;
    Lines shownRows;
};

TEST_F(DialogEntry, SettersStoreTheSurroundingsInTheThreadsContext) {
    entry.SetVouchLockSucc(true);
    entry.SetVouchEdit(true);
    entry.SetCurUserName("li");
    entry.SetVouchBillName("wang");
    entry.SetVouchState(2);
    entry.SetVouchIn(3);
    const auto& state = modPublic::context();
    EXPECT_TRUE(state.VouchLockSucc);
    EXPECT_TRUE(state.VouchEdit);
    EXPECT_EQ(state.CurUserName, "li");
    EXPECT_EQ(state.VouchBillName, "wang");
    EXPECT_EQ(state.VouchState, 2);
    EXPECT_EQ(state.VouchIn, 3);
    EXPECT_FALSE(entry.ReadOnly());
    entry.ReadOnly(true);
    EXPECT_TRUE(entry.ReadOnly());
    EXPECT_EQ(entry.CashFlowCol(), nullptr);
    const auto rows = CashFlowCollection::Create();
    entry.CashFlowCol(rows);
    EXPECT_EQ(entry.CashFlowCol(), rows);
    const auto other = std::make_shared<FakeLogin>();
    entry.Login(other);
    EXPECT_EQ(modPublic::GetLogin(), other);
}

TEST_F(DialogEntry, GeneratedRowsShowAndStayForTheHost) {
    show();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(shownRows, Lines{"2:100.00:01"});
    EXPECT_EQ(rows(), Lines{"2:0:100:01"});
    EXPECT_EQ(entry.CashFlowCol()->VoucherTable(), "gl_accvouch");
    EXPECT_EQ(entry.CashFlowCol()->iNo_id(), 5);
    EXPECT_TRUE(hasTrace("con1: Close"));
    EXPECT_EQ(connections->made, 3) << "one of the entry, two of the dialog";
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(DialogEntry, StatementsOfAShowingBeginInThisOrder) {
    show();
    Lines first(world.statements().begin(), world.statements().begin() + 5);
    EXPECT_EQ(first, (Lines{"con1: Open", "con1(0,1): " + ledger::option("bCashCode"),
                            "con1(0,1): " + ledger::option("bAutoDisplay"),
                            "con1(0,1): select * from GL_VoucherOption WITH(NOLOCK) where operator =N'demo'",
                            world.statements()[4]}));
    EXPECT_TRUE(world.statements()[4].starts_with("con1: select code.ccode from gl_accvouch"));
}

TEST_F(DialogEntry, StoredRowsAreTakenBeforeGeneratedOnes) {
    world.setStored({"02"});
    show();
    EXPECT_EQ(shownRows, Lines{"2:100.00:02"});
    EXPECT_EQ(world.database.countOf("select  code.iYear"), 0U);
}

TEST_F(DialogEntry, WithoutStoredRowsAndWithoutCreationTheDialogComesUpEmpty) {
    const auto before = CashFlowCollection::Create();
    entry.CashFlowCol(before);
    show(false);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(shownRows, Lines{});
    EXPECT_NE(entry.CashFlowCol(), before) << "on a new collection";
    EXPECT_EQ(entry.CashFlowCol()->Count(), 0);
    EXPECT_EQ(entry.CashFlowCol()->VoucherTable(), "gl_accvouch");
    EXPECT_EQ(entry.CashFlowCol()->iPeriod(), 1);
}

TEST_F(DialogEntry, AVoucherWithoutACashLineShowsOneMessageAndNoDialog) {
    world.haveCash(false);
    const auto before = CashFlowCollection::Create();
    entry.CashFlowCol(before);
    for (const bool readOnly : {false, true}) {
        messages->log.clear();
        entry.ReadOnly(readOnly);
        show();
        EXPECT_EQ(boxes(), Lines{(readOnly ? "<Z7.CW.GL.CashFlow.Z711.00001>" : "<Z7.CW.GL.CashFlow.00012>") +
                                 std::string("|64|<Z7.CW.GL.CashFlow.00013>||0")});
    }
    EXPECT_EQ(factory->forms, 0);
    EXPECT_EQ(entry.CashFlowCol(), before);
    EXPECT_TRUE(hasTrace("con1: dropped")) << "the connection goes with its object";
}

TEST_F(DialogEntry, RowsOfTheSameVoucherAreNotReadAgain) {
    show();
    const auto kept = entry.CashFlowCol();
    kept->Item(1)->SetValue("cCashItem", "02");
    world.database.clearJournal();
    show();
    EXPECT_EQ(entry.CashFlowCol(), kept);
    EXPECT_EQ(shownRows, Lines{"2:100.00:02"});
    EXPECT_EQ(readsOfStoredRows(), 0U);
    EXPECT_TRUE(init());
    EXPECT_EQ(readsOfStoredRows(), 0U);
}

TEST_F(DialogEntry, RowsOfAnotherVoucherGoAndTheCollectionIsFilledAnew) {
    for (const int part : {0, 1, 2}) {
        auto other = hostCollection(world);
        addRow(other, i16(9), "6009", 0.0, 9.0);
        other->VoucherTable("elsewhere");
        other->UpdateCol(part == 0 ? 3 : 1, part == 1 ? i16(7) : i16(2), part == 2 ? 8 : 5, Date(2.0));
        entry.CashFlowCol(other);
        EXPECT_TRUE(init());
        EXPECT_EQ(other->Count(), 0) << part;
        EXPECT_EQ(other->VoucherTable(), "gl_accvouch");
        EXPECT_TRUE(other->Changed());
        EXPECT_EQ(rows(), Lines{"2:0:100:01"});
    }
}

TEST_F(DialogEntry, ACollectionWithANumberBeyond16BitsOverflows) {
    auto other = CashFlowCollection::Create();
    other->UpdateCol(1, 2, 40000, Date(2.0));
    entry.CashFlowCol(other);
    EXPECT_ERROR(show(), errors::overflow);
    EXPECT_FALSE(init());
}

TEST_F(DialogEntry, WithTheOptionRowsAreRegeneratedAndItemsChosenByHandComeBack) {
    setUpdateOption("True");
    modPublic::context().bAutoDisplay = false;
    world.setOption("bAutoDisplay", "True");
    world.setLines({{1, "1001", 100.0, 0.0, {}, {}, {}},
                    {2, "6001", 0.0, 70.0, "98", "01", {}},
                    {3, "6002", 0.0, 20.0, {}, {}, {}},
                    {4, "6003", 0.0, 10.0, {}, {}, {}}});
    auto former = hostCollection(world);
    addRow(former, i16(2), "6001", 0.0, 1.0, "02");
    addRow(former, " 3 ", "6002", 0.0, 1.0, "");
    addRow(former, "3", "6002", 0.0, 1.0, Null{});
    addRow(former, "3", "6002", 0.0, 1.0, "05");
    addRow(former, i16(3), "6002", 0.0, 1.0, "06");
    entry.CashFlowCol(former);
    show();
    EXPECT_NE(entry.CashFlowCol(), former);
    EXPECT_EQ(shownRows, (Lines{"2:70.00:01", "3:20.00:05", "4:10.00:"}));
    EXPECT_EQ(former->Count(), 5);
}

TEST_F(DialogEntry, TheOptionWithoutCreationRegeneratesNothing) {
    setUpdateOption("1");
    world.setStored({"02"});
    show(false);
    EXPECT_EQ(shownRows, Lines{"2:100.00:02"});
}

TEST_F(DialogEntry, AnOptionThatIsNotATruthValueIsATypeMismatch) {
    setUpdateOption("maybe");
    EXPECT_ERROR(show(), errors::typeMismatch);
    EXPECT_EQ(factory->forms, 0);
}

TEST_F(DialogEntry, OptionsAndYearAreSetForTheThread) {
    modPublic::SetIYear(2009);
    world.setOption("bCashCode", "tRUE");
    world.setOption("bAutoDisplay", "True");
    setUpdateOption("1");
    const std::int16_t year = 2013;
    world.haveCash(false);
    show(true, nullptr, &year);
    EXPECT_EQ(modPublic::context().yearOverride, 2013);
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_TRUE(modPublic::context().bAutoDisplay);
    EXPECT_TRUE(modPublic::context().iUpdateCashFlow);
    world.setOption("bCashCode", "1");
    world.setOption("bAutoDisplay", "");
    setUpdateOption(Null{});
    show();
    EXPECT_EQ(modPublic::context().yearOverride, 0) << "a year left out clears the override";
    EXPECT_FALSE(modPublic::context().bCashCode);
    EXPECT_FALSE(modPublic::context().bAutoDisplay);
    EXPECT_FALSE(modPublic::context().iUpdateCashFlow);
}

TEST_F(DialogEntry, ReadOnlyReachesTheDialog) {
    entry.ReadOnly(true);
    factory->user = [](RecordingForm& form) {
        EXPECT_FALSE(form.buttons.at("cmdOk").enabled);
        form.press("cmdCancel");
    };
    show();
}

TEST_F(DialogEntry, TheSumCheckOfAnEmptyCollectionIsOnUnlessLeftOff) {
    world.database.answerPrefix("select  code.iYear", {{"inid"}, {}, {}});
    const bool off = false;
    factory->user = [](RecordingForm& form) {
        form.press("cmdOk");
        if (form.unloads == 0) {
            form.journal.emplace_back("kept open");
            form.press("cmdCancel");
        }
    };
    show(false, &off);
    EXPECT_EQ(std::count(factory->journal.begin(), factory->journal.end(), "kept open"), 0);
    entry.CashFlowCol(nullptr);
    show(false);
    EXPECT_EQ(std::count(factory->journal.begin(), factory->journal.end(), "kept open"), 1);
}

TEST_F(DialogEntry, ARegeneratedCollectionOfTheDialogReachesTheHost) {
    show();
    const auto before = entry.CashFlowCol();
    factory->user = [](RecordingForm& form) {
        form.press("cmdAutoGetData");
        form.press("cmdCancel");
    };
    show();
    EXPECT_NE(entry.CashFlowCol(), before);
    EXPECT_EQ(rows(), Lines{"2:0:100:01"});
}

TEST_F(DialogEntry, AFailureAtEachStatementReachesTheHost) {
    show();
    entry.CashFlowCol(nullptr);
    const std::size_t count = world.statements().size();
    int silent = 0;
    for (std::size_t n = 1; n <= count; ++n) {
        world.database.clearJournal();
        world.database.failStatement(n, Error(4060, "server", "gone"));
        clsMain other;
        const int number = errorNumberOf([&] { other.ShowCashFlow("gl_accvouch", 1, 2, 5, Date(41279.0)); });
        silent += number == 4060 ? 0 : 1;
    }
    // Searching the name of an item, reading the widths, and the twelve statements that write them.
    EXPECT_EQ(silent, 1 + 1 + 12);
}

TEST_F(DialogEntry, InitPreparesTheRowsWithoutADialog) {
    modPublic::SetIYear(2013);
    world.setOption("bCashCode", "True");
    world.setOption("bAutoDisplay", "True");
    EXPECT_TRUE(init());
    EXPECT_EQ(factory->forms, 0);
    EXPECT_EQ(rows(), Lines{"1:100:0:"}) << "the line of cash, whose item is yet to be chosen";
    EXPECT_TRUE(modPublic::context().bCashCode);
    EXPECT_EQ(modPublic::context().yearOverride, 2013) << "set from the voucher's date by the read, not cleared";
    EXPECT_EQ(world.database.countOf("select * from GL_VoucherOption"), 0U);
    EXPECT_FALSE(hasTrace("con1: Close"));
    EXPECT_TRUE(hasTrace("con1: dropped"));
    EXPECT_EQ(entry.CashFlowCol()->VoucherTable(), "gl_accvouch");
}

TEST_F(DialogEntry, InitWithoutCreationReturnsAnEmptyCollection) {
    EXPECT_TRUE(init(false));
    EXPECT_EQ(rows(), Lines{});
    EXPECT_EQ(entry.CashFlowCol()->iNo_id(), 5);
}

TEST_F(DialogEntry, InitIgnoresTheOptionThatRegenerates) {
    setUpdateOption("1");
    world.setStored({"02"});
    EXPECT_TRUE(init());
    EXPECT_EQ(rows(), Lines{"2:0:100:02"});
}

TEST_F(DialogEntry, InitOfAVoucherWithoutACashLineIsFalseAndLeavesTheCollection) {
    world.haveCash(false);
    const auto before = CashFlowCollection::Create();
    entry.CashFlowCol(before);
    EXPECT_FALSE(init());
    EXPECT_EQ(entry.CashFlowCol(), before);
    EXPECT_TRUE(hasTrace("con1: Close"));
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(DialogEntry, InitTurnsEveryFailureIntoFalseAndClosesTheConnection) {
    EXPECT_TRUE(init());
    entry.CashFlowCol(nullptr);
    const std::size_t count = world.statements().size();
    int failures = 0;
    for (std::size_t n = 2; n <= count; ++n) {
        world.database.clearJournal();
        world.database.failStatement(n, Error(4060, "server", "gone"));
        clsMain other;
        if (!other.InitCashFlow("gl_accvouch", 1, 2, 5, Date(41279.0))) {
            ++failures;
            EXPECT_TRUE(hasTrace("con" + std::to_string(connections->made) + ": Close")) << n;
        }
    }
    EXPECT_EQ(failures, static_cast<int>(count) - 2) << "a name looked up while the item is searched may fail";
    EXPECT_EQ(boxes(), Lines{});
}

TEST_F(DialogEntry, InitOnAConnectionThatNeverOpenedIsTheErrorOfItsClosing) {
    world.database.fail("Open", Error(4060, "server", "gone"));
    EXPECT_ERROR(init(), errors::objectClosed);
    modPublic::context().connectionFactory = nullptr;
    EXPECT_ERROR(init(), errors::objectNotSet);
}

// Vouchers of other subsystems

class OutsideEntry : public DialogEntry {
protected:
    void showOutside(bool blnCreate = true) {
        entry.ShowCashFlowOutVoucher("gl_accvouch", "OUT", Date(41279.0), blnCreate);
    }
    Collection outsideCollection() {
        auto collection = hostCollection(world);
        collection->coutNo_id("OUT");
        addRow(collection, i16(2), "6001", 0.0, 100.0);
        return collection;
    }
};

TEST_F(OutsideEntry, RowsThatTheHostHandsInAreShown) {
    const auto handed = outsideCollection();
    entry.CashFlowCol(handed);
    modPublic::SetIYear(2013);
    showOutside();
    EXPECT_EQ(shownRows, Lines{"2:100.00:01"});
    EXPECT_EQ(entry.CashFlowCol(), handed);
    EXPECT_TRUE(world.statements()[1].starts_with("con1: select code.ccode from  gl_accvouch"));
    EXPECT_EQ(world.database.countOf("select cvalue,cdefault"), 0U) << "no option is read";
    EXPECT_EQ(modPublic::context().yearOverride, 2013) << "no year is set";
    EXPECT_TRUE(hasTrace("con1: Close"));
}

TEST_F(OutsideEntry, AVoucherWithoutACashLineShowsTheSameMessageReadOnlyOrNot) {
    world.haveCash(false);
    for (const bool readOnly : {false, true}) {
        messages->log.clear();
        entry.ReadOnly(readOnly);
        showOutside();
        EXPECT_EQ(boxes(), Lines{"<Z7.CW.GL.CashFlow.00012>|64|<Z7.CW.GL.CashFlow.00013>||0"});
    }
    EXPECT_EQ(factory->forms, 0);
    EXPECT_TRUE(hasTrace("con1: dropped"));
}

TEST_F(OutsideEntry, RowsThatItReadItselfNameNoTableSoThatTheLoadEndsInTheServersError) {
    world.setStored({"02"});
    world.database.answerPrefix("select iperiod,isignseq,ino_id,dbill_date from gl_accvouch",
                                {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                                 {{std::uint8_t{1}, i16(2), std::int32_t{5}, Date(41279.0)}},
                                 {}});
    world.database.failPrefix("select (sum(md) -sum(mc)) as mysum  from  as", Error(156, "server", "no table"));
    EXPECT_ERROR(showOutside(), 156);
    EXPECT_EQ(entry.CashFlowCol()->coutNo_id(), "OUT");
    EXPECT_EQ(entry.CashFlowCol()->VoucherTable(), "");
    EXPECT_EQ(entry.CashFlowCol()->dbill_date(), Date(41279.0));
    EXPECT_EQ(rows(), Lines{"2:0:100:02"});
    EXPECT_EQ(shown, 0);
}

TEST_F(OutsideEntry, RowsOfAnotherOutsideVoucherGo) {
    const auto other = outsideCollection();
    other->coutNo_id("ELSE");
    other->VoucherTable("elsewhere");
    entry.CashFlowCol(other);
    world.database.answerPrefix("select iperiod,isignseq,ino_id,dbill_date from gl_accvouch", {{"iperiod"}, {}, {}});
    world.database.failPrefix("select (sum(md) -sum(mc)) as mysum  from  as", Error(156, "server", "no table"));
    EXPECT_ERROR(showOutside(), 156);
    EXPECT_EQ(other->Count(), 0);
    EXPECT_EQ(other->coutNo_id(), "OUT");
    EXPECT_EQ(other->VoucherTable(), "gl_accvouch");
    EXPECT_NE(entry.CashFlowCol(), other) << "a new collection takes its place";
}

TEST_F(OutsideEntry, FailuresReachTheHost) {
    world.database.failPrefix("select code.ccode from  gl_accvouch", Error(4060, "server", "gone"));
    EXPECT_ERROR(showOutside(), 4060);
}

} // namespace
} // namespace z7::cashflow::test
