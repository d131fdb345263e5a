#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace z7::cashflow {

/// All reads of the suite's database, and the few writes that are not rows. It keeps nothing between calls.
///
/// objCon is an open connection to the account's database. A voucher table is known by its name: "gl_accvouch" and
/// "gl_v_accvouch" in any letter case are keyed tables, which hold many vouchers; every other name is a keyless table,
/// which holds one. Names and texts go into statements as they come. Errors of the database reach the caller as the
/// database reported them. Recordsets that are returned belong to the caller, who closes them.
class DataProvider {
public:
    /// The stored rows of a ledger voucher in the context's year, with ccode_name, bCashItem and citemname. Rows whose
    /// item or account is unknown do not show. Empty where the context's VouchState is 2.
    [[nodiscard]] std::shared_ptr<Recordset> GetCashTable(Connection& objCon, std::uint8_t iPeriod,
                                                          std::int16_t iSignSeq, std::int32_t iNo_id);
    [[nodiscard]] std::shared_ptr<Recordset> GetCashTable(Connection& objCon, const VoucherKey& key);
    /// The same for the ledger voucher that was made from an outside voucher; empty where there is none.
    [[nodiscard]] std::shared_ptr<Recordset> GetCashTable2(Connection& objCon, const std::string& coutNo_id);
    /// The lines of a voucher on end-level, open accounts of the context's year, in the shape of a row, with bCashItem.
    /// A keyless table is one voucher, so the key does not matter there.
    [[nodiscard]] std::shared_ptr<Recordset> GetVoucherTable(Connection& objCon, const std::string& strVoucherTable,
                                                             std::uint8_t iPeriod, std::int16_t iSignSeq,
                                                             std::int32_t iNo_id);
    [[nodiscard]] std::shared_ptr<Recordset> GetVoucherTable(Connection& objCon, const std::string& strVoucherTable,
                                                             const VoucherKey& key);
    /// The same for a voucher known by its outside key. A keyless table must have the column ccashitem_id.
    [[nodiscard]] std::shared_ptr<Recordset> GetVoucherTable2(Connection& objCon, const std::string& strVoucherTable,
                                                              const std::string& coutNo_id);
    /// Whether an account is a cash-flow account in the context's year, be it closed or not.
    [[nodiscard]] bool CodeIsCashFlowKm(Connection& objCon, const std::string& ccode);
    /// Debit less credit of a voucher's lines on cash-flow accounts, rounded to cents; 0 where there is none.
    [[nodiscard]] double GetCashSumInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                             std::uint8_t iPeriod, std::int16_t iSignSeq, std::int32_t iNo_id);
    [[nodiscard]] double GetCashSumInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                             const VoucherKey& key);
    /// Whether the name is that of a keyed table. Asks no database.
    [[nodiscard]] bool HaveVoucherKey(Connection& objCon, const std::string& strVoucherTable);
    /// As GetCashSumInVoucher for an outside key, over the accounts of the session's year and not rounded. Error 94
    /// where all amounts are null.
    [[nodiscard]] double GetCashSumInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                              const std::string& coutNo_id);
    /// Key and date of the ledger voucher that was made from an outside voucher, in the context's year; zeros and
    /// 1900-01-01 where there is none.
    void GetVoucherKeyFromOut_id(Connection& objCon, const std::string& coutNo_id, std::uint8_t& iPeriod,
                                 std::int16_t& iSignSeq, std::int32_t& iNo_id, Date& dbill_date);
    [[nodiscard]] DatedVoucherKey ledgerVoucherOf(Connection& objCon, const OutsideKey& key);
    /// Puts a voucher given as XML where the readers find it and returns the name of the table: "gl_v_accvouch" if the
    /// XML has a whole voucher key and blnReCreate is false, else a new table in tempdb, which the caller drops. Key
    /// and date come from the root where it has them and they can be read. With a new table the outside key becomes the
    /// last one that a line has; where no line has one it stays the caller's, and an empty one becomes a new GUID text.
    /// Error 1005 for a text that is not XML; nothing is changed then. Each child node of the root counts as a line,
    /// and one without the attribute ccode is error 91. A table that was made stays in tempdb after that and after an
    /// error of the database.
    [[nodiscard]] std::string VoucherXmlToDB(Connection& objCon, const std::string& strVoucherXml,
                                             std::uint8_t& iPeriod, std::int16_t& iSignSeq, std::int32_t& iNo_id,
                                             Date& dbill_date, std::string& coutNo_id, bool blnReCreate);
    /// A text that is new each time and safe as a part of a table's name; empty if none can be made.
    [[nodiscard]] std::string GetGUID();
    /// Item code and name of a template that is valid on a date, whatever its year and style. Always false; the code
    /// says whether one was found. cItemName stays where none was.
    bool GetCashFlowItem(Connection& objCon, const std::string& cDataSource, bool bDir, Date dDate,
                         std::string& cItemCode, std::string& cItemName);
    /// Name of a cash-flow item; empty where the item is unknown. Reads on a session of its own.
    [[nodiscard]] std::string GetCFItemName(Connection& objCon, const std::string& cItemCode);
    /// The item that lines of an account (cDataSource) on the debit (bDir) or credit side normally belong to, in the
    /// context's year. The date does not matter. False and an empty code where there is no template. Own session. Where
    /// it is asked for, the day from which the template is meant to hold is handed out as well: nothing if there is no
    /// template or it has none.
    bool GetCashFlowTemplate(Connection& objCon, const std::string& cDataSource, bool bDir, Date dDate,
                             std::string& cItemCode, std::optional<Date>* dStartDate = nullptr);
    /// The item that the user's draft holds for a line. False and an empty item where there is no such line. Own
    /// session.
    bool GetCashFlowFromDraft(Connection& objCon, std::int16_t inid, std::string& cCashItem);
    /// Stores a template, or changes the item of the newest one of that account and side after asking through
    /// CashFlowTemplateSave. Nothing happens without an account or an item. Always false. Own session.
    bool SaveCashFlowTemplate(Connection& objCon, const std::string& cDataSource, bool bDir,
                              const std::string& cItemCode, Date dStartDate);
    /// Whether a voucher has a line on an open cash-flow account of the context's year.
    [[nodiscard]] bool HaveCashFlowCodeInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                                 std::uint8_t iPeriod, std::int16_t iSignSeq, std::int32_t iNo_id);
    [[nodiscard]] bool HaveCashFlowCodeInVoucher(Connection& objCon, const std::string& strVoucherTable,
                                                 const VoucherKey& key);
    /// The same for an outside key, in the year that the user logged in to. Only "GL_accvouch" in this letter case and
    /// "gl_v_accvouch" in any are tied to the year of their lines.
    [[nodiscard]] bool HaveCashFlowCodeInVoucher2(Connection& objCon, const std::string& strVoucherTable,
                                                  const std::string& coutNo_id);
    /// Does nothing.
    void CallRef(Connection& objCon, const std::string& reference, const Variant& first, const Variant& second);
    /// Value of an account option; empty if it is null. Where the option is missing, a message box says so, or the
    /// error stream where the host makes no boxes, and the value is empty.
    [[nodiscard]] std::string GetAccInfo(Connection& objCon, const std::string& csysid, const std::string& cname);
    /// Value of an operator's voucher option; "0" where the operator has no row or the value is null.
    [[nodiscard]] std::string GetVoucherOption(Connection& objCon, const std::string& operatorName,
                                               const std::string& optionName);
    /// Accounting year and period of a date in the login's account, as six digits; "190000" where it lies in no period.
    [[nodiscard]] std::string DateToYearPeriod(Connection& objCon, Date date);

    /// Raised while a template is saved. Style 32 is a question, on which bCancel stops the save; 64 is a notice.
    std::function<void(const std::string& message, std::int32_t style, bool& bCancel)> CashFlowTemplateSave;
};

} // namespace z7::cashflow
