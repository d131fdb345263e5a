#include "z7cashflow/providers/rowsFromXml.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/rowGeneration.h"
#include "z7cashflow/statements/temporaryTableStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace z7::cashflow {

namespace {

// The ledger's own table holds all years; every other name shows one.
bool holdsAllYears(const std::string& table) { return asciiLower(table) == "gl_accvouch"; }

Date voucherDate(Connection& objCon, const std::string& table, const VoucherKey& key) {
    const auto voucher = objCon.Execute(
        holdsAllYears(table) ? filled(statements::xmlVoucherDateInYear, table, modPublic::GetIYear(), key)
                             : filled(statements::xmlVoucherDate, table, key));
    if (voucher->atEnd()) {
        modPublic::raiseCashFlowError(errors::noVoucherDateForXml, modPublic::GetText("Z7.CW.GL.CashFlow.00010"));
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
    const std::string inid = toTextOrEmpty(row.Item("inid"));
    const auto line = objCon.Execute(
        holdsAllYears(table) ? filled(statements::xmlVoucherLineInYear, table, modPublic::GetIYear(), key, inid)
                             : filled(statements::xmlVoucherLine, table, key, inid));
    if (!line->atEnd()) {
        FieldList& columns = line->Fields();
        for (const std::string& name : row.Fields()) {
            if (!isOfXml(name) && columns.has(name)) {
                ignoringErrors([&] { row.SetValue(name, columns.Item(name)); });
            }
        }
    }
    line->Close();
}

} // namespace

std::shared_ptr<CashFlowCollection> LoadCashFlowColFromXml(const std::string& strCFColxml, Connection& objCon,
                                                           const std::string& strVoucherTable,
                                                           const std::variant<VoucherKey, OutsideKey>& voucher) {
    DatedVoucherKey found;
    if (const auto* outside = std::get_if<OutsideKey>(&voucher); outside != nullptr && !outside->empty()) {
        found = DataProvider().ledgerVoucherOf(objCon, *outside);
    } else {
        const auto* key = std::get_if<VoucherKey>(&voucher);
        found.key = key != nullptr ? *key : VoucherKey();
        found.date = voucherDate(objCon, strVoucherTable, found.key);
    }
    auto collection = CashFlowCollection::Create();
    collection->UpdateCol(found);
    collection->Load(strCFColxml);
    for (const auto& row : *collection) {
        takeLine(objCon, strVoucherTable, found.key, *row);
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
        data.VoucherXmlToDB(objCon, strVoucherXml, key.period, key.kind, key.number, date, coutNo_id, blnCreateCF);
    std::shared_ptr<CashFlowCollection> collection;
    if (coutNo_id.empty() && blnCreateCF) {
        collection = gl.CreateCashFlowColFromDB(objCon, table, key.period, key.kind, key.number, date);
    } else if (coutNo_id.empty()) {
        const auto stored = data.GetCashTable(objCon, key);
        collection = GetCashFlowColFromRs(objCon, *stored, date, {}, settings.bFromDraft);
    } else if (blnCreateCF) {
        const std::string rows = out.CreateCashFlowColFromDB(objCon, table, coutNo_id);
        collection = CashFlowCollection::Create();
        if (!rows.empty()) {
            collection->Load(rows);
        }
    } else {
        const auto stored = data.GetCashTable2(objCon, coutNo_id);
        collection = GetCashFlowColFromRs(objCon, *stored, Date(), {coutNo_id}, settings.bFromDraft);
    }
    // A voucher with a whole key was found in the view, which is not a temporary table.
    if (asciiLower(table) != "gl_v_accvouch") {
        ignoringErrors([&] { objCon.Execute(filled(statements::dropReadTable, table)); });
    }
    return collection;
}

std::string saveOrEmpty(const std::shared_ptr<CashFlowCollection>& collection) {
    return (collection ? collection : CashFlowCollection::Create())->Save();
}

} // namespace z7::cashflow
