#pragma once

#include "host/report/ReportTable.h"
#include "host/text/Language.h"
#include "workbench/open/OpenLineFinder.h"
#include "workbench/open/OpenSummary.h"
#include "workbench/open/UnsettledVoucher.h"
#include "workbench/vouchers/VoucherKinds.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Open vouchers: key, date, summary, cash, allocated amount, difference, reason and remedy.
[[nodiscard]] ReportTable openTable(const std::vector<workbench::UnsettledVoucher>& vouchers,
                                    const workbench::VoucherKinds& kinds, Language language);
/// A sentence with their number and the sum of their differences.
[[nodiscard]] std::string openTotal(const std::vector<workbench::UnsettledVoucher>& vouchers, Language language);
/// One of them: {"voucher","sign","date","summary","cash","rows","difference","error"}.
[[nodiscard]] nlohmann::ordered_json openJson(const workbench::UnsettledVoucher& voucher,
                                              const workbench::VoucherKinds& kinds, Language language);

/// What is missing, by account and side, with the total number of vouchers.
[[nodiscard]] ReportTable groupTable(const workbench::OpenSummary& summary, const workbench::VoucherKinds& kinds,
                                     Language language);
/// One group: {"kind","account","side","item","vouchers","amount","first","sign"}, where sign is that of first;
/// members without a value are left out.
[[nodiscard]] nlohmann::ordered_json groupJson(const workbench::OpenGroup& group, const workbench::VoucherKinds& kinds);

/// The open lines of vouchers, with a proposed item for each.
[[nodiscard]] ReportTable lineTable(const std::vector<workbench::OpenLine>& lines, const workbench::VoucherKinds& kinds,
                                    Language language);
/// The same as a list to complete in a spreadsheet and hand back, with the columns of openLineColumns.
[[nodiscard]] ReportTable lineList(const std::vector<workbench::OpenLine>& lines, const workbench::VoucherKinds& kinds);
/// One of them, with the same names.
[[nodiscard]] nlohmann::ordered_json lineJson(const workbench::OpenLine& line, const workbench::VoucherKinds& kinds);

} // namespace z7::cashflow::host
