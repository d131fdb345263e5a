#include "z7cashflow/dialog/DefineRef.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/dialogStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/XmlDocument.h"
#include "z7cashflow/support/conversions.h"

#include <array>

namespace z7::cashflow {

namespace {

bool isVoucherReference(const std::string& sRefID) { return asciiLower(sRefID) == "voucher"; }

// The filter of a request; empty if the request is not a document or has no filter.
std::string filterOf(const std::string& sXML) {
    if (sXML.empty()) {
        return {};
    }
    const auto request = XmlDocument::load(sXML);
    if (!request) {
        return {};
    }
    const auto filters = request->documentElement().selectNodes("filtersql");
    return filters.empty() ? std::string() : filters.front().text();
}

// Both tables of the join have account codes, so the filter must be qualified.
std::string withQualifiedAccounts(std::string filter) {
    constexpr std::string_view plain = "(ccode";
    constexpr std::string_view qualified = "(a.ccode";
    for (auto at = filter.find(plain); at != std::string::npos; at = filter.find(plain, at + qualified.size())) {
        filter.replace(at, plain.size(), qualified);
    }
    return filter;
}

} // namespace

void DefineRef::GetSrvRefMeta(const std::string& sRefID, const std::string& /*sXML*/, std::string& MetaXML,
                              std::string& /*sMsg*/, bool& /*bFlag*/) {
    if (!isVoucherReference(sRefID)) {
        return;
    }
    std::array<std::string, 5> texts;
    std::size_t at = 0;
    for (const char* key : {"Z7.CW.GL.CashFlow.00058", "Z7.CW.GL.CashFlow.00059", "Z7.CW.GL.CashFlow.00060",
                            "Z7.CW.GL.CashFlow.00061", "Z7.CW.GL.CashFlow.00062"}) {
        texts.at(at++) = modPublic::GetText(key);
    }
    const auto& [title, inid, ccode, md, mc] = texts;
    MetaXML = "<Ref cRefName='" + title + "' cEntityKeyFld='inid' cEntityNameFld='ccode'> ";
    MetaXML += "   <RefSet  cCheckFlds='ccode' iShowStyle='0' iFilterStyle='1'>";
    MetaXML += "   </RefSet>";
    MetaXML += "<RefColSet><Z7ColSet><Data>";
    MetaXML += "       <ColSet cFld='inid' bDisp='1' cCaption='" + inid + "' iColWidth='1000' iAlign='1'/>";
    MetaXML += "       <ColSet cFld='ccode' bDisp='1' cCaption='" + ccode + "' iColWidth='1500' iAlign='1'/>";
    MetaXML += "       <ColSet cFld='md' bDisp='1' cCaption='" + md + "' iColWidth='1500' iAlign='1'/>";
    MetaXML += "       <ColSet cFld='mc' bDisp='1' cCaption='" + mc + "' iColWidth='1500' iAlign='1'/>";
    MetaXML += "   </Data></Z7ColSet></RefColSet>";
    MetaXML += "</Ref>";
}

void DefineRef::GetSrvData(const std::string& sRefID, const std::string& sXML, const std::string& /*EleMeta*/,
                           std::shared_ptr<Recordset>& /*RstClass*/, std::shared_ptr<Recordset>& RstGrid,
                           std::shared_ptr<Recordset>& /*RstColSet*/, std::string& sMsg, bool& bFlag) {
    const std::string filter = filterOf(sXML);
    const bool cashAccounts = cashCodeIsOn();
    if (isVoucherReference(sRefID)) {
        const std::string text = statement(cashAccounts, withQualifiedAccounts(filter));
        try {
            const auto lines = connection().createRecordset();
            lines->CursorLocation(CursorLocation::client);
            lines->Open(text, &connection(), CursorType::snapshot, LockType::optimistic);
            lines->ActiveConnection(std::monostate());
            RstGrid = lines;
        } catch (const Error& failure) {
            sMsg = failure.description();
        }
    }
    bFlag = true;
}

Connection& DefineRef::connection() const {
    if (!objCon_) {
        raisePlatformError(Reason::dialogConnectionMissing);
    }
    return *objCon_;
}

bool DefineRef::cashCodeIsOn() const {
    const auto option = connection().Execute(filled(statements::cashCodeOption));
    const bool on = asciiUpper(toTextOrEmpty(option->Fields().Item("CValue"))) == "TRUE";
    option->Close();
    return on;
}

std::string DefineRef::statement(bool cashAccounts, const std::string& filter) const {
    const char* flag = cashAccounts ? "1 " : "0";
    const VoucherKey key{iPeriod_, isignseq_, iNo_id_};
    const bool keyed = DataProvider().HaveVoucherKey(connection(), VoucherTable_);
    std::string text = keyed ? filled(statements::referenceLines, VoucherTable_, flag, key)
                             : filled(statements::keylessReferenceLines, VoucherTable_, flag);
    if (!filter.empty()) {
        text += (keyed ? " and " : " where ") + filter; // a condition of the reference control's own making
    }
    return text;
}

} // namespace z7::cashflow
