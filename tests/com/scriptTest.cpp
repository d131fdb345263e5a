#include "com/ComTest.h"
#include "com/ScriptHost.h"
#include "com/SuiteHost.h"
#include "standins/AutomationObject.h"
#include "voucher.h"

#include <fstream>
#include <optional>
#include <sstream>

namespace z7::test {
namespace {

using Lines = std::vector<std::string>;

class Scripts : public ComTest {
protected:
    std::optional<SuiteHost> suite_{std::in_place};
    ScriptHost scripts_;

    void SetUp() override {
        ASSERT_EQ(library().call("DllRegisterServer"), S_OK);
        scripts_.add(L"Login", suite_->login());
    }
    void TearDown() override {
        scripts_ = {};
        suite_.reset();
        EXPECT_EQ(library().call("DllUnregisterServer"), S_OK);
        ComTest::TearDown();
        EXPECT_EQ(cashflow::test::AutomationObject::liveObjects(), 0) << "objects of the host are still held";
    }
};

std::string contentOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    return content.str();
}

// The lines of a text, without the carriage returns that end some of them.
Lines lines(const std::string& text) {
    std::istringstream rest(text);
    Lines found;
    for (std::string line; std::getline(rest, line);) {
        std::erase(line, '\r');
        found.push_back(line);
    }
    return found;
}

// The first block of a kind after a heading.
Lines block(const std::string& guide, const std::string& heading, const std::string& kind) {
    const auto section = guide.find(heading);
    const auto begin = guide.find("```" + kind + "\n", section);
    const auto first = guide.find('\n', begin) + 1;
    const auto end = guide.find("\n```", first);
    if (section == std::string::npos || begin == std::string::npos || end == std::string::npos) {
        return {};
    }
    return lines(guide.substr(first, end - first));
}

TEST_F(Scripts, TheExampleOfTheGuideWritesWhatTheGuidePrints) {
    const std::string guide = contentOf(Z7_SOURCE_DIR "/docs/windows.md");
    const std::string script = contentOf(Z7_SOURCE_DIR "/examples/windows/voucher.vbs");
    const Lines expected = block(guide, "## A script", "text");
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(block(guide, "## A script", "vbs"), lines(script)) << "the guide prints another script";
    EXPECT_EQ(scripts_.run(script), expected);
    EXPECT_EQ(suite_->company().storedRows(), Lines{"2013/1/1/6 line 2 account 6001 item 01 0 250.5"});
}

TEST_F(Scripts, TheExampleInCppWritesTheSame) {
    std::wostringstream out;
    allocateVoucher(suite_->login().get(), suite_->connection().get(), out);
    EXPECT_EQ(lines(adapters::automation::utf8(out.str())),
              block(contentOf(Z7_SOURCE_DIR "/docs/windows.md"), "## A script", "text"));
    EXPECT_EQ(suite_->company().storedRows(), Lines{"2013/1/1/6 line 2 account 6001 item 01 0 250.5"});
}

TEST_F(Scripts, AnErrorThatIsNotHandledIsReportedWithItsLine) {
    EXPECT_EQ(scripts_.run("Set provider = WScript.CreateObject(\"Z7CashFlow.VoucherProvider\")\r\n"
                           "Set provider.IGlVoucherProvider_objLogin = Login\r\n"
                           "Set rows = provider.CreateCashFlowCollection\r\n"
                           "rows.CreateCFObject.SetValue \"none\", 1\r\n"),
              Lines{"error in line 4: CashFlow: A cash-flow row has no field of that name."});
    EXPECT_TRUE(scripts_.failed());
}

TEST_F(Scripts, VariablesTakeWhatComesBackByReference) {
    EXPECT_EQ(
        scripts_.run(
            "Set con = WScript.CreateObject(\"ADODB.Connection\")\r\n"
            "con.Open Login.ConnectionString\r\n"
            "Set provider = WScript.CreateObject(\"Z7CashFlow.VoucherProvider\")\r\n"
            "Set provider.IOutVoucherProvider_objLogin = Login\r\n"
            "Dim rows, check, xml\r\n"
            "Set rows = Nothing\r\n"
            "check = True\r\n"
            "WScript.Echo provider.IGlVoucherProvider_SaveCashFlowCol(con, \"gl_accvouch\", 1, 1, 6, rows, check)\r\n"
            "WScript.Echo rows.Count, rows(1)(\"cCashItem\")\r\n"
            "xml = \"\"\r\n"
            "WScript.Echo provider.IGlVoucherProvider_SaveCashFlowColFromXml(con, \"gl_accvouch\", 1, 1, 6, xml, check)\r\n"
            "WScript.Echo check\r\n"
            "WScript.Echo provider.IOutVoucherProvider_SaveCashFlowCol(con, \"gl_accvouch\", \"OUT\", xml)\r\n"
            "WScript.Echo Left(xml, 5)\r\n"
            "con.Close\r\n"),
        (Lines{"True", "1 01", "True", "False", "True", "<root"}));
}

TEST_F(Scripts, AnObjectStandsForItsDefaultProperty) {
    EXPECT_EQ(scripts_.run("Class Field\r\n"
                           "  Public Default Property Get Value\r\n"
                           "    Value = 7\r\n"
                           "  End Property\r\n"
                           "End Class\r\n"
                           "Set provider = WScript.CreateObject(\"Z7CashFlow.VoucherProvider\")\r\n"
                           "Set provider.IGlVoucherProvider_objLogin = Login\r\n"
                           "Set rows = provider.CreateCashFlowCollection\r\n"
                           "rows.iPeriod = New Field\r\n"
                           "Set row = rows.CreateCFObject\r\n"
                           "row.SetValue \"inid\", New Field\r\n"
                           "WScript.Echo rows.iPeriod, row(\"inid\")\r\n"),
              Lines{"7 7"});
}

TEST_F(Scripts, ForEachSurvivesRemoval) {
    EXPECT_EQ(scripts_.run("Set provider = WScript.CreateObject(\"Z7CashFlow.VoucherProvider\")\r\n"
                           "Set provider.IGlVoucherProvider_objLogin = Login\r\n"
                           "Set rows = provider.CreateCashFlowCollection\r\n"
                           "For i = 1 To 3\r\n"
                           "  Set row = rows.CreateCFObject\r\n"
                           "  row.SetValue \"inid\", i\r\n"
                           "  rows.Add row\r\n"
                           "Next\r\n"
                           "For Each row In rows\r\n"
                           "  WScript.Echo row(\"inid\"), row.objParent Is rows\r\n"
                           "  rows.Remove row.key\r\n"
                           "Next\r\n"
                           "WScript.Echo rows.Count\r\n"),
              (Lines{"1 True", "2 True", "3 True", "0"}));
}

TEST_F(Scripts, TheEntryForScreensPreparesRows) {
    EXPECT_EQ(scripts_.run("Set screen = WScript.CreateObject(\"Z7CashFlow.clsMain\")\r\n"
                           "Set screen.Login = Login\r\n"
                           "screen.SetVouchEdit = True\r\n"
                           "WScript.Echo screen.InitCashFlow(\"gl_accvouch\", 1, 1, 6, \"2013-01-05\")\r\n"
                           "WScript.Echo screen.CashFlowCol.Count\r\n"),
              (Lines{"True", "1"}));
}

} // namespace
} // namespace z7::test
