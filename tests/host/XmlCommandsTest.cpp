#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "adapters/odbc/SqliteDialect.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"
#include "workbench/vouchers/rowsDocument.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace z7::cashflow::host {

using workbench::rowsOfDocument;
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class XmlCommandsTest : public testing::Test {
protected:
    XmlCommandsTest() {
        const RunResult made = runProgram({"init", database.string(), "--sample"});
        EXPECT_EQ(made.exitCode, 0) << made.err;
    }

    [[nodiscard]] RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin() + 1, database.string());
        return runProgram(arguments);
    }

    [[nodiscard]] RunResult outside(const std::string& action, const std::string& table, const std::string& key,
                                    const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"outside", action, database.string(), table, key, "--year", "2024"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runProgram(arguments);
    }

    [[nodiscard]] std::int32_t number(const std::string& query) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        return toInt32(connection.Execute(query)->Fields().Item(0));
    }

    void execute(const std::string& statement) const {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(database, 2024));
        connection.Execute(statement);
        connection.Close();
    }

    static std::string contentOf(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    test::ScratchFolder scratch;
    std::filesystem::path database = scratch.path() / "sample.db";
    static constexpr const char* invoice = "AR-2024-0301";
    const std::string rowsOfInvoice = "select count(*) from gl_cashtable where iYear=2024 and iPeriod=3 and "
                                      "iSignSeq=1 and iNo_id=2";
};

TEST_F(XmlCommandsTest, ExportWritesTheDocumentAndImportReadsItBack) {
    const RunResult exported = run({"export", "2024/6/2/10"});
    ASSERT_EQ(exported.exitCode, 0) << exported.err;
    EXPECT_THAT(exported.out, StartsWith("<root iperiod='6' isignseq='2' ino_id='10'>"));
    EXPECT_EQ(rowsOfDocument(exported.out)->Count(), 2);
    const RunResult json = run({"export", "2024/6/2/10", "--json"});
    EXPECT_EQ(Json::parse(json.out).at("xml"), exported.out);
    EXPECT_EQ(Json::parse(json.out).at("rows"), 2);
    const std::string file = scratch.write("rows.xml", exported.out).string();
    const RunResult imported = run({"import", "2024/6/2/10", file, "--json"});
    EXPECT_EQ(imported.exitCode, 0) << imported.err;
    EXPECT_EQ(
        imported.out,
        "{\"form\":1,\"voucher\":\"2024/6/2/10\",\"sign\":\"付\",\"outcome\":\"stored\",\"rows\":2,\"changed\":2}\n");
    const std::string taken = run({"export", "2024/6/2/10"}).out;
    EXPECT_THAT(taken, HasSubstr("cdept_id='02'")) << "what the document does not decide comes from the voucher's line";
    const std::string again = scratch.write("again.xml", taken).string();
    EXPECT_EQ(run({"import", "2024/6/2/10", again}).exitCode, 0);
    EXPECT_EQ(run({"export", "2024/6/2/10"}).out, taken) << "what was taken in comes out again";
}

TEST_F(XmlCommandsTest, ExportGeneratesRowsThatAreNotStored) {
    const RunResult stored = run({"export", "2024/4/1/6"});
    EXPECT_EQ(rowsOfDocument(stored.out)->Count(), 0);
    EXPECT_THAT(stored.out, StartsWith("<root iperiod='4' isignseq='1' ino_id='6'>"));
    const RunResult generated = run({"export", "2024/4/1/6", "--generate"});
    EXPECT_EQ(rowsOfDocument(generated.out)->Count(), 1);
}

TEST_F(XmlCommandsTest, ImportRefusesWhatDoesNotFitAndChangesNothing) {
    std::string document = run({"export", "2024/6/2/10"}).out;
    const std::size_t amount = document.find("md='600'");
    ASSERT_NE(amount, std::string::npos) << document;
    document.replace(amount, 8, "md='601'");
    const std::string file = scratch.write("rows.xml", document).string();
    const std::string before = run({"export", "2024/6/2/10"}).out;
    const RunResult refused = run({"import", "2024/6/2/10", file, "--json"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(Json::parse(refused.out).at("error").at("number"), 10009);
    EXPECT_EQ(run({"export", "2024/6/2/10"}).out, before);
}

TEST_F(XmlCommandsTest, ImportReportsWhatIsWrongWithItsFile) {
    const std::string broken = scratch.write("broken.xml", "<root><rows>").string();
    const RunResult unparsed = run({"import", "2024/6/2/10", broken, "--json"});
    EXPECT_EQ(unparsed.exitCode, 1);
    EXPECT_EQ(Json::parse(unparsed.out).at("error").at("number"), 1002);
    const std::string empty = scratch.write("empty.xml", " \n").string();
    EXPECT_EQ(run({"import", "2024/6/2/10", empty}).exitCode, 2) << "an empty text would mean the stored rows";
    EXPECT_EQ(run({"import", "2024/6/2/10", (scratch.path() / "none.xml").string()}).exitCode, 2);
    EXPECT_EQ(run({"import", "2024/6/2/10", scratch.path().string()}).exitCode, 2) << "a folder";
    EXPECT_EQ(run({"import", "2024/6/2/10"}).err, "z7cf: XML is missing; see --help\n");
    EXPECT_EQ(number("select count(*) from gl_cashtable where iPeriod=6"), 2);
}

TEST_F(XmlCommandsTest, ImportReadsStandardInput) {
    std::istringstream in(run({"export", "2024/6/2/10"}).out);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(runApplication({"import", database.string(), "2024/6/2/10", "-"}, Console{in, out, err}), 0) << err.str();
    EXPECT_EQ(out.str(), "Voucher 2024/6/付/10: rows stored: 2.\nchanged 2\n");
}

TEST_F(XmlCommandsTest, ADocumentHasRandomIdentitiesOnlyIfAskedFor) {
    const auto exported = [this](const std::string& voucher, const std::vector<std::string>& more = {}) {
        std::vector<std::string> words{"export", voucher};
        words.insert(words.end(), more.begin(), more.end());
        return run(words).out;
    };
    const auto identities = [](const std::string& document) {
        std::set<std::string> found;
        const std::regex identity("(?:key|RowGuid)='([0-9A-F]+)'");
        for (std::sregex_iterator each(document.begin(), document.end(), identity), end; each != end; ++each) {
            found.insert((*each)[1].str());
        }
        return found;
    };
    const std::string document = exported("2024/6/2/10");
    EXPECT_EQ(exported("2024/6/2/10"), document);
    EXPECT_NE(exported("2024/6/2/10", {"--identities"}), exported("2024/6/2/10", {"--identities"}));
    std::set<std::string> all = identities(document);
    EXPECT_EQ(all.size(), 4U) << "two for each of the two rows";
    all.merge(identities(exported("2024/6/2/4", {"--generate"})));
    EXPECT_GT(all.size(), 4U);
    EXPECT_EQ(all.size() % 2, 0U) << "the rows of every voucher have identities of their own";
}

TEST_F(XmlCommandsTest, JsonHasTheIdentitiesOfRowsOnlyIfAskedFor) {
    const auto expectAsAsked = [](const RunResult& plain, const RunResult& again, const RunResult& asked) {
        EXPECT_EQ(plain.out, again.out);
        for (const char* name : {"key", "RowGuid"}) {
            EXPECT_FALSE(Json::parse(plain.out).at("rows").at(0).contains(name)) << plain.out;
            EXPECT_TRUE(Json::parse(asked.out).at("rows").at(0).contains(name)) << asked.out;
        }
    };
    const std::vector<std::string> rows{"rows", "2024/6/2/10", "--json"};
    expectAsAsked(run(rows), run(rows), run({"rows", "2024/6/2/10", "--json", "--identities"}));
    expectAsAsked(outside("generate", "sales_voucher", invoice, {"--json"}),
                  outside("generate", "sales_voucher", invoice, {"--json"}),
                  outside("generate", "sales_voucher", invoice, {"--json", "--identities"}));
    ASSERT_EQ(runProgram({"sample-xml", scratch.path().string()}).exitCode, 0);
    const std::string file = (scratch.path() / "bonus-voucher.xml").string();
    expectAsAsked(run({"voucher-xml", file, "--json"}), run({"voucher-xml", file, "--json"}),
                  run({"voucher-xml", file, "--json", "--identities"}));
}

TEST_F(XmlCommandsTest, OutsideVouchersOfTheLedgerAndOfATableOfTheirOwn) {
    for (const char* table : {"gl_accvouch", "sales_voucher", "[sales_voucher]"}) {
        const RunResult generated = outside("generate", table, invoice, {"--json"});
        ASSERT_EQ(generated.exitCode, 0) << table << generated.err;
        const Json rows = Json::parse(generated.out).at("rows");
        ASSERT_EQ(rows.size(), 1U) << table;
        EXPECT_EQ(rows[0].at("ccode"), "1122");
        EXPECT_EQ(rows[0].at("cCashItem"), "0101");
        EXPECT_EQ(rows[0].at("mc").get<double>(), 146930.33) << "a number, though it was a text in the document";
        EXPECT_EQ(rows[0].at("iNo_id"), 2);
        EXPECT_EQ(outside("check", table, invoice).exitCode, 0) << table;
        EXPECT_EQ(number(rowsOfInvoice), std::string(table) == "gl_accvouch" ? 0 : 1);
        const RunResult saved = outside("save", table, invoice, {"--json"});
        EXPECT_EQ(saved.exitCode, 0) << saved.err;
        EXPECT_EQ(saved.out, "{\"form\":1,\"table\":\"" + std::string(table) +
                                 "\",\"key\":\"AR-2024-0301\",\"outcome\":\"stored\",\"rows\":1}\n");
        EXPECT_EQ(number(rowsOfInvoice), 1);
        EXPECT_EQ(Json::parse(outside("rows", table, invoice, {"--json"}).out).at("rows").size(), 1U);
        EXPECT_EQ(outside("check", table, invoice, {"--json"}).out,
                  "{\"form\":1,\"table\":\"" + std::string(table) +
                      "\",\"key\":\"AR-2024-0301\",\"verdict\":\"matched\"}\n");
    }
}

TEST_F(XmlCommandsTest, OutsideRowsGoToAFileAndComeFromOne) {
    const std::string file = (scratch.path() / "rows.xml").string();
    ASSERT_EQ(outside("generate", "sales_voucher", invoice, {"--xml", file}).exitCode, 0);
    EXPECT_EQ(rowsOfDocument(contentOf(file))->Count(), 1);
    EXPECT_THAT(outside("generate", "sales_voucher", invoice, {"--xml", "-"}).out, StartsWith("<root "));
    EXPECT_EQ(outside("generate", "sales_voucher", invoice, {"--xml", file}).exitCode, 2) << "nothing is overwritten";
    EXPECT_EQ(outside("save", "sales_voucher", invoice, {"--xml", file}).exitCode, 0);
    EXPECT_EQ(number(rowsOfInvoice), 1);
    std::string document = contentOf(file);
    const std::size_t amount = document.find("mc='146930.33'");
    ASSERT_NE(amount, std::string::npos);
    document.replace(amount, 14, "mc='146930.34'");
    const std::string changed = scratch.write("changed.xml", document).string();
    const RunResult refused = outside("save", "sales_voucher", invoice, {"--xml", changed, "--json"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(Json::parse(refused.out).at("error").at("number"), 10009);
    EXPECT_EQ(number(rowsOfInvoice), 1) << "the refused save was rolled back";
    for (const std::string& unread : {changed, (scratch.path() / "missing.xml").string()}) {
        const RunResult check = outside("check", "sales_voucher", invoice, {"--xml", unread});
        EXPECT_EQ(check.exitCode, 0) << check.err;
        EXPECT_THAT(check.err, HasSubstr("does not look at the document"));
    }
    EXPECT_EQ(outside("save", "sales_voucher", invoice, {"--xml", (scratch.path() / "missing.xml").string()}).exitCode,
              2);
}

TEST_F(XmlCommandsTest, OutsideRefusesWhatIsNotThereOrHostile) {
    EXPECT_EQ(outside("rows", "sales_voucher", "none").exitCode, 1);
    EXPECT_EQ(outside("rows", "sales_voucher", "x' or '1'='1").err,
              "z7cf: Table sales_voucher has no voucher x' or '1'='1\n");
    EXPECT_EQ(outside("rows", "code; drop table code", invoice).exitCode, 2);
    EXPECT_EQ(outside("show", "sales_voucher", invoice).exitCode, 2);
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(database, 2024));
    connection.Execute("update sales_voucher set coutno_id=N'x'' or 1=1 --'");
    connection.Close();
    const RunResult hostile = outside("save", "sales_voucher", "x' or 1=1 --", {"--json"});
    EXPECT_EQ(hostile.exitCode, 1);
    EXPECT_EQ(Json::parse(hostile.out).at("error").at("number"), 10020);
    EXPECT_EQ(number(rowsOfInvoice), 0);
}

// Readers do not find a row whose item is not in the list, so nothing may be reported as stored.
TEST_F(XmlCommandsTest, OutsideSaveRefusesAnItemThatIsNotThereAndStoresNothing) {
    ASSERT_EQ(outside("save", "sales_voucher", invoice).exitCode, 0);
    const std::string item = "select count(*) from gl_cashtable where iYear=2024 and iPeriod=3 and iSignSeq=1 and "
                             "iNo_id=2 and cCashItem=N'0101'";
    std::string document = outside("rows", "sales_voucher", invoice, {"--xml", "-"}).out;
    const std::size_t at = document.find("cCashItem='0101'");
    ASSERT_NE(at, std::string::npos) << document;
    document.replace(at, 16, "cCashItem='9999'");
    const std::string file = scratch.write("rows.xml", document).string();
    const RunResult refused = outside("save", "sales_voucher", invoice, {"--xml", file, "--json"});
    EXPECT_EQ(refused.exitCode, 1) << refused.out;
    EXPECT_EQ(Json::parse(refused.out).at("error").at("number"), 10022);
    EXPECT_EQ(Json::parse(refused.out).at("rows"), 0);
    const RunResult told = outside("save", "sales_voucher", invoice, {"--xml", file});
    EXPECT_THAT(told.err, HasSubstr("9999"));
    EXPECT_EQ(number(item), 1) << "the rows that were stored before are there";
    execute("delete from gl_cashtable");
    execute("delete from fitemss98 where citemcode=N'0101'");
    EXPECT_EQ(outside("save", "sales_voucher", invoice).exitCode, 1) << "the template's item";
    EXPECT_EQ(number(rowsOfInvoice), 0);
}

TEST_F(XmlCommandsTest, OutsideSaveRefusesADocumentThatIsNotOneOfRows) {
    ASSERT_EQ(outside("save", "sales_voucher", invoice).exitCode, 0);
    execute("update accinformation set cvalue=N'False' where cname=N'bXJLL'");
    const std::string page = scratch.write("page.html", "<html><body>x</body></html>").string();
    const RunResult refused = outside("save", "sales_voucher", invoice, {"--xml", page, "--json"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(Json::parse(refused.out).at("error").at("number"), 10023);
    const std::string broken = scratch.write("broken.xml", "<root><rows>").string();
    const RunResult unparsed = outside("save", "sales_voucher", invoice, {"--xml", broken, "--json"});
    EXPECT_EQ(Json::parse(unparsed.out).at("error").at("number"), 1002);
    EXPECT_EQ(number(rowsOfInvoice), 1);
}

// Without a ledger voucher, the rows of all such vouchers would be stored under the same key, and each save would
// replace those of the previous one.
TEST_F(XmlCommandsTest, OutsideSaveRefusesAVoucherThatTheLedgerDoesNotHave) {
    ASSERT_EQ(outside("save", "sales_voucher", invoice).exitCode, 0);
    execute("update sales_voucher set coutno_id=N'AR-2024-0999'");
    const std::string rows = "select count(*) from gl_cashtable where iYear=2024";
    const std::int32_t before = number(rows);
    const RunResult refused = outside("save", "sales_voucher", "AR-2024-0999", {"--json"});
    EXPECT_EQ(refused.exitCode, 1);
    const Json json = Json::parse(refused.out);
    EXPECT_EQ(json.at("outcome"), "refused");
    EXPECT_EQ(json.at("rows"), 0);
    EXPECT_EQ(json.at("error").at("number"), 10026);
    EXPECT_EQ(json.at("error").at("findings")[0].at("kind"), "no-ledger-voucher");
    EXPECT_EQ(json.at("error").at("findings")[0].at("voucher"), "AR-2024-0999");
    EXPECT_THAT(outside("save", "sales_voucher", "AR-2024-0999").err,
                HasSubstr("no valid voucher with the outside key AR-2024-0999 in 2024"));
    EXPECT_THAT(outside("save", "sales_voucher", "AR-2024-0999", {"--lang", "zh-CN"}).err,
                HasSubstr("2024 年的总账（gl_accvouch）中没有外部凭证号为“AR-2024-0999”的有效凭证"));
    EXPECT_EQ(number(rows), before);
    EXPECT_EQ(number(rowsOfInvoice), 1) << "the rows of the other voucher are left alone";
}

TEST_F(XmlCommandsTest, OutsideSaveRefusesAVoucherThatTheLedgerHasVoidedOrHasInAnotherYear) {
    const std::string rows = "select count(*) from gl_cashtable";
    const std::int32_t before = number(rows);
    EXPECT_EQ(runProgram({"outside", "save", database.string(), "sales_voucher", invoice, "--year", "2023"}).exitCode,
              1);
    execute("update gl_accvouch set iflag=1 where coutno_id=N'AR-2024-0301'");
    const RunResult voided = outside("save", "sales_voucher", invoice, {"--json"});
    EXPECT_EQ(voided.exitCode, 1);
    EXPECT_EQ(Json::parse(voided.out).at("error").at("number"), 10026);
    EXPECT_EQ(number(rows), before);
}

TEST_F(XmlCommandsTest, SampleXmlWritesDocumentsThatTheOtherCommandsTake) {
    const std::filesystem::path folder = scratch.path() / "documents";
    const RunResult written = runProgram({"sample-xml", folder.string(), "--json"});
    ASSERT_EQ(written.exitCode, 0) << written.err;
    EXPECT_EQ(written.lines().size(), 4U);
    EXPECT_EQ(runProgram({"sample-xml", folder.string()}).exitCode, 2) << "nothing is overwritten";
    const RunResult posted = run({"voucher-xml", (folder / "bonus-voucher.xml").string(), "--json"});
    EXPECT_EQ(posted.exitCode, 0) << posted.err;
    EXPECT_EQ(Json::parse(posted.out).at("rows").size(), 2U)
        << "the voucher has its number, so its stored rows are found";
    const std::string sales = (folder / "sales-voucher.xml").string();
    EXPECT_EQ(run({"voucher-xml", sales, "--json"}).out, "{\"form\":1,\"rows\":[]}\n");
    ASSERT_EQ(outside("save", "gl_accvouch", invoice).exitCode, 0);
    const RunResult stored = run({"voucher-xml", sales, "--json"});
    EXPECT_EQ(Json::parse(stored.out).at("rows").size(), 1U) << stored.err;
    EXPECT_EQ(rowsOfDocument(run({"voucher-xml", sales, "--xml"}).out)->Count(), 1);
    EXPECT_EQ(run({"voucher-xml", (folder / "new-voucher.xml").string(), "--create", "--json"}).out,
              "{\"form\":1,\"rows\":[]}\n");
}

TEST_F(XmlCommandsTest, TheSampleRowsPutARefusedVoucherRight) {
    const std::filesystem::path folder = scratch.path() / "documents";
    ASSERT_EQ(runProgram({"sample-xml", folder.string(), "--quiet"}).exitCode, 0);
    ASSERT_EQ(run({"check", "2024/7/2/12"}).exitCode, 1);
    const RunResult imported = run({"import", "2024/7/2/12", (folder / "advertising-rows.xml").string()});
    EXPECT_EQ(imported.exitCode, 0) << imported.err;
    EXPECT_EQ(run({"check", "2024/7/2/12"}).exitCode, 0);
    EXPECT_EQ(number("select count(*) from gl_cashtable where iPeriod=7 and iSignSeq=2 and iNo_id=12"), 2);
}

TEST_F(XmlCommandsTest, AVoucherWithoutADateNeedsTheYear) {
    const std::string file = scratch.write("v.xml", "<v><l inid='1' ccode='1001' md='1'/></v>").string();
    EXPECT_EQ(run({"voucher-xml", file}).exitCode, 2);
    EXPECT_EQ(run({"voucher-xml", file, "--year", "2024"}).exitCode, 0);
    EXPECT_EQ(run({"voucher-xml", file, "--year", "0"}).exitCode, 2);
    const std::string broken = scratch.write("b.xml", "<v>").string();
    const RunResult refused = run({"voucher-xml", broken, "--year", "2024"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("Error 1005"));
}

TEST_F(XmlCommandsTest, AFailedVoucherXmlLeavesNoTemporaryTable) {
    const std::string file =
        scratch.write("v.xml", "<v dbill_date='2024-03-08'><l inid='1' ccode='1001' md='5' coutno_id='K'/></v>")
            .string();
    const RunResult failed = run({"voucher-xml", file, "--create"});
    EXPECT_EQ(failed.exitCode, 1) << failed.out;
    EXPECT_THAT(failed.err, HasSubstr("was dropped"));
    EXPECT_EQ(number("select count(*) from gl_accvouch where ccode=N'1001' and coutno_id=N'K'"), 0);
}

TEST_F(XmlCommandsTest, ConnectTakesTheFilesPlace) {
    const std::string connect = sqlite::connectionString(database);
    const RunResult byFile = run({"rows", "2024/6/2/10"});
    const RunResult byString = runProgram({"rows", "2024/6/2/10", "--connect", connect});
    EXPECT_EQ(byString.exitCode, 0) << byString.err;
    EXPECT_EQ(byString.out, byFile.out);
    const std::string file = scratch.write("connect.txt", connect + "\n").string();
    EXPECT_EQ(runProgram({"--connect", "@" + file, "rows", "2024/6/2/10"}).out, byFile.out);
    const EnvironmentGuard environment("Z7CF_CONNECT", connect.c_str());
    EXPECT_EQ(runProgram({"rows", "2024/6/2/10"}).out, byFile.out);
    EXPECT_EQ(runProgram({"rows", (scratch.path() / "other.db").string(), "2024/6/2/10"}).exitCode, 3)
        << "a file that is named goes before the environment";
    EXPECT_EQ(runProgram({"vouchers", "--year", "2024", "--period", "1"}).exitCode, 0);
    EXPECT_EQ(runProgram({"rows", database.string(), "2024/6/2/10", "--connect", connect}).exitCode, 2);
}

TEST_F(XmlCommandsTest, ConnectReachesThroughAnOdbcDriver) {
#ifdef Z7_SESSION_FUNCTIONS
    const std::string connect = "Driver=SQLite3;Database=" + database.string() + ";LoadExt=" Z7_SESSION_FUNCTIONS;
    const ConnectionMaker driver = [] {
        return std::make_unique<odbc::Connection>([] { return std::make_unique<odbc::SqliteDialect>(); });
    };
    const EnvironmentGuard environment("Z7CF_CONNECT", connect.c_str());
    const RunResult rows = runProgram({"rows", "2024/6/2/10"}, driver);
    EXPECT_EQ(rows.exitCode, 0) << rows.err;
    EXPECT_EQ(rows.out, run({"rows", "2024/6/2/10"}).out);
    const RunResult allotted = runProgram({"allot", "--year", "2024", "--period", "7", "--json"}, driver);
    EXPECT_EQ(allotted.exitCode, 1) << "three are refused";
    EXPECT_EQ(allotted.lines().size(), 26U) << allotted.err;
    const std::string kept = std::regex_replace(allotted.out, std::regex("\"new\""), "\"kept\"");
    EXPECT_EQ(kept, run({"allot", "--year", "2024", "--period", "7", "--json"}).out);
#else
    GTEST_SKIP() << "there is no ODBC driver for the embedded database";
#endif
}

TEST_F(XmlCommandsTest, ConnectKeepsSecretsOutOfSight) {
    for (const char* secret :
         {"Driver={X};UID=u;PWD=hush", "Driver={X};password = hush", "driver=odbc;odbc={Driver={X};Pwd=hush}"}) {
        const RunResult refused = runProgram({"rows", "2024/6/2/10", "--connect", secret});
        EXPECT_EQ(refused.exitCode, 2) << secret;
        EXPECT_THAT(refused.err, HasSubstr("Z7CF_CONNECT"));
        EXPECT_THAT(refused.err, Not(HasSubstr("hush")));
        const RunResult misplaced = runProgram({"rows", secret, "2024/6/2/10"});
        EXPECT_EQ(misplaced.exitCode, 2) << secret;
        EXPECT_THAT(misplaced.err, HasSubstr("--connect"));
        EXPECT_THAT(misplaced.err, Not(HasSubstr("hush")));
    }
    EXPECT_EQ(runProgram({"rows", "2024/6/2/10", "--connect", "Driver={X};AccessKey=hush"}).exitCode, 2);
    const RunResult path = runProgram({"rows", (scratch.path() / "key=1.db").string(), "2024/6/2/10"});
    EXPECT_EQ(path.exitCode, 3) << "a file may be called anything";
    EXPECT_THAT(path.err, HasSubstr("key=1.db"));
    const std::string file = scratch.write("connect.txt", "Driver={No such driver};UID=u;PWD=hush").string();
    const std::string named = scratch.write("named.txt", "Driver={No such driver};Database=d;UID=u;PWD=hush").string();
    for (const auto& arguments : {std::vector<std::string>{"rows", "2024/6/2/10", "--connect", "@" + file},
                                  {"init", "--connect", "@" + file},
                                  {"init", "--sample", "--connect", "@" + named}}) {
        const RunResult failed = runProgram(arguments);
        EXPECT_EQ(failed.exitCode, 3);
        EXPECT_THAT(failed.err, HasSubstr("cannot be opened"));
        EXPECT_THAT(failed.err, Not(HasSubstr("hush")));
        EXPECT_THAT(failed.err, Not(HasSubstr("UID")));
    }
    EXPECT_EQ(runProgram({"rows", "2024/6/2/10", "--connect", "@" + scratch.path().string()}).exitCode, 2);
}

} // namespace
} // namespace z7::cashflow::host
