#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Cash-flow rows of vouchers of other subsystems, identified by the text coutNo_id. Rows are exchanged as
/// collection XML, never as objects. Names and order of the operations are part of the contract; arguments and
/// errors as in IGlVoucherProvider.
class IOutVoucherProvider {
public:
    virtual ~IOutVoucherProvider() = default;

    /// As in the ledger contract, with which it is shared.
    [[nodiscard]] virtual std::string VoucherTempTable() const = 0;
    /// Sets that table; the empty text removes it.
    virtual void VoucherTempTable(const std::string& value) = 0;
    /// The user's login for this thread; must be set before any other operation.
    virtual void objLogin(const std::shared_ptr<Z7Login>& value) = 0;

    /// As the operation of the same name of the ledger contract, but the account options bCashCode and
    /// bAutoDisplay are first read into the thread's context.
    [[nodiscard]] virtual std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                            bool blnCreateCF = false) = 0;

    /// The stored rows of a voucher, or generated ones if none are stored; the XML of a collection without rows
    /// if the voucher has no cash-flow account.
    [[nodiscard]] virtual std::string GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                           const std::string& coutNo_id) = 0;

    /// Rows generated from the voucher's lines. Empty if the voucher has no cash-flow account.
    [[nodiscard]] virtual std::string CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                              const std::string& coutNo_id) = 0;

    /// Always raises an error of the database or of the XML; kept for hosts that call it.
    [[nodiscard]] virtual bool CheckCFColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                 const std::string& strCFColxml, std::string* strInfo = nullptr) = 0;

    /// Whether rows generated from the voucher's lines match the voucher. strCFColxml and strInfo are neither
    /// read nor written.
    [[nodiscard]] virtual bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                const std::string& coutNo_id, const std::string& strCFColxml,
                                                std::string* strInfo = nullptr) = 0;

    /// Replaces the stored rows of the ledger voucher created from this one, in the context's year; always
    /// returns true. If omitted or empty, the rows are found or generated and returned in strCFColxml. If
    /// blnCheckCF is omitted or true, rows and sums are compared: error 10009 if they do not match. For a
    /// voucher without a cash-flow account nothing is saved or deleted.
    virtual bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                                 std::string* strCFColxml = nullptr, bool* blnCheckCF = nullptr) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
