#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/Z7Login.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// Cash-flow rows of vouchers of other subsystems, known by the text coutNo_id. Rows travel as collection XML, never as
/// objects. Names and order of the operations are part of the contract; arguments and errors as in
/// IGlVoucherProvider.
class IOutVoucherProvider {
public:
    virtual ~IOutVoucherProvider() = default;

    [[nodiscard]] virtual std::string VoucherTempTable() const = 0;
    virtual void VoucherTempTable(const std::string& value) = 0;
    virtual void objLogin(const std::shared_ptr<Z7Login>& value) = 0;

    /// As the operation of that name of the ledger contract, but the account options bCashCode and bAutoDisplay are
    /// read and kept for the thread first.
    [[nodiscard]] virtual std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                            bool blnCreateCF = false) = 0;

    /// The stored rows of a voucher, or generated ones where none are stored. The XML of no rows where the voucher has
    /// no cash-flow account.
    [[nodiscard]] virtual std::string GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                           const std::string& coutNo_id) = 0;

    /// Rows generated from the voucher's lines. Empty where the voucher has no cash-flow account.
    [[nodiscard]] virtual std::string CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                              const std::string& coutNo_id) = 0;

    /// Always ends in an error of the database or of the XML; kept for hosts that call it.
    [[nodiscard]] virtual bool CheckCFColFromXml(Connection& objCon, const std::string& strVoucherXml,
                                                 const std::string& strCFColxml, std::string* strInfo = nullptr) = 0;

    /// Whether the rows generated from the voucher's lines match the voucher. strCFColxml and strInfo are neither read
    /// nor written.
    [[nodiscard]] virtual bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                const std::string& coutNo_id, const std::string& strCFColxml,
                                                std::string* strInfo = nullptr) = 0;

    /// Replaces the stored rows of the ledger voucher made from this one, in the context's year; true on every return.
    /// Left out or empty, the rows are found or generated and returned in strCFColxml. blnCheckCF left out or true
    /// compares rows and sums: error 10009 if they do not fit. A voucher without a cash-flow account saves and deletes
    /// nothing.
    virtual bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                                 std::string* strCFColxml = nullptr, bool* blnCheckCF = nullptr) = 0;
};

} // namespace z7::cashflow
