#pragma once

#include "host/report/ReportTable.h"
#include "host/text/Language.h"
#include "workbench/changes/RowImage.h"
#include "workbench/vouchers/VoucherKinds.h"

#include <nlohmann/json_fwd.hpp>

#include <vector>

namespace z7::cashflow::host {

/// The changed rows of vouchers, one line per row: voucher, change, line, account, debit, credit, item, and in the
/// last column the former values of a changed row, field by field.
class ChangesReport {
public:
    /// The kinds must outlive it.
    ChangesReport(const workbench::VoucherKinds& kinds, Language language);

    /// Adds the rows of one voucher.
    void add(const workbench::VoucherKey& key, const std::vector<workbench::RowChange>& changes);
    [[nodiscard]] const ReportTable& table() const noexcept { return table_; }

private:
    const workbench::VoucherKinds& kinds_;
    Language language_;
    ReportTable table_;
};

/// The rows of one voucher as an array:
/// {"change":"changed","line":2,"account":"6001","item":"0102","debit":0.0,"credit":5.0,
/// "was":{"cCashItem":"0101"}}. A removed row shows its former values; "was" holds the former value of each changed
/// field.
[[nodiscard]] nlohmann::ordered_json changesJson(const std::vector<workbench::RowChange>& changes);

} // namespace z7::cashflow::host
