// What every operation of the two contracts leaves behind if it succeeds and if any of its statements fails: the
// year, the options, tables in tempdb, arguments that it may change, recordsets. One table with an entry per
// operation.

#include "providers/ProviderTest.h"

#include <functional>
#include <map>
#include <ostream>
#include <set>

namespace z7::cashflow::test {
namespace {

/// The visible state of the thread, the provider, the database and the caller's arguments, by name.
using Sight = std::map<std::string, std::string>;

std::string onOff(bool flag) { return flag ? "on" : "off"; }

/// The ledger voucher 1/2/5 in gl_accvouch, the outside voucher OUT in the table mine, and the arguments of the
/// operations. The thread works in 2011 and the voucher's date is in 2012; the account's options are the opposite
/// of the thread's.
struct World : Ledger {
    explicit World(bool options) : optionsOn(options) {
        modPublic::SetIYear(2011);
        auto& context = modPublic::context();
        context.bCashCode = context.bAutoDisplay = context.bXJLL = !options;
        context.VouchState = 1;
        context.VouchIn = 3;
        context.CurUserName = "me";
        context.VouchBillName = "you";
        for (const char* name : {"bCashCode", "bAutoDisplay", "bXJLL"}) {
            setOption(name, options ? "tRUE" : "1");
        }
        Table compare{{"cvalue"}, {}, {}};
        if (options) {
            compare.rows.push_back({"true"});
        }
        database.answer("select * from accinformation where csysid=N'gl' and cname=N'bXJLL' and cvalue='true'",
                        compare);
        database.answerPrefix("select iyear,iid", {{"iyear", "iid"}, {{i16(2012), std::uint8_t{1}}}, {}});
        database.answerPrefix("select dbill_date from ", {{"dbill_date"}, {{Date(41279.0)}}, {}});
        database.answerPrefix("select * from gl_accvouch", {{"inid"}, {}, {}});
        database.answerPrefix("select * from mine", {{"inid"}, {}, {}});
        database.answerPrefix("select iperiod,isignseq,ino_id,dbill_date",
                              {{"iperiod", "isignseq", "ino_id", "dbill_date"},
                               {{std::uint8_t{1}, i16(2), std::int32_t{5}, Date(41279.0)}},
                               {}});
        setLines({{1, "1001", 100.0, 0.0, "98", "01", {}}, {2, "6001", 0.0, 100.0, "98", "02", {}}});
        database.answerPrefix("select cCashItem from GL_VouchDraft", {{"cCashItem"}, {}, {}});
        answerKeylessTables();
        makeTables();
    }

    // The lines of tables without keys. A table created from XML does not have the item column.
    void answerKeylessTables() {
        database.answerWith("select  code.iYear,inid,", [this](const std::string& text) {
            const bool byOutsideKey = text.find(",ccashitem_id,") != std::string::npos;
            if (byOutsideKey && text.find("from tempdb..") != std::string::npos) {
                throw Error(207, "server", "no column ccashitem_id");
            }
            if (text.find("from  as") != std::string::npos) {
                throw Error(156, "server", "no table");
            }
            Table table{{"inid", "md", "mc", "ccode", "citem_class", "citem_id", "bCashItem"}, {}, {}};
            if (!noLines) {
                table.rows = {{i16(1), 100.0, 0.0, "1001", "98", "01", true},
                              {i16(2), 0.0, 100.0, "6001", "98", "02", false}};
            }
            if (byOutsideKey) {
                table.columns[5] = "ccashitem_id";
            }
            return table;
        });
    }
    // A tempdb that keeps track of its tables.
    void makeTables() {
        database.answerWith("select inid,idoc", [this](const std::string& text) {
            const std::size_t begin = text.find(" into ") + 6;
            tables.insert(text.substr(begin, text.find(' ', begin) - begin));
            return Table{};
        });
        for (const char* drop : {"drop table ", "Drop table "}) {
            database.answerWith(drop, [this](const std::string& text) {
                if (tables.erase(text.substr(text.rfind(' ') + 1)) == 0) {
                    throw Error(3701, "server", "no such table");
                }
                return Table{};
            });
        }
        Table lines{{"inid", "ccode", "md", "mc", "nc_s", "nd_s", "md_f", "mc_f", "idoc", "coutno_id"}, {}, {}};
        database.answerPrefix("select * from tempdb..TempVoucher", lines);
    }

    [[nodiscard]] Sight sight() const {
        const auto& context = modPublic::context();
        Sight seen{{"year", std::to_string(context.yearOverride)},
                   {"bCashCode", onOff(context.bCashCode)},
                   {"bAutoDisplay", onOff(context.bAutoDisplay)},
                   {"bXJLL", onOff(context.bXJLL)},
                   {"iUpdateCashFlow", onOff(context.iUpdateCashFlow)},
                   {"screen", std::to_string(context.VouchState) + std::to_string(context.VouchIn) +
                                  context.CurUserName + context.VouchBillName + onOff(context.VouchEdit) +
                                  onOff(context.VouchLockSucc)},
                   {"login", context.login == firstLogin && context.textLookup == firstTexts ? "first" : "other"},
                   {"VoucherTempTable", gl.VoucherTempTable() + "|" + out.VoucherTempTable()},
                   {"tempdb", std::to_string(tables.size())},
                   {"blnCheckCF", onOff(check)},
                   {"strInfo", info},
                   {"strCFColxml", xml == givenXml ? "as given"
                                   : xml.empty()   ? "emptied"
                                                   : "filled"},
                   {"objCFCol", !rows           ? "nothing"
                                : rows == given ? "given"
                                                : "found"}};
        if (given) {
            seen["VoucherTable"] = given->VoucherTable();
            seen["key"] = std::to_string(given->iPeriod()) + "/" + std::to_string(given->isignseq()) + "/" +
                          std::to_string(given->iNo_id()) + "/" + std::to_string(given->ibackno_id()) + " " +
                          given->coutNo_id();
            for (const auto& row : *given) {
                seen["rows"] += toTextOrEmpty(row->Item("csign")) + toTextOrEmpty(row->Item("cdept_id")) +
                                toTextOrEmpty(row->Item("cCashItem")) + toTextOrEmpty(row->Item("mc")) + ";";
            }
        }
        return seen;
    }

    const bool optionsOn;
    const std::shared_ptr<Z7Login> firstLogin = modPublic::GetLogin();
    const std::shared_ptr<TextLookup> firstTexts = modPublic::context().textLookup;
    std::set<std::string> tables;
    bool noLines = false;
    // In-out arguments.
    Collection given;
    Collection rows;
    std::string givenXml;
    std::string xml;
    std::string info = "before";
    bool check = true;
};

/// A change that becomes visible after a statement and, if it is temporary, lasts until another statement.
struct Change {
    std::string name;
    std::string value; ///< "option" means the value of the account's options
    std::string after; ///< beginning of the statement; empty for at once
    int nth = 1;       ///< which of several such statements
    std::string until = {};
};

using Step = std::function<void(World&)>;

struct Operation {
    std::string name;
    Step prepare;
    Step run;
    std::vector<Change> leaves;
    int error = 0; ///< error in which the operation ends without any failing statement
};

std::ostream& operator<<(std::ostream& out, const Operation& operation) { return out << operation.name; }

const Date day(41279.0);

// The statements that cause a change.
const char* const askPeriod = "select iyear,iid";
const char* const askCash = "select code.ccode from ";
const char* const askSum = "select (sum(md)";
const char* const askLines = "select  code.iYear";
const char* const askAccount = "select ccode from code";
const char* const compareOption = "select * from accinformation";
const char* const makeTable = "select inid,idoc";
const char* const dropTable = "Drop table ";

Change flag(const std::string& name) { return {name, "option", ledger::option(name), 1, ""}; }
const Change year{"year", "2012", askPeriod, 1, ""};
const Change passingTable{"tempdb", "1", makeTable, 1, dropTable};
const Change lastingTable{"tempdb", "1", makeTable, 1, ""};

void nothing(World&) {}

/// Creates a host's collection for the voucher, with one row on line 2.
void giveRows(World& on, double credit, const Variant& item = "01") {
    on.given = on.provider.CreateCashFlowCollection();
    on.given->UpdateCol(1, 2, 5, day);
    on.given->VoucherTable("elsewhere");
    const auto row = on.given->CreateCFObject();
    row->SetValue("inid", i16(2));
    row->SetValue("ccode", "6001");
    row->SetValue("mc", credit);
    row->SetValue("cCashItem", item);
    on.given->Add(row);
    on.rows = on.given;
}
void giveFittingRows(World& on) { giveRows(on, 100.0); }
void giveOtherRows(World& on) { giveRows(on, 99.0); }
void giveIncompleteRows(World& on) { giveRows(on, 100.0, Null{}); }
void giveXml(World& on, double credit) {
    giveRows(on, credit);
    on.xml = on.givenXml = on.given->Save();
    on.given = on.rows = nullptr;
}
void giveFittingXml(World& on) { giveXml(on, 100.0); }
void giveOtherXml(World& on) { giveXml(on, 99.0); }
void givePassedOver(World& on) { on.check = !on.optionsOn; } // replaced by the account's option
void giveNoXml(World& on) { on.xml = on.givenXml = "no xml"; }
void storeRow(World& on) { on.setStored({"88"}); }
void withoutCash(World& on) { on.haveCash(false); }
void withoutVoucher(World& on) {
    on.database.answerPrefix("select  dBill_date from ", {{"dBill_date"}, {}, {}});
    on.database.answerPrefix("select dbill_date from ", {{"dbill_date"}, {}, {}});
}

const std::string wholeKey = "<v iperiod='1' isignseq='2' ino_id='5' dbill_date='2013-01-05'/>";
const std::string withoutKey = "<v><e ccode='1001' inid='1' md='100'/></v>";
const std::string outsideKey = "<v><e ccode='1001' inid='1' md='100' coutno_id='OUT'/></v>";

void glRead(World& on) { (void)on.gl.GetCashFlowColFromDB(on.connection, "gl_accvouch", 1, 2, 5, day); }
void glCreate(World& on) { (void)on.gl.CreateCashFlowColFromDB(on.connection, "gl_accvouch", 1, 2, 5, day); }
void glCheckRows(World& on) { (void)on.gl.CheckKmFrom(on.connection, on.rows, &on.info); }
void glCheck(World& on) { (void)on.gl.CheckCFColFromDB(on.connection, "gl_accvouch", 1, 2, 5, on.rows, &on.info); }
void glSave(World& on) { (void)on.gl.SaveCashFlowCol(on.connection, "gl_accvouch", 1, 2, 5, &on.rows, &on.check); }
void glSaveEx(World& on) {
    (void)on.gl.SaveCashFlowColEx(on.connection, "gl_accvouch", 1, 2, 5, day, &on.rows, &on.check);
}
void glSaveXml(World& on) {
    (void)on.gl.SaveCashFlowColFromXml(on.connection, "gl_accvouch", 1, 2, 5, &on.xml, &on.check);
}
Step glOfXml(const std::string& voucher, bool blnCreateCF) {
    return [=](World& on) { (void)on.gl.GetCashFlowColFromXml(on.connection, voucher, blnCreateCF); };
}
void outRead(World& on) { (void)on.out.GetCashFlowColFromDB(on.connection, "mine", "OUT"); }
void outCreate(World& on) { (void)on.out.CreateCashFlowColFromDB(on.connection, "mine", "OUT"); }
void outCheck(World& on) { (void)on.out.CheckCFColFromDB(on.connection, "mine", "OUT", on.xml, &on.info); }
void outSave(World& on) { (void)on.out.SaveCashFlowCol(on.connection, "mine", "OUT", &on.xml, &on.check); }
Step outOfXml(const std::string& voucher, bool blnCreateCF) {
    return [=](World& on) { (void)on.out.GetCashFlowColFromXml(on.connection, voucher, blnCreateCF); };
}
Step outCheckXml(const std::string& voucher) {
    return [=](World& on) { (void)on.out.CheckCFColFromXml(on.connection, voucher, on.xml, &on.info); };
}

std::vector<Operation> settings() {
    return {
        {"GlTempTable", nothing, [](World& on) { on.gl.VoucherTempTable("t"); }, {{"VoucherTempTable", "t|t", ""}}},
        {"OutTempTable", nothing, [](World& on) { on.out.VoucherTempTable("t"); }, {{"VoucherTempTable", "t|t", ""}}},
        {"GlLogin",
         nothing,
         [](World& on) { on.gl.objLogin(std::make_shared<FakeLogin>()); },
         {{"login", "other", ""}}},
        {"OutLogin",
         nothing,
         [](World& on) { on.out.objLogin(std::make_shared<FakeLogin>()); },
         {{"login", "other", ""}}},
        {"FormerNumber", nothing, [](World& on) { (void)on.gl.SetOldVouchNoID(7); }, {}},
        {"FromDraft", nothing, [](World& on) { on.gl.bFromDraft(true); }, {}},
        {"FromDraftByItsLongName", nothing, [](World& on) { on.provider.IGlVoucherProvider_bFromDraft(true); }, {}},
        {"NewCollection", nothing, [](World& on) { (void)on.provider.CreateCashFlowCollection(); }, {}},
    };
}

std::vector<Operation> glReads() {
    const Change readXJLL = flag("bXJLL");
    return {
        {"GlReadOfStoredRows", storeRow, glRead, {year, readXJLL}},
        {"GlReadOfNothing", nothing, glRead, {year, readXJLL}},
        {"GlReadOfADraft", [](World& on) { on.gl.bFromDraft(true); }, glRead, {year, readXJLL}},
        {"GlReadOnADateInNoPeriod",
         [](World& on) {
             on.database.answerPrefix(askPeriod, {{"iyear", "iid"}, {}, {}});
         },
         glRead,
         {{"year", "1900", askPeriod}, readXJLL}},
        {"GlCreate", nothing, glCreate, {readXJLL}},
        {"GlCreateOfCashThatCancels",
         [](World& on) {
             on.setLines({{1, "1001", 5.0, 0.0, {}, {}, {}}, {2, "1002", 0.0, 5.0, {}, {}, {}}});
         },
         glCreate,
         {}},
        {"GlCreateOfALineWithoutAnAmount",
         [](World& on) {
             on.setLines({{1, "1001", Null{}, 5.0, {}, {}, {}}});
         },
         glCreate,
         {},
         errors::invalidNull},
        {"GlOfXmlWithAWholeKey", storeRow, glOfXml(wholeKey, false), {readXJLL}},
        {"GlOfXmlWithoutAKey", nothing, glOfXml(withoutKey, false), {passingTable, readXJLL}},
        {"GlOfXmlWithAnOutsideKey", storeRow, glOfXml(outsideKey, false), {passingTable, readXJLL}},
        {"GlOfXmlGenerated", withoutCash, glOfXml(wholeKey, true), {passingTable}},
        {"GlOfXmlGeneratedByAnOutsideKey", nothing, glOfXml(outsideKey, true), {lastingTable}, 207},
        {"GlOfNoXml", nothing, glOfXml("no xml", true), {}, errors::badVoucherXml},
    };
}

std::vector<Operation> glChecks() {
    const Change toTable{"VoucherTable", "gl_accvouch", askSum};
    const std::string wrong = "<Z7.CW.GL.CashFlow.00003><Z7.CW.GL.CashFlow.00004>100.00\r\n"
                              "<Z7.CW.GL.CashFlow.00006><Z7.CW.GL.CashFlow.00004>99.00";
    const std::string incomplete = "<Z7.CW.GL.CashFlow.00020>\t2\t4";
    return {
        {"GlCheckOfRowsThatFit", giveFittingRows, glCheckRows, {}},
        {"GlCheckOfIncompleteRows", giveIncompleteRows, glCheckRows, {{"strInfo", incomplete, askLines}}},
        {"GlCheckOfNothing", nothing, glCheckRows, {}, errors::objectNotSet},
        {"GlSumCheckOfRowsThatFit", giveFittingRows, glCheck, {toTable}},
        {"GlSumCheckOfIncompleteRows", giveIncompleteRows, glCheck, {toTable, {"strInfo", incomplete, askLines}}},
        {"GlSumCheckOfRowsThatDiffer", giveOtherRows, glCheck, {toTable, {"strInfo", wrong, askAccount}}},
        {"GlSumCheckOfNothing", nothing, glCheck, {}, errors::objectNotSet},
    };
}

std::vector<Operation> glSaves() {
    const Change side = flag("bCashCode");
    const Change readXJLL = flag("bXJLL");
    const Change toTable{"VoucherTable", "gl_accvouch", askCash};
    const Change refreshed{"rows", "V01100;", askLines};
    const Change refreshedOther{"rows", "V0199;", askLines};
    const Change generated{"objCFCol", "found", askLines, 2};
    const Change read{"objCFCol", "found", Ledger::nameQuery.c_str()};
    return {
        {"GlSave", giveFittingRows, glSave, {side, toTable, refreshed}},
        {"GlSaveOfIncompleteRows", giveIncompleteRows, glSave, {side, toTable, {"rows", "V100;", askLines}}, 10008},
        {"GlSaveOfRowsThatDiffer", giveOtherRows, glSave, {side, toTable, refreshedOther}, 10009},
        {"GlSaveFromATemporaryTable",
         [](World& on) {
             giveFittingRows(on);
             on.out.VoucherTempTable("gl_v_accvouch");
         },
         glSave,
         {side, {"VoucherTable", "gl_v_accvouch", askCash}, refreshed}},
        {"GlSaveOfGeneratedRows", nothing, glSave, {side, year, readXJLL, generated}},
        {"GlSaveOfStoredRows", storeRow, glSave, {side, year, readXJLL, read}},
        {"GlSaveOfAnUnknownVoucher", withoutVoucher, glSave, {side}, 10010},
        {"GlSaveWithoutCash",
         [](World& on) {
             giveFittingRows(on);
             withoutCash(on);
         },
         glSave,
         {side}},
        {"GlSaveOfNothingWithoutCash",
         [](World& on) {
             on.gl.SetOldVouchNoID(7);
             withoutCash(on);
         },
         glSave,
         {side}},
        {"GlSaveWithADate", giveFittingRows, glSaveEx, {side, year, toTable, refreshed}},
        {"GlSaveWithADateOfGeneratedRows", nothing, glSaveEx, {side, year, readXJLL, generated}},
        {"GlSaveWithADateOfStoredRows", storeRow, glSaveEx, {side, year, readXJLL, read}},
        {"GlSaveWithADateWithoutCash", withoutCash, glSaveEx, {side, year}},
        {"GlSaveWithADateOfIncompleteRows",
         giveIncompleteRows,
         glSaveEx,
         {side, year, toTable, {"rows", "V100;", askLines}},
         10008},
    };
}

std::vector<Operation> glSavesOfXml() {
    const Change side = flag("bCashCode");
    const Change compared{"blnCheckCF", "option", compareOption};
    return {
        {"GlSaveOfXml",
         [](World& on) {
             giveFittingXml(on);
             givePassedOver(on);
         },
         glSaveXml,
         {compared, side}},
        {"GlSaveWithoutXml", givePassedOver, glSaveXml, {compared, side, year, flag("bXJLL")}},
        {"GlSaveOfXmlWithoutCash",
         [](World& on) {
             giveFittingXml(on);
             givePassedOver(on);
             withoutCash(on);
         },
         glSaveXml,
         {compared, side}},
        {"GlSaveOfNoXml", giveNoXml, glSaveXml, {}, errors::badCollectionXml},
        {"GlSaveOfXmlOfAnUnknownVoucher",
         [](World& on) {
             giveFittingXml(on);
             withoutVoucher(on);
         },
         glSaveXml,
         {},
         10011},
    };
}

std::vector<Operation> outReads() {
    const Change side = flag("bCashCode");
    const Change display = flag("bAutoDisplay");
    const Change readXJLL = flag("bXJLL");
    return {
        {"OutReadOfStoredRows", storeRow, outRead, {readXJLL}},
        {"OutReadOfGeneratedRows", nothing, outRead, {readXJLL}},
        {"OutReadWithoutCash", withoutCash, outRead, {}},
        {"OutCreate", nothing, outCreate, {readXJLL}},
        {"OutCreateWithoutCash", withoutCash, outCreate, {}},
        {"OutCreateWithoutLines", [](World& on) { on.noLines = true; }, outCreate, {}},
        {"OutOfXmlWithAWholeKey", storeRow, outOfXml(wholeKey, false), {side, display, readXJLL}},
        {"OutOfXmlWithoutAKey", nothing, outOfXml(withoutKey, false), {side, display, passingTable, readXJLL}},
        {"OutOfXmlWithAnOutsideKey", storeRow, outOfXml(outsideKey, false), {side, display, passingTable, readXJLL}},
        {"OutOfXmlGenerated", withoutCash, outOfXml(wholeKey, true), {side, display, passingTable}},
        {"OutOfXmlGeneratedByAnOutsideKey", nothing, outOfXml(outsideKey, true), {side, display, lastingTable}, 207},
        {"OutOfNoXml", nothing, outOfXml("no xml", false), {side, display}, errors::badVoucherXml},
    };
}

std::vector<Operation> outChecksAndSaves() {
    const Change readXJLL = flag("bXJLL");
    const Change filled{"strCFColxml", "filled", askLines, 2};
    return {
        {"OutCheck", nothing, outCheck, {readXJLL}},
        {"OutCheckOfASumThatDiffers", [](World& on) { on.setSum(99.0); }, outCheck, {readXJLL}},
        {"OutCheckWithoutLines", [](World& on) { on.noLines = true; }, outCheck, {readXJLL}, errors::objectNotSet},
        {"OutCheckOfXmlWithAWholeKey", nothing, outCheckXml(wholeKey), {readXJLL}, 156},
        {"OutCheckOfXml", nothing, outCheckXml(withoutKey), {lastingTable}, 207},
        {"OutCheckOfNoXml", nothing, outCheckXml("no xml"), {}, errors::badVoucherXml},
        {"OutSave", giveFittingXml, outSave, {}},
        {"OutSaveOfRowsThatDiffer", giveOtherXml, outSave, {}, 10009},
        {"OutSaveOfNoXml", giveNoXml, outSave, {}, errors::badCollectionXml},
        {"OutSaveWithoutCash",
         [](World& on) {
             giveNoXml(on);
             withoutCash(on);
         },
         outSave,
         {}},
        {"OutSaveOfGeneratedRows", nothing, outSave, {readXJLL, filled}},
        {"OutSaveOfStoredRows", storeRow, outSave, {readXJLL, {"strCFColxml", "filled", Ledger::nameQuery.c_str()}}},
        {"OutSaveOfStoredRowsThatDiffer",
         [](World& on) {
             storeRow(on);
             on.setSum(99.0);
         },
         outSave,
         {readXJLL, {"strCFColxml", "filled", Ledger::nameQuery.c_str()}},
         10009},
    };
}

std::vector<Operation> allOperations() {
    std::vector<Operation> all;
    for (const auto& part :
         {settings(), glReads(), glChecks(), glSaves(), glSavesOfXml(), outReads(), outChecksAndSaves()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

class LeftBehind : public LoginTest, public testing::WithParamInterface<std::tuple<Operation, bool>> {
protected:
    const Operation operation = std::get<0>(GetParam());
    const bool optionsOn = std::get<1>(GetParam());

    /// The position of the statement at which a change begins or ends, from 1; 0 for at once.
    static std::size_t placeOf(const std::string& beginning, int nth, const Lines& statements) {
        for (std::size_t at = 0; !beginning.empty() && at < statements.size(); ++at) {
            if (statements[at].starts_with(beginning) && --nth == 0) {
                return at + 1;
            }
        }
        EXPECT_TRUE(beginning.empty()) << "no statement begins with " << beginning;
        return 0;
    }
    /// The changes after all statements up to a position, and after an ignored failure those of the later ones
    /// as well.
    Sight changed(Sight sight, const Lines& statements, std::size_t failed, bool ignored) const {
        const auto hasRun = [&](const std::string& beginning, int nth) {
            const std::size_t place = placeOf(beginning, nth, statements);
            return place < failed || (ignored && place > failed);
        };
        for (const Change& change : operation.leaves) {
            if (hasRun(change.after, change.nth) && (change.until.empty() || !hasRun(change.until, 1))) {
                sight[change.name] = change.value == "option" ? onOff(optionsOn) : change.value;
            }
        }
        return sight;
    }
    /// Failures that are ignored: dropping a temporary table that does not exist, and reading the name of an
    /// item on the line itself, which is read again later.
    static bool isIgnored(const Lines& statements, std::size_t n) {
        const std::string& text = statements[n - 1];
        return text.starts_with("drop table ") || text.starts_with(dropTable) ||
               (text.starts_with(Ledger::nameQuery) && n < statements.size() && statements[n] == text);
    }
};

TEST_P(LeftBehind, OnSuccess) {
    World world(optionsOn);
    operation.prepare(world);
    const Sight before = world.sight();
    EXPECT_EQ(errorNumberOf([&] { operation.run(world); }), operation.error);
    const Lines& statements = world.database.texts();
    EXPECT_EQ(world.sight(), changed(before, statements, statements.size() + 1, false));
    EXPECT_EQ(world.database.openRecordsets(), Lines{});
    const bool ofAnotherRaises = operation.error != 0 && operation.error < 10008;
    if (!ofAnotherRaises && operation.error != 10011) {
        EXPECT_EQ(world.database.droppedRecordsets(), Lines{}) << "what is opened is closed, also before a refusal";
    }
}

TEST_P(LeftBehind, IfAnyStatementFails) {
    Lines statements;
    {
        World world(optionsOn);
        operation.prepare(world);
        (void)errorNumberOf([&] { operation.run(world); });
        statements = world.database.texts();
    }
    for (std::size_t n = 1; n <= statements.size(); ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + statements[n - 1]);
        World world(optionsOn);
        operation.prepare(world);
        const Sight before = world.sight();
        world.database.failStatement(n, Error(547, "server", "constraint"));
        const bool ignored = isIgnored(statements, n);
        EXPECT_EQ(errorNumberOf([&] { operation.run(world); }), ignored ? operation.error : 547);
        EXPECT_EQ(world.database.texts().size(), ignored ? statements.size() : n);
        EXPECT_EQ(world.sight(), changed(before, statements, n, ignored));
        EXPECT_EQ(world.database.openRecordsets(), Lines{});
    }
}

TEST_P(LeftBehind, SettingsOfTheProviderStay) {
    World world(optionsOn);
    world.gl.bFromDraft(true);
    world.gl.SetOldVouchNoID(7);
    operation.prepare(world);
    EXPECT_EQ(errorNumberOf([&] { operation.run(world); }), operation.error);
    world.setStored({});
    world.setLines({});
    EXPECT_NE(world.gl.GetCashFlowColFromDB(world.connection, "gl_accvouch", 1, 2, 5, day), nullptr) << "a draft";
    world.haveCash(false);
    EXPECT_TRUE(world.gl.SaveCashFlowCol(world.connection, "gl_accvouch", 1, 2, 5));
    EXPECT_TRUE(world.database.texts().back().ends_with(" and ino_id=7")) << "the former number";
}

/// The operations that write lines of a voucher given as XML.
class LeftBehindByARefusedLine : public LeftBehind {};

TEST_P(LeftBehindByARefusedLine, TheTableStays) {
    World world(optionsOn);
    operation.prepare(world);
    Sight expected = world.sight();
    world.database.failUpdate(Error(1105, "server", "disk full"));
    EXPECT_EQ(errorNumberOf([&] { operation.run(world); }), 1105);
    expected["tempdb"] = "1";
    if (operation.name.starts_with("OutOfXml")) {
        expected["bCashCode"] = expected["bAutoDisplay"] = onOff(optionsOn);
    }
    EXPECT_EQ(world.sight(), expected);
    EXPECT_EQ(world.database.openRecordsets(), Lines{});
}

/// Reading, generating and checking, which use the table that is passed; only saves use the other one.
class LeftBehindByNoSave : public LeftBehind {};

TEST_P(LeftBehindByNoSave, TheTemporaryTableIsIgnored) {
    World world(optionsOn);
    world.gl.VoucherTempTable("aside");
    operation.prepare(world);
    EXPECT_EQ(errorNumberOf([&] { operation.run(world); }), operation.error);
    for (const std::string& text : world.database.texts()) {
        EXPECT_EQ(text.find("aside"), std::string::npos) << text;
    }
}

std::string nameOf(const testing::TestParamInfo<std::tuple<Operation, bool>>& info) {
    return std::get<0>(info.param).name + (std::get<1>(info.param) ? "On" : "Off");
}

template <class Predicate> std::vector<Operation> operationsThat(Predicate&& fits) {
    std::vector<Operation> some;
    for (const Operation& operation : allOperations()) {
        if (fits(operation.name)) {
            some.push_back(operation);
        }
    }
    return some;
}

bool writesLines(const std::string& name) {
    return name == "OutCheckOfXml" || name.ends_with("OfXmlWithoutAKey") || name.ends_with("AnOutsideKey");
}
bool isNoSave(const std::string& name) { return name.find("Save") == std::string::npos; }

INSTANTIATE_TEST_SUITE_P(Operations, LeftBehind, testing::Combine(testing::ValuesIn(allOperations()), testing::Bool()),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Operations, LeftBehindByARefusedLine,
                         testing::Combine(testing::ValuesIn(operationsThat(writesLines)), testing::Bool()), nameOf);
INSTANTIATE_TEST_SUITE_P(Operations, LeftBehindByNoSave,
                         testing::Combine(testing::ValuesIn(operationsThat(isNoSave)), testing::Bool()), nameOf);

} // namespace
} // namespace z7::cashflow::test
