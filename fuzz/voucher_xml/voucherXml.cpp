// Voucher XML: the result of VoucherXmlToDB on a table in memory, with the field conversions of the real recordset.

#include "doubles/FakeLogin.h"
#include "fuzz/target.h"
#include "fuzz/voucher_xml/MemoryDatabase.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace z7::cashflow::fuzz {
namespace {

/// The arguments that the operation changes.
struct Voucher {
    std::uint8_t iPeriod = 0;
    std::int16_t iSignSeq = 0;
    std::int32_t iNo_id = 0;
    Date dbill_date{7.0};
    std::string coutNo_id;
};

bool isZeroFilled(const std::map<std::string, Variant>& line) {
    for (const char* name : {"nc_s", "nd_s", "md", "mc", "md_f", "mc_f", "idoc"}) {
        const auto field = line.find(name);
        if (field == line.end() || field->second.isNull()) {
            return false;
        }
    }
    return true;
}

void requireLines(const MemoryDatabase& database, const Voucher& voucher) {
    for (const auto& line : database.lines()) {
        require(isZeroFilled(line), "amounts and quantities are never null");
        const auto account = line.find("ccode");
        // A text longer than the column is not stored, so an account may be missing but never empty.
        require(account == line.end() || account->second != Variant(""), "a line without an account is skipped");
    }
    require(!voucher.coutNo_id.empty(), "a table always comes with an outside key");
}

void run(const std::string& text, bool blnReCreate) {
    modPublic::SetLogin(std::make_shared<test::FakeLogin>());
    MemoryDatabase database;
    Voucher voucher;
    std::string table;
    try {
        table = DataProvider().VoucherXmlToDB(database, text, voucher.iPeriod, voucher.iSignSeq, voucher.iNo_id,
                                              voucher.dbill_date, voucher.coutNo_id, blnReCreate);
    } catch (const Error& error) {
        require(error.number() == errors::badVoucherXml || error.number() == errors::objectNotSet,
                "the voucher is refused with error 1005, or with 91 for a line that lacks the attribute ccode");
        require(error.number() == errors::objectNotSet || (database.statements() == 0 && voucher.coutNo_id.empty()),
                "refused text reaches no database and changes no argument");
        return;
    }
    if (table == "gl_v_accvouch") {
        require(!blnReCreate && voucher.iPeriod != 0 && voucher.iSignSeq >= 1 && voucher.iNo_id >= 1,
                "only a whole key stands for a stored voucher");
        require(database.statements() == 0 && voucher.coutNo_id.empty(), "a stored voucher is not laid down again");
        return;
    }
    require(table.starts_with("tempdb..TempVoucher"), "the table lies in tempdb");
    require(database.statements() == 3, "drop, make, open");
    requireLines(database, voucher);
}

} // namespace
} // namespace z7::cashflow::fuzz

// The lowest bit of the first byte says whether the table is requested; the document follows.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0) {
        z7::cashflow::fuzz::run(std::string(z7::cashflow::fuzz::textOf(data + 1, size - 1)), (data[0] & 1U) != 0);
    }
    return 0;
}
