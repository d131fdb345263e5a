#pragma once

#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/providers/IOutVoucherProvider.h"
#include "z7cashflow/providers/ProviderSettings.h"

namespace z7::cashflow {

/// The outside side of a VoucherProvider. It leans on the ledger side and shares its settings; it owns neither.
class OutVoucherContract final : public IOutVoucherProvider {
public:
    OutVoucherContract(ProviderSettings& settings, IGlVoucherProvider& gl) noexcept : settings_(settings), gl_(gl) {}

    [[nodiscard]] std::string VoucherTempTable() const override;
    void VoucherTempTable(const std::string& value) override;
    void objLogin(const std::shared_ptr<Z7Login>& value) override;
    std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml, bool blnCreateCF) override;
    std::string GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                     const std::string& coutNo_id) override;
    std::string CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                        const std::string& coutNo_id) override;
    bool CheckCFColFromXml(Connection& objCon, const std::string& strVoucherXml, const std::string& strCFColxml,
                           std::string* strInfo) override;
    bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                          const std::string& strCFColxml, std::string* strInfo) override;
    bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
                         std::string* strCFColxml, bool* blnCheckCF) override;

private:
    void save(Connection& objCon, const std::string& strVoucherTable, const std::string& coutNo_id,
              std::string& strCFColxml, bool blnCheckCF);

    ProviderSettings& settings_;
    IGlVoucherProvider& gl_;
};

} // namespace z7::cashflow
