// The two contracts as seen by hosts: the order of their operations, and their default arguments.

#include "outside/CompanyTest.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <tuple>
#include <utility>

namespace z7::cashflow::test {
namespace {

// Names and parameters of the virtual functions of a header in the order of declaration, without the destructor. The
// name of a getter is followed by " get".
std::vector<std::pair<std::string, std::string>> declarationsOf(const std::string& header) {
    std::ifstream file(std::string(Z7_SOURCE_DIR) + "/src/z7cashflow/providers/" + header);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    text = std::regex_replace(text, std::regex("//[^\n]*"), "");
    std::vector<std::pair<std::string, std::string>> declarations;
    const std::regex operation("virtual[^;]*?(\\w+)\\s*\\(([^;]*?)\\)\\s*(const)?\\s*=\\s*0\\s*;");
    for (auto at = std::sregex_iterator(text.begin(), text.end(), operation); at != std::sregex_iterator(); ++at) {
        declarations.emplace_back((*at)[1].str() + ((*at)[3].matched ? " get" : ""), (*at)[2].str());
    }
    return declarations;
}

Lines operationsOf(const std::string& header) {
    Lines names;
    for (const auto& [name, parameters] : declarationsOf(header)) {
        names.push_back(name);
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

// The types of the operations, in the order of the slots; a change does not compile.
using Gl = IGlVoucherProvider;
using Out = IOutVoucherProvider;
using Rows = std::shared_ptr<CashFlowCollection>;
using Text = const std::string&;
template <class Operation, Operation> struct Slot {};
using GlSlots = std::tuple<
    Slot<std::string (Gl::*)() const, &Gl::VoucherTempTable>, Slot<void (Gl::*)(Text), &Gl::VoucherTempTable>,
    Slot<void (Gl::*)(const std::shared_ptr<Z7Login>&), &Gl::objLogin>,
    Slot<Variant (Gl::*)(const std::int32_t&), &Gl::SetOldVouchNoID>,
    Slot<Rows (Gl::*)(Connection&, Text, std::uint8_t, std::int16_t, std::int32_t, Date), &Gl::GetCashFlowColFromDB>,
    Slot<Rows (Gl::*)(Connection&, Text, std::uint8_t, std::int16_t, std::int32_t, Date), &Gl::CreateCashFlowColFromDB>,
    Slot<bool (Gl::*)(Connection&, const Rows&, std::string*), &Gl::CheckKmFrom>,
    Slot<bool (Gl::*)(Connection&, Text, std::uint8_t, std::int16_t, std::int32_t, const Rows&, std::string*),
         &Gl::CheckCFColFromDB>,
    Slot<bool (Gl::*)(Connection&, Text, std::uint8_t, std::int16_t, std::int32_t, Rows*, bool*), &Gl::SaveCashFlowCol>,
    Slot<bool (Gl::*)(Connection&, Text, std::uint8_t, std::int16_t, std::int32_t, Date, Rows*, bool*),
         &Gl::SaveCashFlowColEx>,
    Slot<std::string (Gl::*)(Connection&, Text, bool), &Gl::GetCashFlowColFromXml>,
    Slot<bool (Gl::*)(Connection&, Text, std::uint8_t, std::int16_t, std::int32_t, std::string*, bool*),
         &Gl::SaveCashFlowColFromXml>,
    Slot<void (Gl::*)(bool), &Gl::bFromDraft>>;
using OutSlots = std::tuple<Slot<std::string (Out::*)() const, &Out::VoucherTempTable>,
                            Slot<void (Out::*)(Text), &Out::VoucherTempTable>,
                            Slot<void (Out::*)(const std::shared_ptr<Z7Login>&), &Out::objLogin>,
                            Slot<std::string (Out::*)(Connection&, Text, bool), &Out::GetCashFlowColFromXml>,
                            Slot<std::string (Out::*)(Connection&, Text, Text), &Out::GetCashFlowColFromDB>,
                            Slot<std::string (Out::*)(Connection&, Text, Text), &Out::CreateCashFlowColFromDB>,
                            Slot<bool (Out::*)(Connection&, Text, Text, std::string*), &Out::CheckCFColFromXml>,
                            Slot<bool (Out::*)(Connection&, Text, Text, Text, std::string*), &Out::CheckCFColFromDB>,
                            Slot<bool (Out::*)(Connection&, Text, Text, std::string*, bool*), &Out::SaveCashFlowCol>>;
static_assert(std::tuple_size_v<GlSlots> == 13 && std::tuple_size_v<OutSlots> == 9);

// The default arguments of a contract, in the order of the operations: "SaveCashFlowCol blnCheckCF=nullptr".
Lines defaultsOf(const std::string& header) {
    Lines defaults;
    for (const auto& [name, parameters] : declarationsOf(header)) {
        const std::regex parameter("(\\w+)\\s*=\\s*(\\w+)");
        for (auto at = std::sregex_iterator(parameters.begin(), parameters.end(), parameter);
             at != std::sregex_iterator(); ++at) {
            defaults.push_back(name + " " + (*at)[1].str() + "=" + (*at)[2].str());
        }
    }
    return defaults;
}

TEST(Contracts, OnlyTheseArgumentsMayBeLeftOut) {
    EXPECT_EQ(
        defaultsOf("IGlVoucherProvider.h"),
        (Lines{"CheckKmFrom strInfo=nullptr", "CheckCFColFromDB strInfo=nullptr", "SaveCashFlowCol objCFCol=nullptr",
               "SaveCashFlowCol blnCheckCF=nullptr", "SaveCashFlowColEx objCFCol=nullptr",
               "SaveCashFlowColEx blnCheckCF=nullptr", "GetCashFlowColFromXml blnCreateCF=false",
               "SaveCashFlowColFromXml strCFColxml=nullptr", "SaveCashFlowColFromXml blnCheckCF=nullptr"}));
    EXPECT_EQ(defaultsOf("IOutVoucherProvider.h"),
              (Lines{"GetCashFlowColFromXml blnCreateCF=false", "CheckCFColFromXml strInfo=nullptr",
                     "CheckCFColFromDB strInfo=nullptr", "SaveCashFlowCol strCFColxml=nullptr",
                     "SaveCashFlowCol blnCheckCF=nullptr"}));
}

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
