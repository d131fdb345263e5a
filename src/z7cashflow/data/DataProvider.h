#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// All reads of the suite's database, and the few writes that do not concern rows. It keeps nothing between calls.
///
/// objCon is an open connection to the account's database. A voucher table is recognized by its name: "gl_accvouch"
/// and "gl_v_accvouch" in any letter case are keyed tables, which hold many vouchers; any other name is a keyless
/// table, which holds one. Names and texts are inserted into statements unchanged. Errors of the database pass
/// through unchanged. Returned recordsets belong to the caller, who closes them.
class DataProvider {
public:
    /// The stored rows of a ledger voucher in the context's year, with ccode_name, bCashItem and citemname.
    /// Rows whose item or account is unknown are not included. Empty if the context's VouchState is 2.
    [[nodiscard]] std::shared_ptr<Recordset> GetCashTable(Connection& objCon, std::uint8_t iPeriod,
                                                          std::int16_t iSignSeq, std::int32_t iNo_id);
    /// The same for a key in one piece.
    [[nodiscard]] std::shared_ptr<Recordset> GetCashTable(Connection& objCon, const VoucherKey& key);
    /// The same for the ledger voucher created from an outside voucher; empty if there is none.
    [[nodiscard]] std::shared_ptr<Recordset> GetCashTable2(Connection& objCon, const std::string& coutNo_id);
    /// The lines of a voucher on end-level, open accounts of the context's year, with the fields of a row and
    /// bCashItem. A keyless table is one voucher, so the key is not used there.
    [[nodiscard]] std::shared_ptr<Recordset> GetVoucherTable(Connection& objCon, const std::string& strVoucherTable,
                                                             std::uint8_t iPeriod, std::int16_t iSignSeq,
                                                             std::int32_t iNo_id);
    /// The same for a key in one piece.
    [[nodiscard]] std::shared_ptr<Recordset> GetVoucherTable(Connection& objCon, const std::string& strVoucherTable,
                                                             const VoucherKey& key);
    /// The same for a voucher identified by its outside key. A keyless table must have the column ccashitem_id.
    [[nodiscard]] std::shared_ptr<Recordset> GetVoucherTable2(Connection& objCon, const std::string& strVoucherTable,
                                                              const std::string& coutNo_id);
    /// Whether an account is a cash-flow account in the context's year, closed or not.
    [[nodiscard]] bool CodeIsCashFlowKm(Connection& objCon, const std::string& ccode);
    /// Debit less credit of a voucher's lines on cash-flow accounts, rounded to cents; 0 if there are none.
    [[nodiscard]] double GetCashSumInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                             std::uint8_t iPeriod, std::int16_t iSignSeq, std::int32_t iNo_id);
    /// The same for a key in one piece.
    [[nodiscard]] double GetCashSumInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                             const VoucherKey& key);
    /// Whether the name is that of a keyed table. Does not query the database.
    [[nodiscard]] bool HaveVoucherKey(Connection& objCon, const std::string& strVoucherTable);
    /// As GetCashSumInVoucher for an outside key, with the accounts of the session's year and without rounding.
    /// Error 94 if all amounts are null.
    [[nodiscard]] double GetCashSumInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                              const std::string& coutNo_id);
    /// Key and date of the ledger voucher created from an outside voucher, in the context's year; zeros and
    /// 1900-01-01 if there is none.
    void GetVoucherKeyFromOut_id(Connection& objCon, const std::string& coutNo_id, std::uint8_t& iPeriod,
                                 std::int16_t& iSignSeq, std::int32_t& iNo_id, Date& dbill_date);
    /// The same with key and date in one piece.
    [[nodiscard]] DatedVoucherKey ledgerVoucherOf(Connection& objCon, const OutsideKey& key);
    /// Stores a voucher given as XML where the readers find it and returns the name of the table:
    /// "gl_v_accvouch" if the XML has a complete voucher key and blnReCreate is false, otherwise a new table in
    /// tempdb, which the caller drops. Key and date are taken from the root if they are present and readable.
    /// With a new table the outside key is set to the last one on a line; if no line has one, the caller's is
    /// kept, and an empty one becomes a new GUID text. Error 1005 for a text that is not XML; nothing is
    /// changed then. Each child node of the root counts as a line, and one without the attribute ccode raises
    /// error 91. After that, and after an error of the database, the new table remains in tempdb.
    [[nodiscard]] std::string VoucherXmlToDB(Connection& objCon, const std::string& strVoucherXml,
                                             std::uint8_t& iPeriod, std::int16_t& iSignSeq, std::int32_t& iNo_id,
                                             Date& dbill_date, std::string& coutNo_id, bool blnReCreate);
    /// A new unique text that can be used as part of a table's name; empty if none can be generated.
    [[nodiscard]] std::string GetGUID();
    /// Item code and name of a template that is valid on a date, whatever its year and style. Always returns
    /// false; the code shows whether one was found. cItemName is unchanged if none was found.
    bool GetCashFlowItem(Connection& objCon, const std::string& cDataSource, bool bDir, Date dDate,
                         std::string& cItemCode, std::string& cItemName);
    /// The name of a cash-flow item; empty if the item is unknown. Reads on a separate session.
    [[nodiscard]] std::string GetCFItemName(Connection& objCon, const std::string& cItemCode);
    /// The item to which lines of an account (cDataSource) on the debit (bDir) or credit side normally belong,
    /// in the context's year. The date is not used. False and an empty code if there is no template. Uses a
    /// separate session. If requested, the day from which the template applies is returned as well: empty if
    /// there is no template or it has no such day.
    bool GetCashFlowTemplate(Connection& objCon, const std::string& cDataSource, bool bDir, Date dDate,
                             std::string& cItemCode, std::optional<Date>* dStartDate = nullptr);
    /// The item in the user's draft for a line. False and an empty item if there is no such line. Uses a
    /// separate session.
    bool GetCashFlowFromDraft(Connection& objCon, std::int16_t inid, std::string& cCashItem);
    /// Stores a template, or changes the item of the newest one for that account and side after asking through
    /// CashFlowTemplateSave. Does nothing without an account or an item. Always returns false. Uses a separate
    /// session.
    bool SaveCashFlowTemplate(Connection& objCon, const std::string& cDataSource, bool bDir,
                              const std::string& cItemCode, Date dStartDate);
    /// Whether a voucher has a line on an open cash-flow account of the context's year.
    [[nodiscard]] bool HaveCashFlowCodeInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                                 std::uint8_t iPeriod, std::int16_t iSignSeq, std::int32_t iNo_id);
    /// The same for a key in one piece.
    [[nodiscard]] bool HaveCashFlowCodeInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                                 const VoucherKey& key);
    /// The same for an outside key, in the year of the user's login. Only "GL_accvouch" in this letter case and
    /// "gl_v_accvouch" in any are restricted to the year of their lines.
    [[nodiscard]] bool HaveCashFlowCodeInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                                  const std::string& coutNo_id);
    /// Does nothing.
    void CallRef(Connection& objCon, const std::string& reference, const Variant& first, const Variant& second);
    /// The value of an account option; empty if it is null. If the option does not exist, a message box reports
    /// it, or standard error if the host creates no boxes, and the value is empty.
    [[nodiscard]] std::string GetAccInfo(Connection& objCon, const std::string& csysid, const std::string& cname);
    /// The value of an operator's voucher option; "0" if the operator has no row or the value is null.
    [[nodiscard]] std::string GetVoucherOption(Connection& objCon, const std::string& operatorName,
                                               const std::string& optionName);
    /// The accounting year and period of a date in the login's account, as six digits; "190000" if no period
    /// contains it.
    [[nodiscard]] std::string DateToYearPeriod(Connection& objCon, Date date);

    /// Raised while a template is saved. Style 32 is a question, on which bCancel stops the save; 64 is a notice.
    std::function<void(const std::string& message, std::int32_t style, bool& bCancel)> CashFlowTemplateSave;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
