#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Cash-flow rows of vouchers of the general ledger, identified by period, kind and number; the year is that of the
/// login context. Names and order of the operations are part of the contract.
///
/// objCon is an open connection to the account's database, and every operation uses its current contents.
/// strVoucherTable names the table or view with the voucher's lines. Pointer arguments are optional; each operation
/// states what applies without them. Errors of the database have their own number and text.
class IGlVoucherProvider {
public:
    virtual ~IGlVoucherProvider() = default;

    /// If not empty, the table from which a save reads the voucher instead of strVoucherTable.
    [[nodiscard]] virtual std::string VoucherTempTable() const = 0;
    /// Sets that table; the empty text removes it.
    virtual void VoucherTempTable(const std::string& value) = 0;
    /// The user's login for this thread; must be set before any other operation.
    virtual void objLogin(const std::shared_ptr<Z7Login>& value) = 0;
    /// The number that the voucher had before this save, for a voucher that no longer has a cash-flow account. Returns
    /// null.
    virtual Variant SetOldVouchNoID(const std::int32_t& vdata) = 0;

    /// The stored rows of a voucher, or a null pointer if none are stored. Sets the context's year from
    /// dbill_date. For a voucher made from a draft (bFromDraft), rows are generated if none are stored.
    [[nodiscard]] virtual std::shared_ptr<CashFlowCollection>
    GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                         std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date) = 0;

    /// Rows generated from the voucher's lines in the context's year; empty, but never a null pointer, if the
    /// voucher moves no cash. Error 94 if an amount is missing on a line of a cash-flow account.
    [[nodiscard]] virtual std::shared_ptr<CashFlowCollection>
    CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                            std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date) = 0;

    /// Whether each row is complete and on the account of its line. If not, strInfo is set to the reason. The
    /// voucher is the one named by the collection.
    [[nodiscard]] virtual bool CheckKmFrom(Connection& objCon, const std::shared_ptr<CashFlowCollection>& objCFCol,
                                           std::string* strInfo = nullptr) = 0;

    /// As CheckKmFrom, and whether the sum of the rows differs from the voucher's cash sum by less than 0.001.
    /// Sets the collection's VoucherTable to strVoucherTable, also on failure.
    [[nodiscard]] virtual bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id,
                                                const std::shared_ptr<CashFlowCollection>& objCFCol,
                                                std::string* strInfo = nullptr) = 0;

    /// Replaces the voucher's stored rows by those of a collection, in the host's transaction; always returns
    /// true. Without a collection it uses the stored rows, or generates them, and returns them in objCFCol. If
    /// blnCheckCF is omitted or true, the sums are compared as well. Whether the rows' items exist is not
    /// checked. All errors have the source "CashFlow": 10008 a row does not fit, 10009 the sums differ, 10010 the
    /// voucher does not exist; an error of the database keeps its number and text.
    virtual bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                 std::int16_t isignseq, std::int32_t iNo_id,
                                 std::shared_ptr<CashFlowCollection>* objCFCol = nullptr,
                                 bool* blnCheckCF = nullptr) = 0;

    /// As SaveCashFlowCol for a voucher with a known date, from which the context's year is set.
    virtual bool SaveCashFlowColEx(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                   std::int16_t isignseq, std::int32_t iNo_id, Date bill_date,
                                   std::shared_ptr<CashFlowCollection>* objCFCol = nullptr,
                                   bool* blnCheckCF = nullptr) = 0;

    /// Collection XML of a voucher given as XML: generated rows (blnCreateCF) or the stored ones. Never empty.
    /// Error 1005 if the voucher cannot be parsed.
    [[nodiscard]] virtual std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                            bool blnCreateCF = false) = 0;

    /// As SaveCashFlowCol with rows from collection XML, whose other fields are taken from the voucher; if it
    /// is omitted or empty, the rows are taken from the database. blnCheckCF is not read: it is set to the
    /// account option bXJLL. Additional errors: 1002 the XML cannot be parsed, 10011 the voucher does not
    /// exist.
    virtual bool SaveCashFlowColFromXml(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                        std::int16_t isignseq, std::int32_t iNo_id, std::string* strCFColxml = nullptr,
                                        bool* blnCheckCF = nullptr) = 0;

    /// Whether the current voucher was made from a draft of the user, which may hold its items.
    virtual void bFromDraft(bool value) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
