#include "z7cashflow/data/DataProvider.h"

#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/temporaryTableStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/XmlDocument.h"
#include "z7cashflow/support/conversions.h"

#include <string_view>
#include <utility>

namespace z7::cashflow {

namespace {

std::string requiredAttribute(const XmlNode& node, const char* name) {
    auto text = node.attribute(name);
    if (!text) {
        raisePlatformError(Reason::attributeMissing, {name});
    }
    return *std::move(text);
}

constexpr std::string_view outsideKey = "coutno_id";

// Writes the line's attributes into the current record. An attribute that is not a column, or whose text does not fit
// its column, leaves the record as it was. The outside key goes on to all later lines that have the attribute.
void fillLine(FieldList& fields, const XmlNode& line, std::string& coutNo_id) {
    line.eachAttribute([&](std::string_view baseName, std::string_view text) {
        if (baseName.size() == outsideKey.size() && asciiLower(baseName) == outsideKey) {
            if (!text.empty()) {
                coutNo_id = text;
            }
            ignoringErrors([&] { fields.Item(outsideKey, coutNo_id); });
        } else {
            ignoringErrors([&] { fields.Item(baseName, text.empty() ? Variant() : Variant(text)); });
        }
    });
    for (const char* number : {"nc_s", "nd_s", "md", "mc", "md_f", "mc_f", "idoc"}) {
        if (isNullOrEmpty(fields.Item(number))) {
            fields.Item(number, std::int16_t{0});
        }
    }
}

} // namespace

std::string DataProvider::VoucherXmlToDB(Connection& objCon, const std::string& strVoucherXml, std::uint8_t& iPeriod,
                                         std::int16_t& iSignSeq, std::int32_t& iNo_id, Date& dbill_date,
                                         std::string& coutNo_id, bool blnReCreate) {
    Explanation why;
    const auto document = XmlDocument::load(strVoucherXml, &why);
    if (!document) {
        modPublic::raiseCashFlowError(errors::badVoucherXml, modPublic::GetText("Z7.CW.GL.CashFlow.00063"),
                                      std::move(why));
    }
    const XmlNode root = document->documentElement();
    // A key that is missing or unreadable leaves what the caller gave: the voucher has no number yet.
    ignoringErrors([&] { iPeriod = toByte(requiredAttribute(root, "iperiod")); });
    ignoringErrors([&] { iSignSeq = toInt16(requiredAttribute(root, "isignseq")); });
    ignoringErrors([&] { iNo_id = toInt32(requiredAttribute(root, "ino_id")); });
    ignoringErrors([&] { dbill_date = toDate(requiredAttribute(root, "dbill_date")); });
    if (!blnReCreate && iPeriod != 0 && iSignSeq >= 1 && iNo_id >= 1) {
        return "gl_v_accvouch";
    }

    std::string table = "tempdb..TempVoucher" + GetGUID();
    ignoringErrors([&] { objCon.Execute(filled(statements::dropFormerTable, table)); });
    objCon.Execute(filled(statements::createVoucherTable, table, modPublic::requiredLogin().accountingYear()));

    const auto lines = objCon.createRecordset();
    lines->CursorLocation(CursorLocation::client);
    lines->Open(filled(statements::voucherTableLines, table), objCon.ConnectionString(), CursorType::keyset,
                LockType::optimistic);
    if (coutNo_id.empty()) {
        coutNo_id = GetGUID();
    }
    for (const XmlNode& line : root.childNodes()) {
        if (requiredAttribute(line, "ccode").empty()) {
            continue;
        }
        lines->AddNew();
        fillLine(lines->Fields(), line, coutNo_id);
        lines->Update();
    }
    lines->Close();
    return table;
}

} // namespace z7::cashflow
