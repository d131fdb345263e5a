// Voucher XML: the result of VoucherXmlToDB on tables in memory, with the field conversions of the real recordset.

#include "adapters/memory/Connection.h"
#include "doubles/FakeLogin.h"
#include "fuzz/target.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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

memory::Table ledger() {
    using shared::ColumnType;
    return {std::make_shared<const shared::ColumnList>(std::vector<shared::Column>{{"inid", ColumnType::int16, 0},
                                                                                   {"idoc", ColumnType::int16, 0},
                                                                                   {"cdigest", ColumnType::text, 300},
                                                                                   {"ccode", ColumnType::text, 40},
                                                                                   {"cexch_name", ColumnType::text, 20},
                                                                                   {"md", ColumnType::money, 0},
                                                                                   {"mc", ColumnType::money, 0},
                                                                                   {"md_f", ColumnType::money, 0},
                                                                                   {"mc_f", ColumnType::money, 0},
                                                                                   {"nd_s", ColumnType::real, 0},
                                                                                   {"nc_s", ColumnType::real, 0},
                                                                                   {"dt_date", ColumnType::date, 0},
                                                                                   {"citem_class", ColumnType::text, 2},
                                                                                   {"coutno_id", ColumnType::text, 0},
                                                                                   {"cDefine4", ColumnType::date, 0},
                                                                                   {"cDefine5", ColumnType::int32, 0}}),
            {}};
}

void requireLines(const memory::Table& table, const Voucher& voucher) {
    for (const std::vector<Variant>& line : table.records) {
        const auto field = [&](const char* name) { return line[static_cast<std::size_t>(table.columns->find(name))]; };
        for (const char* name : {"nc_s", "nd_s", "md", "mc", "md_f", "mc_f", "idoc"}) {
            require(!field(name).isNull(), "amounts and quantities are never null");
        }
        // A text longer than the column is not stored, so an account may be null but never empty.
        require(field("ccode") != Variant(""), "a line without an account is skipped");
    }
    require(!voucher.coutNo_id.empty(), "a table always comes with an outside key");
}

void run(const std::string& text, bool blnReCreate) {
    modPublic::SetLogin(std::make_shared<test::FakeLogin>());
    const auto tables = std::make_shared<memory::Tables>();
    tables->insert({"gl_accvouch", ledger()});
    memory::Connection database(tables);
    database.Open("memory");
    std::size_t statements = 0;
    database.onStatement([&statements](int, const std::string&) { ++statements; });
    Voucher voucher;
    std::string table;
    try {
        table = DataProvider().VoucherXmlToDB(database, text, voucher.iPeriod, voucher.iSignSeq, voucher.iNo_id,
                                              voucher.dbill_date, voucher.coutNo_id, blnReCreate);
    } catch (const Error& error) {
        require(error.number() == errors::badVoucherXml || error.number() == errors::objectNotSet,
                "the voucher is refused with error 1005, or with 91 for a line that lacks the attribute ccode");
        require(error.number() == errors::objectNotSet || (statements == 0 && voucher.coutNo_id.empty()),
                "refused text reaches no database and changes no argument");
        return;
    }
    if (table == "gl_v_accvouch") {
        require(!blnReCreate && voucher.iPeriod != 0 && voucher.iSignSeq >= 1 && voucher.iNo_id >= 1,
                "only a whole key stands for a stored voucher");
        require(statements == 0 && voucher.coutNo_id.empty(), "a stored voucher is not laid down again");
        return;
    }
    require(table.starts_with("tempdb..TempVoucher"), "the table lies in tempdb");
    require(statements == 3, "drop, make, open");
    requireLines(tables->at(asciiLower(table)), voucher);
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
