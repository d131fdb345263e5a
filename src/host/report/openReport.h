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

/// Vouchers with something left to do: key, date, summary, cash, what is allocated of it, the difference, and why, with
/// the remedy.
[[nodiscard]] ReportTable openTable(const std::vector<workbench::UnsettledVoucher>& vouchers,
                                    const workbench::VoucherKinds& kinds, Language language);
/// How many there are and what their differences add up to, in words.
[[nodiscard]] std::string openTotal(const std::vector<workbench::UnsettledVoucher>& vouchers, Language language);
/// One of them: {"voucher","sign","date","summary","cash","rows","difference","error"}.
[[nodiscard]] nlohmann::ordered_json openJson(const workbench::UnsettledVoucher& voucher,
                                              const workbench::VoucherKinds& kinds, Language language);

/// What is lacking, by account and side, with a total of the vouchers.
[[nodiscard]] ReportTable groupTable(const workbench::OpenSummary& summary, const workbench::VoucherKinds& kinds,
                                     Language language);
/// One group: {"kind","account","side","item","vouchers","amount","first"}; what it has not is left out.
[[nodiscard]] nlohmann::ordered_json groupJson(const workbench::OpenGroup& group);

/// The open lines of vouchers with a proposed item.
[[nodiscard]] ReportTable lineTable(const std::vector<workbench::OpenLine>& lines, const workbench::VoucherKinds& kinds,
                                    Language language);
/// The same as a list to complete in a spreadsheet and to hand back, with the columns of openLineColumns.
[[nodiscard]] ReportTable lineList(const std::vector<workbench::OpenLine>& lines);
/// One of them under the same names.
[[nodiscard]] nlohmann::ordered_json lineJson(const workbench::OpenLine& line, const workbench::VoucherKinds& kinds);

} // namespace z7::cashflow::host
