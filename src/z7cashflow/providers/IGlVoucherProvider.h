#pragma once

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/Date.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow {

/// Cash-flow rows of vouchers of the general ledger, known by period, kind and number; the year is the login context's.
/// Names and order of the operations are part of the contract.
///
/// objCon is an open connection to the account's database, and every operation works on what it holds at that moment.
/// strVoucherTable names the table or view that holds the voucher's lines. A pointer argument may be left out; what
/// then counts is said with the operation. Errors of the database come out with their own number and text.
class IGlVoucherProvider {
public:
    virtual ~IGlVoucherProvider() = default;

    /// Where not empty, the table from which a save reads the voucher in place of strVoucherTable.
    [[nodiscard]] virtual std::string VoucherTempTable() const = 0;
    virtual void VoucherTempTable(const std::string& value) = 0;
    /// The user's login, for this thread; to be set before any other operation.
    virtual void objLogin(const std::shared_ptr<Z7Login>& value) = 0;
    /// The number that the voucher had before this save, for a voucher that no longer has a cash-flow account. Returns
    /// null.
    virtual Variant SetOldVouchNoID(const std::int32_t& vdata) = 0;

    /// The stored rows of a voucher, or nothing if none are stored. Sets the context's year from dbill_date. A voucher
    /// made from a draft (bFromDraft) gets generated rows where none are stored.
    [[nodiscard]] virtual std::shared_ptr<CashFlowCollection>
    GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                         std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date) = 0;

    /// Rows generated from the voucher's lines under the context's year; empty, but never nothing, where the voucher
    /// moves no cash. Error 94 if a line on a cash-flow account lacks an amount.
    [[nodiscard]] virtual std::shared_ptr<CashFlowCollection>
    CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                            std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date) = 0;

    /// Whether each row is complete and on its line's account. If not, strInfo becomes the reason. The voucher is
    /// the one that the collection names.
    [[nodiscard]] virtual bool CheckKmFrom(Connection& objCon, const std::shared_ptr<CashFlowCollection>& objCFCol,
                                           std::string* strInfo = nullptr) = 0;

    /// As CheckKmFrom, and whether the rows' sum matches the voucher's cash sum to less than 0.001. The collection's
    /// VoucherTable becomes strVoucherTable, also on a failure.
    [[nodiscard]] virtual bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id,
                                                const std::shared_ptr<CashFlowCollection>& objCFCol,
                                                std::string* strInfo = nullptr) = 0;

    /// Replaces the voucher's stored rows by those of a collection, in the host's transaction; true on every return.
    /// Without a collection it takes the stored rows, or else generates them, and returns them in objCFCol. blnCheckCF
    /// left out or true compares the sums too. Errors with the source "CashFlow": 10008 a row does not fit, 10009 the
    /// sums differ, 10010 there is no such voucher, and the database's own.
    virtual bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                 std::int16_t isignseq, std::int32_t iNo_id,
                                 std::shared_ptr<CashFlowCollection>* objCFCol = nullptr,
                                 bool* blnCheckCF = nullptr) = 0;

    /// As SaveCashFlowCol for a voucher whose date is known, from which the context's year is set.
    virtual bool SaveCashFlowColEx(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                   std::int16_t isignseq, std::int32_t iNo_id, Date bill_date,
                                   std::shared_ptr<CashFlowCollection>* objCFCol = nullptr,
                                   bool* blnCheckCF = nullptr) = 0;

    /// Collection XML of a voucher that is given as XML: generated rows (blnCreateCF) or the stored ones. Never empty.
    /// Error 1005 if the voucher cannot be parsed.
    [[nodiscard]] virtual std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                            bool blnCreateCF = false) = 0;

    /// As SaveCashFlowCol with rows from collection XML, whose other fields come from the voucher; left out or empty,
    /// the rows are found in the database. blnCheckCF is not read: it becomes what the account option bXJLL says.
    /// Errors also: 1002 the XML cannot be parsed, 10011 there is no such voucher.
    virtual bool SaveCashFlowColFromXml(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                        std::int16_t isignseq, std::int32_t iNo_id, std::string* strCFColxml = nullptr,
                                        bool* blnCheckCF = nullptr) = 0;

    /// The voucher at hand was made from a draft of the user, which may hold its items.
    virtual void bFromDraft(bool value) = 0;
};

} // namespace z7::cashflow
