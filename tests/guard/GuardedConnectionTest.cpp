#include "adapters/guard/GuardedConnection.h"

#include "adapters/tsql/shape.h"
#include "doubles/ContextGuard.h"
#include "doubles/ScriptedDatabase.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace z7::cashflow::guard {
namespace {

using test::ScriptedDatabase;

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
};

// Every value that reaches the library from outside, honest by default.
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
};

const std::vector<std::string Inputs::*> allInputs{
    &Inputs::table,  &Inputs::account,      &Inputs::item,       &Inputs::outsideKey, &Inputs::option,
    &Inputs::system, &Inputs::operatorName, &Inputs::user,       &Inputs::accountId,  &Inputs::year,
    &Inputs::inid,   &Inputs::guid,         &Inputs::department, &Inputs::amount,     &Inputs::userNumber};

// A database that has a record for everything, so that the operations run as far as they can.
void answerEverything(ScriptedDatabase& database) {
    database.answerPrefix(
        "", {{"iyear", "iid", "iperiod", "isignseq", "ino_id", "inid", "dbill_date", "csign", "ccode", "md", "mc",
              "bCashItem", "citemname", "cItemCode", "cCashItem", "cvalue", "mysum", "count"},
             {{std::int16_t{2013}, std::uint8_t{1}, std::uint8_t{1}, std::int16_t{2}, std::int32_t{5}, std::int16_t{1},
               Date(41279.0), "V", "1001", 100.0, 0.0, true, "name", "01", "01", "True", 100.0, std::int32_t{1}}},
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

// Operations that run statements, each by itself: a refusal of one does not keep the next from being tried.
class Operations {
public:
    using Run = std::function<void(Connection&, DataProvider&, VoucherProvider&)>;

    explicit Operations(const Inputs& in) {
        addQuestions(in);
        addItemsAndSettings(in);
        addLedgerContract(in);
        addOutsideContract(in);
    }
    [[nodiscard]] const std::vector<std::function<void(Connection&)>>& all() const { return list_; }

private:
    void add(Run run) {
        list_.push_back([run = std::move(run)](Connection& con) {
            DataProvider data;
            VoucherProvider provider;
            run(con, data, provider);
        });
    }
    void addQuestions(const Inputs& in);
    void addItemsAndSettings(const Inputs& in);
    void addLedgerContract(const Inputs& in);
    void addOutsideContract(const Inputs& in);

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
        (void)data.VoucherXmlToDB(con, "<v><l ccode='1001' md='1'/></v>", period, kind, number, date, key, true);
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
        (void)provider.Gl().GetCashFlowColFromDB(con, in.table, 1, 2, 5, Date(41279.0));
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.Gl().CreateCashFlowColFromDB(con, in.table, 1, 2, 5, Date(41279.0));
    });
    add([in](auto& con, auto&, auto& provider) { (void)provider.Gl().CheckKmFrom(con, rowsOf(in)); });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.Gl().CheckCFColFromDB(con, in.table, 1, 2, 5, rowsOf(in));
    });
    add([in](auto& con, auto&, auto& provider) {
        auto rows = rowsOf(in);
        provider.Gl().SaveCashFlowColEx(con, in.table, 1, 2, 5, Date(41279.0), &rows);
    });
    add([in](auto& con, auto&, auto&) { // the rows alone, past the reads that would refuse them first
        const auto rows = rowsOf(in);
        for (const auto& row : *rows) {
            con.Execute(row->InsertSql("gl_v_cashtable", rows->CFStruct()));
        }
    });
    add([in](auto& con, auto&, auto& provider) {
        std::string document = rowsOf(in)->Save();
        provider.Gl().SaveCashFlowColFromXml(con, in.table, 1, 2, 5, &document);
    });
}

void Operations::addOutsideContract(const Inputs& in) {
    add([in](auto& con, auto&, auto& provider) {
        std::string document = rowsOf(in)->Save();
        bool unchecked = false;
        provider.Out().SaveCashFlowCol(con, in.table, in.outsideKey, &document, &unchecked);
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.Out().GetCashFlowColFromDB(con, in.table, in.outsideKey);
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.Out().CreateCashFlowColFromDB(con, in.table, in.outsideKey);
    });
    add([in](auto& con, auto&, auto& provider) {
        (void)provider.Out().CheckCFColFromDB(con, in.table, in.outsideKey, "");
    });
}

class GuardedConnectionTest : public test::LoginTest {
protected:
    // Runs every operation with the inputs and gives the texts that reached the database.
    std::vector<std::string> run(const Inputs& in, bool guarded) {
        modPublic::context().guidSource = test::GuidSequence().source();
        modPublic::context().bCashCode = false;
        modPublic::context().bAutoDisplay = false;
        login->accountId = in.accountId;
        login->userId = in.user;
        login->accountingYear = in.year;
        ScriptedDatabase database;
        answerEverything(database);
        const std::shared_ptr<Connection> inner(&database.connection(), [](Connection*) {});
        GuardedConnection outer(inner);
        Connection& connection = guarded ? static_cast<Connection&>(outer) : *inner;
        const Operations operations(in);
        for (const auto& operation : operations.all()) {
            modPublic::SetIYear(0);
            try {
                operation(connection);
            } catch (const Error&) { // a refusal; what matters is what reached the database before it
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
    static const std::regex temporary("TempVoucher[0-9A-F]+");
    return std::regex_replace(key, temporary, "TempVoucher");
}

TEST_F(GuardedConnectionTest, HandsHonestStatementsOnByteForByte) {
    const auto bare = run(Inputs{}, false);
    const auto guarded = run(Inputs{}, true);
    ASSERT_EQ(guarded.size(), bare.size());
    for (std::size_t at = 0; at < bare.size(); ++at) {
        EXPECT_EQ(guarded[at], bare[at]);
    }
    EXPECT_GT(bare.size(), 60U);
}

TEST_F(GuardedConnectionTest, LetsNoValueTurnAStatementIntoAnother) {
    std::set<std::string> honest;
    for (const std::string& text : run(Inputs{}, false)) {
        honest.insert(masked(text, "gl_accvouch"));
    }
    // Tables without the ledger's key columns are asked in forms of their own.
    Inputs keyless;
    keyless.table = "sales";
    for (const std::string& text : run(keyless, false)) {
        honest.insert(masked(text, "sales"));
    }
    Inputs unknown = keyless;
    unknown.userNumber.clear();
    for (const std::string& text : run(unknown, false)) {
        honest.insert(masked(text, "sales"));
    }
    std::size_t unguardedDepartures = 0;
    for (const auto input : allInputs) {
        for (const std::string& hostile : hostileTexts) {
            Inputs in;
            in.*input = hostile;
            for (const std::string& text : run(in, true)) {
                EXPECT_TRUE(honest.count(masked(text, "gl_accvouch")) != 0) << hostile << "\n" << text;
            }
            for (const std::string& text : run(in, false)) {
                try {
                    unguardedDepartures += honest.count(masked(text, "gl_accvouch")) == 0 ? 1 : 0;
                } catch (const Error&) { // not even a statement
                    ++unguardedDepartures;
                }
            }
        }
    }
    // Without the guard the same values do reach the database as other statements.
    EXPECT_GT(unguardedDepartures, 100U);
}

TEST_F(GuardedConnectionTest, ReportsARefusalUnderTheErrorOfTheOperation) {
    ScriptedDatabase database;
    answerEverything(database);
    GuardedConnection connection(std::shared_ptr<Connection>(&database.connection(), [](Connection*) {}));
    const Error error = test::errorOf([&] { (void)DataProvider().CodeIsCashFlowKm(connection, "1' or '1'='1"); });
    EXPECT_EQ(error.number(), statementRefused);
    EXPECT_TRUE(database.texts().empty());
}

TEST_F(GuardedConnectionTest, RefusesAStatementWhoseQuoteIsNotClosedBeforeTheDatabaseSeesIt) {
    ScriptedDatabase database;
    answerEverything(database);
    GuardedConnection connection(std::shared_ptr<Connection>(&database.connection(), [](Connection*) {}));
    for (const auto& failing : std::vector<std::function<void()>>{
             [&] { (void)DataProvider().CodeIsCashFlowKm(connection, "10'01"); },
             [&] { (void)DataProvider().GetCFItemName(connection, "01'"); },
             [&] { (void)DataProvider().GetAccInfo(connection, "GL", "'bCashCode"); },
             [&] { (void)VoucherProvider().Out().CreateCashFlowColFromDB(connection, "sales", "O'Brien"); }}) {
        const Error error = test::errorOf(failing);
        EXPECT_EQ(error.number(), 10020) << error.description();
        EXPECT_EQ(error.source(), "Z7CashFlow");
    }
    EXPECT_TRUE(database.texts().empty());
}

TEST_F(GuardedConnectionTest, IsTheSameSessionAsTheOneItGuards) {
    ScriptedDatabase database;
    const std::shared_ptr<Connection> inner(&database.connection(), [](Connection*) {});
    GuardedConnection connection(inner);
    EXPECT_EQ(connection.ConnectionString(), inner->ConnectionString());
    EXPECT_EQ(connection.State(), inner->State());
    EXPECT_THROW(GuardedConnection(nullptr), Error);
}

} // namespace
} // namespace z7::cashflow::guard
