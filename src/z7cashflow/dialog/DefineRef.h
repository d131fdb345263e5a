#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/ReferenceProvider.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow {

/// Provides the reference "voucher": those entry lines of one voucher to which rows can belong. The account option
/// bCashCode decides whether these are the lines of cash-flow accounts or all others.
class DefineRef final : public ReferenceProvider {
public:
    /// The connection from which the lines are read; shared ownership.
    void objCon(std::shared_ptr<Connection> value) { objCon_ = std::move(value); }
    /// The table or view of voucher lines, and the voucher's key, which is used only in a table with keys.
    void VoucherTable(const std::string& value) { VoucherTable_ = value; }
    void iPeriod(std::uint8_t value) { iPeriod_ = value; }
    void isignseq(std::int16_t value) { isignseq_ = value; }
    void iNo_id(std::int32_t value) { iNo_id_ = value; }

    /// Sets MetaXML to the document with the columns inid, ccode, md and mc.
    void GetSrvRefMeta(const std::string& sRefID, const std::string& sXML, std::string& MetaXML, std::string& sMsg,
                       bool& bFlag) override;
    /// Returns the lines that match the filter. A statement that fails before the rows are opened raises its
    /// error; a failure to open them is returned in sMsg.
    void GetSrvData(const std::string& sRefID, const std::string& sXML, const std::string& EleMeta,
                    std::shared_ptr<Recordset>& RstClass, std::shared_ptr<Recordset>& RstGrid,
                    std::shared_ptr<Recordset>& RstColSet, std::string& sMsg, bool& bFlag) override;

private:
    [[nodiscard]] Connection& connection() const;
    [[nodiscard]] bool cashCodeIsOn() const;
    [[nodiscard]] std::string statement(bool cashAccounts, const std::string& filter) const;

    std::shared_ptr<Connection> objCon_;
    std::string VoucherTable_;
    std::uint8_t iPeriod_ = 0;
    std::int16_t isignseq_ = 0;
    std::int32_t iNo_id_ = 0;
};

} // namespace z7::cashflow
