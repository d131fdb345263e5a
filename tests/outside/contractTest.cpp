// The two contracts as hosts know them: the order of their operations, and what counts where an argument is left out.

#include "outside/CompanyTest.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <type_traits>

namespace z7::cashflow::test {
namespace {

// The names of the virtual functions of a header in the order of their declaration, the destructor left aside.
Lines operationsOf(const std::string& header) {
    std::ifstream file(std::string(Z7_SOURCE_DIR) + "/src/z7cashflow/providers/" + header);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    text = std::regex_replace(text, std::regex("//[^\n]*"), "");
    Lines names;
    const std::regex operation("virtual[^;]*?(\\w+)\\s*\\(([^;]*?)\\)\\s*(const)?\\s*=\\s*0\\s*;");
    for (auto at = std::sregex_iterator(text.begin(), text.end(), operation); at != std::sregex_iterator(); ++at) {
        const bool getter = (*at)[3].matched;
        names.push_back((*at)[1].str() + (getter ? " get" : ""));
    }
    return names;
}

TEST(Contracts, TheLedgersOperationsStandInTheirOrder) {
    EXPECT_EQ(operationsOf("IGlVoucherProvider.h"),
              (Lines{"VoucherTempTable get", "VoucherTempTable", "objLogin", "SetOldVouchNoID", "GetCashFlowColFromDB",
                     "CreateCashFlowColFromDB", "CheckKmFrom", "CheckCFColFromDB", "SaveCashFlowCol",
                     "SaveCashFlowColEx", "GetCashFlowColFromXml", "SaveCashFlowColFromXml", "bFromDraft"}));
}

TEST(Contracts, TheOutsideOperationsStandInTheirOrder) {
    EXPECT_EQ(
        operationsOf("IOutVoucherProvider.h"),
        (Lines{"VoucherTempTable get", "VoucherTempTable", "objLogin", "GetCashFlowColFromXml", "GetCashFlowColFromDB",
               "CreateCashFlowColFromDB", "CheckCFColFromXml", "CheckCFColFromDB", "SaveCashFlowCol"}));
}

// The types of the operations; a change of one does not compile.
static_assert(std::is_same_v<decltype(&IOutVoucherProvider::GetCashFlowColFromXml),
                             std::string (IOutVoucherProvider::*)(Connection&, const std::string&, bool)>);
static_assert(
    std::is_same_v<decltype(&IOutVoucherProvider::CheckCFColFromXml),
                   bool (IOutVoucherProvider::*)(Connection&, const std::string&, const std::string&, std::string*)>);
static_assert(std::is_same_v<decltype(&IOutVoucherProvider::SaveCashFlowCol),
                             bool (IOutVoucherProvider::*)(Connection&, const std::string&, const std::string&,
                                                           std::string*, bool*)>);
static_assert(std::is_same_v<decltype(&IGlVoucherProvider::SetOldVouchNoID),
                             Variant (IGlVoucherProvider::*)(const std::int32_t&)>);
static_assert(
    std::is_same_v<decltype(&IGlVoucherProvider::SaveCashFlowColEx),
                   bool (IGlVoucherProvider::*)(Connection&, const std::string&, std::uint8_t, std::int16_t,
                                                std::int32_t, Date, std::shared_ptr<CashFlowCollection>*, bool*)>);
static_assert(std::is_same_v<decltype(&IGlVoucherProvider::SaveCashFlowColFromXml),
                             bool (IGlVoucherProvider::*)(Connection&, const std::string&, std::uint8_t, std::int16_t,
                                                          std::int32_t, std::string*, bool*)>);

class Defaults : public CompanyTest {};

TEST_F(Defaults, RowsOfAVoucherAsXmlAreTheStoredOnes) {
    storeRow();
    const std::string xml = "<v iperiod='1' isignseq='1' ino_id='6' dbill_date='2013-01-05'/>";
    EXPECT_EQ(rowsOf(gl.GetCashFlowColFromXml(connection, xml)).size(), 1U);
    EXPECT_EQ(rowsOf(out.GetCashFlowColFromXml(connection, xml)).size(), 1U);
}

TEST_F(Defaults, SavesFindTheirRowsAndCompareSums) {
    EXPECT_TRUE(out.SaveCashFlowCol(connection, "GL_accvouch", "OUT"));
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
    EXPECT_TRUE(gl.SaveCashFlowCol(connection, "gl_accvouch", 1, 1, 6));
    EXPECT_TRUE(gl.SaveCashFlowColEx(connection, "gl_accvouch", 1, 1, 6, Date(41279.0)));
    EXPECT_TRUE(gl.SaveCashFlowColFromXml(connection, "gl_accvouch", 1, 1, 6));
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});

    company.execute("update gl_accvouch set md=300 where coutno_id=N'OUT' and inid=1");
    EXPECT_ERROR(out.SaveCashFlowCol(connection, "GL_accvouch", "OUT"), 10009);
    EXPECT_ERROR(gl.SaveCashFlowCol(connection, "gl_accvouch", 1, 1, 6), 10009);
    EXPECT_ERROR(gl.SaveCashFlowColEx(connection, "gl_accvouch", 1, 1, 6, Date(41279.0)), 10009);
    EXPECT_EQ(company.storedRows(), Lines{stored("01", "250.5")});
}

TEST_F(Defaults, ChecksNeedNoPlaceForTheirReason) {
    EXPECT_TRUE(out.CheckCFColFromDB(connection, "sales", "OUT", ""));
    const auto rows = gl.CreateCashFlowColFromDB(connection, "gl_accvouch", 1, 1, 6, Date(41279.0));
    EXPECT_TRUE(gl.CheckKmFrom(connection, rows));
    EXPECT_TRUE(gl.CheckCFColFromDB(connection, "gl_accvouch", 1, 1, 6, rows));
    rows->Item(1)->SetValue("mc", 1.0);
    EXPECT_FALSE(gl.CheckCFColFromDB(connection, "gl_accvouch", 1, 1, 6, rows));
    EXPECT_NE(errorNumberOf([&] { (void)out.CheckCFColFromXml(connection, "<v/>", ""); }), 0);
}

TEST_F(Defaults, SettingsOfOneContractAreTheOthers) {
    out.VoucherTempTable("one");
    EXPECT_EQ(gl.VoucherTempTable(), "one");
    gl.VoucherTempTable("two");
    EXPECT_EQ(out.VoucherTempTable(), "two");
    EXPECT_TRUE(gl.SetOldVouchNoID(7).isNull());
    const auto other = std::make_shared<FakeLogin>();
    gl.objLogin(other);
    EXPECT_EQ(modPublic::GetLogin(), other);
    out.objLogin(login);
    EXPECT_EQ(modPublic::GetLogin(), login);
    const auto first = provider.CreateCashFlowCollection();
    const auto second = provider.CreateCashFlowCollection();
    EXPECT_NE(first, second);
    EXPECT_EQ(first->Count(), 0);
    EXPECT_NE(&first->CFStruct(), &second->CFStruct());
}

} // namespace
} // namespace z7::cashflow::test
