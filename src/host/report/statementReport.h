#pragma once

#include "host/report/ReportTable.h"
#include "host/text/Language.h"
#include "workbench/statement/CashFlowStatement.h"
#include "workbench/vouchers/VoucherKinds.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace z7::cashflow::host {

/// The statement by item, with groups and total: receipts, payments and net, and the net of each column if there
/// are several.
[[nodiscard]] ReportTable itemTable(const workbench::CashFlowStatement& statement, Language language);
/// The receipts and payments of each item by currency, in the currency's own amounts.
[[nodiscard]] ReportTable currencyTable(const workbench::CashFlowStatement& statement, Language language);
/// The cash accounts and their total: opening balance, receipts, payments, closing balance.
[[nodiscard]] ReportTable accountTable(const workbench::CashFlowStatement& statement, Language language);
/// The vouchers that make up the difference.
[[nodiscard]] ReportTable gapTable(const workbench::CashFlowStatement& statement, const workbench::VoucherKinds& kinds,
                                   Language language);
/// The whole statement as one rectangular table with one figure per line, for a spreadsheet.
[[nodiscard]] ReportTable wholeTable(const workbench::CashFlowStatement& statement,
                                     const workbench::VoucherKinds& kinds, Language language);

/// The statement as JSON: year, from, to, items, groups, total, accounts, cash, difference, vouchers.
[[nodiscard]] nlohmann::ordered_json statementJson(const workbench::CashFlowStatement& statement,
                                                   const workbench::VoucherKinds& kinds, Language language);

/// "1-3", or "5" for a single period.
[[nodiscard]] std::string columnName(const workbench::StatementColumn& column);
/// The key of a voucher of the statement, a VoucherGap or a VoucherFlow.
template <class Voucher>
[[nodiscard]] workbench::VoucherKey keyIn(const workbench::CashFlowStatement& statement, const Voucher& voucher) {
    return {statement.year, voucher.period, voucher.kind, voucher.number};
}
/// Why the rows do not cover the voucher's cash, for people.
[[nodiscard]] std::string gapText(workbench::Gap gap, Language language);

} // namespace z7::cashflow::host
