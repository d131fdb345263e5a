#pragma once

#include "host/text/Language.h"
#include "workbench/statement/CashFlowStatement.h"
#include "workbench/vouchers/VoucherKinds.h"

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// What the page of a statement is made from.
struct StatementPage {
    const workbench::CashFlowStatement& statement;
    /// The same statement with a column for each period, for the picture.
    const workbench::CashFlowStatement& months;
    const std::vector<workbench::VoucherFlow>& itemVouchers;
    const std::vector<workbench::VoucherFlow>& accountVouchers;
    const workbench::VoucherKinds& kinds;
    Language language = Language::english;
};

/// One self-contained HTML page that prints well: the statement, a picture of receipts and payments by period and of
/// the cash balance, the cash accounts, the proof, and under each item and account its vouchers. Each figure that
/// vouchers make up leads to them: that of a period to the first of its vouchers, that of a group or a total to the
/// items or accounts that it adds up. It loads nothing.
[[nodiscard]] std::string statementHtml(const StatementPage& page);

} // namespace z7::cashflow::host
