#include "z7cashflow/providers/rowsFromXml.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace z7::cashflow {

namespace {

struct VoucherKey {
    std::uint8_t iPeriod = 0;
    std::int16_t isignseq = 0;
    std::int32_t iNo_id = 0;
};

// The condition that picks a voucher in its table. The ledger's own table holds all years; every other name shows one.
std::string voucherCondition(const std::string& table, const VoucherKey& key, const char* beforePeriodElsewhere) {
    const std::string voucher = "iPeriod=" + std::to_string(key.iPeriod) +
                                " and iSignSeq=" + std::to_string(key.isignseq) +
                                " and iNo_id=" + std::to_string(key.iNo_id);
    return asciiLower(table) == "gl_accvouch"
               ? " where iyear=" + std::to_string(modPublic::GetIYear()) + " and " + voucher
               : beforePeriodElsewhere + voucher;
}

Date voucherDate(Connection& objCon, const std::string& table, const VoucherKey& key) {
    const auto voucher = objCon.Execute("select dbill_date from " + table + voucherCondition(table, key, " where "));
    if (voucher->EndOfFile()) {
        modPublic::RaiseCashFlowError(errors::noVoucherDateForXml, modPublic::GetText("Z7.CW.GL.CashFlow.00010"));
    }
    const Date date = toDate(voucher->Fields().Item("dbill_date"));
    voucher->Close();
    return date;
}

// What the XML alone decides, and the voucher's line does not replace.
bool isOfXml(std::string_view field) {
    constexpr std::array<std::string_view, 7> kept{"ccode", "nc_s", "nd_s", "md", "mc", "md_f", "mc_f"};
    return std::find(kept.begin(), kept.end(), field) != kept.end();
}

void takeLine(Connection& objCon, const std::string& table, const VoucherKey& key, CashFlow& row) {
    const auto line = objCon.Execute("select * from " + table + voucherCondition(table, key, " where  ") +
                                     " and inid=" + toTextOrEmpty(row.Item("inid")));
    if (!line->EndOfFile()) {
        FieldList& columns = line->Fields();
        for (const std::string& name : row.Fields()) {
            if (!isOfXml(name) && columns.Has(name)) {
                ignoringErrors([&] { row.SetValue(name, columns.Item(name)); });
            }
        }
    }
    line->Close();
}

} // namespace

std::shared_ptr<CashFlowCollection> LoadCashFlowColFromXml(const std::string& strCFColxml, Connection& objCon,
                                                           const std::string& strVoucherTable, std::uint8_t iPeriod,
                                                           std::int16_t isignseq, std::int32_t iNo_id,
                                                           const std::string& coutNo_id) {
    VoucherKey key{iPeriod, isignseq, iNo_id};
    Date date;
    if (coutNo_id.empty()) {
        date = voucherDate(objCon, strVoucherTable, key);
    } else {
        DataProvider().GetVoucherKeyFromOut_id(objCon, coutNo_id, key.iPeriod, key.isignseq, key.iNo_id, date);
    }
    auto collection = CashFlowCollection::Create();
    collection->UpdateCol(key.iPeriod, key.isignseq, key.iNo_id, date);
    collection->Load(strCFColxml);
    for (const auto& row : *collection) {
        takeLine(objCon, strVoucherTable, key, *row);
    }
    collection->VoucherTable(strVoucherTable);
    return collection;
}

std::shared_ptr<CashFlowCollection> GetCashFlowColFromVoucherXml(Connection& objCon, const std::string& strVoucherXml,
                                                                 bool blnCreateCF, const ProviderSettings& settings,
                                                                 IGlVoucherProvider& gl, IOutVoucherProvider& out) {
    DataProvider data;
    VoucherKey key;
    Date date;
    std::string coutNo_id;
    const std::string table =
        data.VoucherXmlToDB(objCon, strVoucherXml, key.iPeriod, key.isignseq, key.iNo_id, date, coutNo_id, blnCreateCF);
    std::shared_ptr<CashFlowCollection> collection;
    if (coutNo_id.empty() && blnCreateCF) {
        collection = gl.CreateCashFlowColFromDB(objCon, table, key.iPeriod, key.isignseq, key.iNo_id, date);
    } else if (coutNo_id.empty()) {
        const auto stored = data.GetCashTable(objCon, key.iPeriod, key.isignseq, key.iNo_id);
        collection = GetCashFlowColFromRs(objCon, *stored, date, "", settings.bFromDraft);
    } else if (blnCreateCF) {
        const std::string rows = out.CreateCashFlowColFromDB(objCon, table, coutNo_id);
        collection = CashFlowCollection::Create();
        if (!rows.empty()) {
            collection->Load(rows);
        }
    } else {
        const auto stored = data.GetCashTable2(objCon, coutNo_id);
        collection = GetCashFlowColFromRs(objCon, *stored, Date(), coutNo_id, settings.bFromDraft);
    }
    // A voucher with a whole key was found in the view, which is no temporary table.
    if (asciiLower(table) != "gl_v_accvouch") {
        ignoringErrors([&] { objCon.Execute("Drop table " + table); });
    }
    return collection;
}

std::string saveOrEmpty(const std::shared_ptr<CashFlowCollection>& collection) {
    return (collection ? collection : CashFlowCollection::Create())->Save();
}

} // namespace z7::cashflow
