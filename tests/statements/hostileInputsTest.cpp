// Every value that enters the library from outside, harmless and hostile, through the operations that insert it into
// a statement.

#include "adapters/tsql/Shape.h"
#include "doubles/ContextGuard.h"
#include "doubles/ScriptedDatabase.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::test {
namespace {

const std::vector<std::string> hostileTexts{
    "'",
    "x'--",
    "x' or '1'='1",
    "x';drop table gl_cashtable;--",
    "x'; delete from gl_cashtable where N''='",
    "1 or 1=1",
    "1;drop table code",
    "gl_accvouch; drop table code",
    "gl_accvouch where 1=1 --",
    "(select 1) as x",
    "x', N'y",
    "x' union select citemcode from fitemss98 where N''='",
    "x'\n--",
    "\\'",
    "Null,Null",
    "1/*",
    "[x] where 1=1 --",
    "[\x01\x01\x01\x01] x",
    "1--\x01",
    "gl_accvouch\xE3\x80\x80"
    "drop\xE3\x80\x80table\xE3\x80\x80"
    "code",
    "0,0) delete from code --",
};

// All values that enter the library from outside, harmless by default.
struct Inputs {
    std::string table = "gl_accvouch";
    std::string account = "1001";
    std::string item = "01";
    std::string outsideKey = "SO-1";
    std::string option = "bCashCode";
    std::string system = "GL";
    std::string operatorName = "demo";
    std::string user = "u1";
    std::string accountId = "001";
    std::string year = "2013";
    std::string inid = "1";
    std::string guid = "ABC";
    std::string department = "D1";
    std::string amount = "100";
    std::string userNumber = "7";
    // State left by a host, with which operations choose other statements.
    bool fromDraft = false;
    bool withoutStoredRows = false;
    bool governmentAccounts = false;
    bool nothingFound = false; ///< the database returns no records
};

const std::vector<std::string Inputs::*> allInputs{
    &Inputs::table,  &Inputs::account,      &Inputs::item,       &Inputs::outsideKey, &Inputs::option,
    &Inputs::system, &Inputs::operatorName, &Inputs::user,       &Inputs::accountId,  &Inputs::year,
    &Inputs::inid,   &Inputs::guid,         &Inputs::department, &Inputs::amount,     &Inputs::userNumber};

// A database that has a record for every query, so that the operations get as far as possible.
void answerEverything(ScriptedDatabase& database, bool nothingFound = false) {
    using Rows = std::vector<std::vector<Variant>>;
    const Rows found{{std::int16_t{2013},
                      std::uint8_t{1},
                      std::uint8_t{1},
                      std::int16_t{2},
                      std::int32_t{5},
                      std::int16_t{1},
                      Date(41279.0),
                      "V",
                      "1001",
                      100.0,
                      0.0,
                      true,
                      "name",
                      "01",
                      "01",
                      "True",
                      100.0,
                      std::int32_t{1},
                      Variant(),
                      Variant()}};
    database.answerPrefix("", {{"iyear",     "iid",    "iperiod", "isignseq", "ino_id",    "inid",      "dbill_date",
                                "csign",     "ccode",  "md",      "mc",       "bCashItem", "citemname", "cItemCode",
                                "cCashItem", "cvalue", "mysum",   "count",    "coutno_id", "cdept_id"},
                               nothingFound ? Rows{} : found,
                               {}});
}

std::shared_ptr<CashFlowCollection> rowsOf(const Inputs& in) {
    auto collection = CashFlowCollection::Create();
    collection->UpdateCol(1, 2, 5, Date(41279.0));
    collection->VoucherTable(in.table);
    const auto row = collection->CreateCFObject();
    row->SetValue("RowGuid", in.guid);
    row->SetValue("inid", in.inid);
    row->SetValue("ccode", in.account);
    row->SetValue("cCashItem", in.item);
    row->SetValue("md", in.amount);
    row->SetValue("cdept_id", in.department);
    row->SetValue("cDefine5", in.userNumber);
    collection->Add(row);
    return collection;
}

std::string attribute(const char* name, const std::string& value) {
    std::string text = std::string(" ") + name + "='";
    for (const char c : value) {
        text += c == '\''  ? std::string("&apos;")
                : c == '<' ? std::string("&lt;")
                : c == '&' ? std::string("&amp;")
                           : std::string(1, c);
    }
    return text + "'";
}

// A voucher with one line on a cash account, from another subsystem, without a key of the ledger.
std::string voucherOf(const Inputs& in) {
    return "<voucher><line" + attribute("inid", in.inid) + attribute("ccode", in.account) + attribute("md", in.amount) +
           attribute("ccashitem_id", in.item) + attribute("coutno_id", in.outsideKey) +
           attribute("cdept_id", in.department) + "/></voucher>";
}

// Operations that run statements, each by itself: if one is refused, the next is still tried.
class Operations {
public:
    using Run = std::function<void(Connection&, DataProvider&, VoucherProvider&)>;

    explicit Operations(const Inputs& in) : fromDraft_(in.fromDraft) {
        addQuestions(in);
        addItemsAndSettings(in);
        addLedgerContract(in);
        addOutsideContract(in);
    }
    [[nodiscard]] const std::vector<std::function<void(Connection&)>>& all() const { return list_; }

private:
    void add(Run run) {
        list_.push_back([run = std::move(run), fromDraft = fromDraft_](Connection& con) {
            DataProvider data;
            VoucherProvider provider;
            provider.gl().bFromDraft(fromDraft);
            run(con, data, provider);
        });
    }
    void addQuestions(const Inputs& in);
    void addItemsAndSettings(const Inputs& in);
    void addLedgerContract(const Inputs& in);
    void addOutsideContract(const Inputs& in);

    bool fromDraft_;
    std::vector<std::function<void(Connection&)>> list_;
};

void Operations::addQuestions(const Inputs& in) {
    add([in](auto& con, auto& data, auto&) { (void)data.GetCashTable(con, 1, 2, 5); });
    add([in](auto& con, auto& data, auto&) { (void)data.GetCashTable2(con, in.outsideKey); });
    add([in](auto& con, auto& data, auto&) { (void)data.GetVoucherTable(con, in.table, 1, 2, 5); });
    add([in](auto& con, auto& data, auto&) { (void)data.GetVoucherTable2(con, in.table, in.outsideKey); });
    add([in](auto& con, auto& data, auto&) { (void)data.CodeIsCashFlowKm(con, in.account); });
    add([in](auto& con, auto& data, auto&) { (void)data.GetCashSumInVoucher(con, in.table, 1, 2, 5); });
    add([in](auto& con, auto& data, auto&) { (void)data.GetCashSumInVoucher2(con, in.table, in.outsideKey); });
    add([in](auto& con, auto& data, auto&) { (void)data.HaveCashFlowCodeInVoucher(con, in.table, 1, 2, 5); });
    add([in](auto& con, auto& data, auto&) { (void)data.HaveCashFlowCodeInVoucher2(con, in.table, in.outsideKey); });
    add([in](auto& con, auto& data, auto&) {
        std::uint8_t period = 0;
        std::int16_t kind = 0;
        std::int32_t number = 0;
        Date date;
        std::string key = in.outsideKey;
        (void)data.VoucherXmlToDB(con, voucherOf(in), period, kind, number, date, key, true);
    });
}

void Operations::addItemsAndSettings(const Inputs& in) {
    add([in](auto& con, auto& data, auto&) { (void)data.GetCFItemName(con, in.item); });
    add([in](auto& con, auto& data, auto&) {
        std::string item;
        data.GetCashFlowTemplate(con, in.account, true, Date(41279.0), item);
    });
    add([in](auto& con, auto& data, auto&) {
        std::string item;
        data.GetCashFlowFromDraft(con, 1, item);
    });
    add([in](auto& con, auto& data, auto&) {
        data.SaveCashFlowTemplate(con, in.account, true, in.item, Date(41279.0));
    });
    add([in](auto& con, auto& data, auto&) {
        std::string item;
        std::string name;
        data.GetCashFlowItem(con, in.account, true, Date(41279.0), item, name);
    });
    add([in](auto& con, auto& data, auto&) { (void)data.GetAccInfo(con, in.system, in.option); });
    add([in](auto& con, auto& data, auto&) { (void)data.GetVoucherOption(con, in.operatorName, "cvalue"); });
    add([in](auto& con, auto& data, auto&) { (void)data.DateToYearPeriod(con, Date(41279.0)); });
}

void Operations::addLedgerContract(const Inputs& in) {
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.gl().GetCashFlowColFromDB(con, in.table, 1, 2, 5, Date(41279.0));
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.gl().CreateCashFlowColFromDB(con, in.table, 1, 2, 5, Date(41279.0));
    });
    add([in](auto& con, auto&, auto& provider) { (void)provider.gl().CheckKmFrom(con, rowsOf(in)); });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.gl().CheckCFColFromDB(con, in.table, 1, 2, 5, rowsOf(in));
    });
    add([in](auto& con, auto&, auto& provider) {
        auto rows = rowsOf(in);
        provider.gl().SaveCashFlowColEx(con, in.table, 1, 2, 5, Date(41279.0), &rows);
    });
    add([in](auto& con, auto&,
             auto& provider) { // a voucher that the host keeps in a table of its own until it is saved
        provider.gl().VoucherTempTable(in.table);
        auto rows = rowsOf(in);
        provider.gl().SaveCashFlowCol(con, "gl_accvouch", 1, 2, 5, &rows);
    });
    add([in](auto& con, auto&, auto& provider) { // a voucher whose number has changed
        provider.gl().SetOldVouchNoID(4);
        provider.gl().SaveCashFlowColEx(con, in.table, 1, 2, 5, Date(41279.0));
    });
    add([in](auto& con, auto&, auto& provider) {
        auto rows = rowsOf(in);
        rows->ibackno_id(4);
        provider.gl().SaveCashFlowColEx(con, in.table, 1, 2, 5, Date(41279.0), &rows);
    });
    for (const bool creates : {false, true}) {
        add([in, creates](auto& con, auto&, auto& provider) {
            (void)provider.gl().GetCashFlowColFromXml(con, voucherOf(in), creates);
        });
    }
    add([in](auto& con, auto&, auto&) { // only the rows, without the reads that would refuse them first
        const auto rows = rowsOf(in);
        for (const auto& row : *rows) {
            con.Execute(row->InsertSql("gl_v_cashtable", rows->CFStruct()));
        }
    });
    add([in](auto& con, auto&, auto& provider) {
        std::string document = rowsOf(in)->Save();
        provider.gl().SaveCashFlowColFromXml(con, in.table, 1, 2, 5, &document);
    });
}

void Operations::addOutsideContract(const Inputs& in) {
    add([in](auto& con, auto&, auto& provider) {
        std::string document = rowsOf(in)->Save();
        bool unchecked = false;
        provider.out().SaveCashFlowCol(con, in.table, in.outsideKey, &document, &unchecked);
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.out().GetCashFlowColFromDB(con, in.table, in.outsideKey);
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.out().CreateCashFlowColFromDB(con, in.table, in.outsideKey);
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.out().CheckCFColFromDB(con, in.table, in.outsideKey, "");
    });
    for (const bool creates : {false, true}) {
        add([in, creates](auto& con, auto&, auto& provider) {
            (void)provider.out().GetCashFlowColFromXml(con, voucherOf(in), creates);
        });
    }
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.out().CheckCFColFromXml(con, voucherOf(in), rowsOf(in)->Save());
    });
}

class HostileInputs : public LoginTest {
protected:
    // Runs every operation with the inputs and returns the texts that reached the database.
    std::vector<std::string> run(const Inputs& in, bool guards) {
        modPublic::context().guidSource = GuidSequence().source();
        modPublic::context().bCashCode = false;
        modPublic::context().bAutoDisplay = false;
        modPublic::context().VouchState = in.withoutStoredRows ? std::int16_t{2} : std::int16_t{0};
        login->answers.accountId = in.accountId;
        login->answers.userId = in.user;
        login->answers.accountingYear = in.year;
        login->answers.information[117] = in.governmentAccounts ? "政府会计制度" : "";
        ScriptedDatabase database;
        answerEverything(database, in.nothingFound);
        login->guards = guards;
        modPublic::SetLogin(login);
        Connection& connection = database.connection();
        const Operations operations(in);
        for (const auto& operation : operations.all()) {
            modPublic::SetIYear(0);
            try {
                operation(connection);
            } catch (const Error&) { // refused; what matters is what reached the database before
            }
        }
        return database.texts();
    }
};

std::string masked(const std::string& text, const std::string& table) {
    std::string key = tsql::shapeOf(text).key;
    for (std::size_t at = key.find(table); !table.empty() && at != std::string::npos; at = key.find(table)) {
        key.replace(at, table.size(), "@");
    }
    constexpr std::string_view temporary = "TempVoucher";
    for (std::size_t at = key.find(temporary); at != std::string::npos; at = key.find(temporary, at)) {
        at += temporary.size();
        key.erase(at, key.find_first_not_of("0123456789ABCDEF", at) - at);
    }
    return key;
}

// Harmless inputs that lead the operations to all of their statements.
std::vector<Inputs> honestInputs() {
    std::vector<Inputs> list(1);
    for (const char* table : {"gl_v_accvouch", "sales", "sales.dbo.[sales vouchers]", "#own"}) {
        list.emplace_back().table = table;
    }
    Inputs keyless = list[2];
    keyless.userNumber.clear();
    list.push_back(keyless);
    for (const auto state :
         {&Inputs::fromDraft, &Inputs::withoutStoredRows, &Inputs::governmentAccounts, &Inputs::nothingFound}) {
        for (const char* table : {"gl_accvouch", "sales"}) {
            Inputs& in = list.emplace_back();
            in.table = table;
            in.*state = true;
        }
    }
    for (const char* amount : {" 100", "+100 ", "1E2"}) {
        list.emplace_back().amount = amount;
    }
    return list;
}

TEST_F(HostileInputs, HonestStatementsAreTheSameUnderBothPolicies) {
    std::set<std::string> shapes;
    for (const Inputs& in : honestInputs()) {
        const auto bare = run(in, false);
        EXPECT_EQ(run(in, true), bare) << in.table;
        for (const std::string& text : bare) {
            shapes.insert(masked(text, in.table));
        }
    }
    EXPECT_GT(shapes.size(), 40U);
    for (const char* seldom : {"Select Count(*) From gl_v_accvouch", "if not exists(", "GL_VouchDraft", "Where 1=-1",
                               "code.cUserDefineType<>", "select * from dsign"}) {
        EXPECT_TRUE(std::any_of(shapes.begin(), shapes.end(), [seldom](const std::string& shape) {
            return shape.find(tsql::shapeOf(seldom).key) != std::string::npos;
        })) << seldom;
    }
}

class HostileInputsAmongHonest : public HostileInputs {
protected:
    HostileInputsAmongHonest() {
        for (const Inputs& in : honestInputs()) {
            for (const std::string& text : run(in, false)) {
                honest_.insert(masked(text, in.table));
            }
        }
    }
    void expectHonestStatements(const Inputs& in) {
        for (const std::string& text : run(in, true)) {
            EXPECT_TRUE(honest_.count(masked(text, "gl_accvouch")) != 0) << text;
        }
    }
    /// The number of statements that differ from the harmless ones or cannot be parsed, if no policy refuses
    /// them.
    std::size_t departures(const Inputs& in) {
        std::size_t count = 0;
        for (const std::string& text : run(in, false)) {
            try {
                count += honest_.count(masked(text, "gl_accvouch")) == 0 ? 1 : 0;
            } catch (const Error&) { // not even a statement
                ++count;
            }
        }
        return count;
    }

private:
    std::set<std::string> honest_;
};

TEST_F(HostileInputsAmongHonest, NoValueTurnsAStatementIntoAnother) {
    std::size_t unguarded = 0;
    for (const auto input : allInputs) {
        for (const std::string& hostile : hostileTexts) {
            SCOPED_TRACE(hostile);
            Inputs in;
            in.*input = hostile;
            expectHonestStatements(in);
            unguarded += departures(in);
        }
    }
    EXPECT_GT(unguarded, 100U) << "without the policy the same values do reach the database as other statements";
}

// Two values can leave the shape of a statement unchanged while texts become numbers and numbers become texts.
// Therefore the test is that none of their quotes and no second number reaches a statement.
TEST_F(HostileInputs, SeveralThatWorkTogetherReachNoStatement) {
    const std::vector<std::string> opening{"付',9,1,N'0111',450,0,N'6601", "x', N'y", "a''b"};
    const std::vector<std::string> closing{"a'", "''", "N'0"};
    std::size_t turn = 0;
    for (const auto first : allInputs) {
        for (const auto second : allInputs) {
            if (first == second) {
                continue;
            }
            Inputs in;
            in.*first = opening[turn % opening.size()];
            in.*second = closing[turn / 2 % closing.size()];
            ++turn;
            for (const std::string& text : run(in, true)) {
                EXPECT_EQ(text.find(in.*first), std::string::npos) << text;
                for (const std::string& hostile : closing) {
                    EXPECT_EQ(text.find("N'" + hostile + "'"), std::string::npos) << text;
                }
            }
        }
    }
}

TEST_F(HostileInputsAmongHonest, NothingElseIsAskedWhereEveryInputIsHostile) {
    for (const std::string& hostile : hostileTexts) {
        Inputs in;
        for (const auto input : allInputs) {
            in.*input = hostile;
        }
        SCOPED_TRACE(hostile);
        expectHonestStatements(in);
    }
}

TEST_F(HostileInputs, AreRefusedBeforeTheDatabaseSeesAnything) {
    ScriptedDatabase database;
    answerEverything(database);
    Connection& connection = database.connection();
    login->guards = true;
    modPublic::SetLogin(login);
    for (const auto& failing : std::vector<std::function<void()>>{
             [&] { (void)DataProvider().CodeIsCashFlowKm(connection, "10'01"); },
             [&] { (void)DataProvider().CodeIsCashFlowKm(connection, "1' or '1'='1"); },
             [&] { (void)DataProvider().GetCFItemName(connection, "01'"); },
             [&] { (void)DataProvider().GetAccInfo(connection, "GL", "'bCashCode"); },
             [&] { (void)DataProvider().GetVoucherTable(connection, "code; drop table code", 1, 2, 5); },
             [&] { (void)VoucherProvider().out().CreateCashFlowColFromDB(connection, "sales", "K''1"); }}) {
        const Error error = errorOf(failing);
        EXPECT_EQ(error.number(), errors::statementRefused) << error.description();
        EXPECT_EQ(error.source(), "Z7CashFlow");
    }
    EXPECT_TRUE(database.texts().empty());
}

TEST_F(HostileInputs, ALineNumberWithBlanksIsHonest) {
    Inputs in;
    in.inid = " 2";
    ScriptedDatabase database;
    answerEverything(database);
    login->guards = true;
    modPublic::SetLogin(login);
    std::string document = rowsOf(in)->Save();
    bool unchecked = false;
    VoucherProvider().out().SaveCashFlowCol(database.connection(), "sales", "SO-1", &document, &unchecked);
    EXPECT_EQ(database.countOf("select * from sales where  iPeriod=1 and iSignSeq=2 and iNo_id=5 and inid= 2"), 1U);
    EXPECT_EQ(database.countOf("insert into gl_cashtable"), 1U);
}

TEST_F(HostileInputs, AFailedSaveNamesTheValueUnderTheSourceOfSaves) {
    Inputs in;
    in.department = "付',9,1,N'0111',450,0,N'6601";
    ScriptedDatabase database;
    answerEverything(database);
    login->guards = true;
    modPublic::SetLogin(login);
    std::string document = rowsOf(in)->Save();
    document.replace(document.find("cperson_id=''"), 13, "cperson_id='a&apos;'");
    bool unchecked = false;
    const Error error = errorOf([&] {
        VoucherProvider().out().SaveCashFlowCol(database.connection(), "sales", "SO-1", &document, &unchecked);
    });
    EXPECT_EQ(error.number(), errors::statementRefused);
    EXPECT_EQ(error.source(), "CashFlow");
    EXPECT_NE(error.description().find("cperson_id"), std::string::npos) << error.description();
    EXPECT_EQ(database.countOf("insert"), 0U);
}

} // namespace
} // namespace z7::cashflow::test
