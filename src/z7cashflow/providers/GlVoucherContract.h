#pragma once

#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/providers/ProviderSettings.h"

namespace z7::cashflow {

/// The ledger contract of a VoucherProvider. It shares its settings with the outside contract and does not own them.
class GlVoucherContract final : public IGlVoucherProvider {
public:
    explicit GlVoucherContract(ProviderSettings& settings) noexcept : settings_(settings) {}

    [[nodiscard]] std::string VoucherTempTable() const override;
    void VoucherTempTable(const std::string& value) override;
    void objLogin(const std::shared_ptr<Z7Login>& value) override;
    Variant SetOldVouchNoID(const std::int32_t& vdata) override;
    std::shared_ptr<CashFlowCollection> GetCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                             std::uint8_t iPeriod, std::int16_t isignseq,
                                                             std::int32_t iNo_id, Date dbill_date) override;
    std::shared_ptr<CashFlowCollection> CreateCashFlowColFromDB(Connection& objCon, const std::string& strVoucherTable,
                                                                std::uint8_t iPeriod, std::int16_t isignseq,
                                                                std::int32_t iNo_id, Date dbill_date) override;
    bool CheckKmFrom(Connection& objCon, const std::shared_ptr<CashFlowCollection>& objCFCol,
                     std::string* strInfo) override;
    bool CheckCFColFromDB(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                          std::int16_t isignseq, std::int32_t iNo_id,
                          const std::shared_ptr<CashFlowCollection>& objCFCol, std::string* strInfo) override;
    bool SaveCashFlowCol(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                         std::int16_t isignseq, std::int32_t iNo_id, std::shared_ptr<CashFlowCollection>* objCFCol,
                         bool* blnCheckCF) override;
    bool SaveCashFlowColEx(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                           std::int16_t isignseq, std::int32_t iNo_id, Date bill_date,
                           std::shared_ptr<CashFlowCollection>* objCFCol, bool* blnCheckCF) override;
    std::string GetCashFlowColFromXml(Connection& objCon, const std::string& strVoucherXml, bool blnCreateCF) override;
    bool SaveCashFlowColFromXml(Connection& objCon, const std::string& strVoucherTable, std::uint8_t iPeriod,
                                std::int16_t isignseq, std::int32_t iNo_id, std::string* strCFColxml,
                                bool* blnCheckCF) override;
    void bFromDraft(bool value) override;

private:
    ProviderSettings& settings_;
};

} // namespace z7::cashflow
