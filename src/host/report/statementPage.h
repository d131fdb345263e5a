#pragma once

#include "host/text/Language.h"
#include "workbench/statement/CashFlowStatement.h"
#include "workbench/vouchers/VoucherKinds.h"

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// The contents of a statement's page.
struct StatementPage {
    const workbench::CashFlowStatement& statement;
    /// The same statement with one column per period, for the picture.
    const workbench::CashFlowStatement& months;
    const std::vector<workbench::VoucherFlow>& itemVouchers;
    const std::vector<workbench::VoucherFlow>& accountVouchers;
    const workbench::VoucherKinds& kinds;
    Language language = Language::english;
};

/// The statement as one self-contained HTML page that prints well: the statement, a picture of receipts and
/// payments by period and of the cash balance, the cash accounts, the proof, and the vouchers of each item and
/// account. Figures made up of vouchers link to them: that of a period to the first of them, that of a group or
/// total to the items or accounts that it adds up. The page loads nothing from elsewhere.
[[nodiscard]] std::string statementHtml(const StatementPage& page);

} // namespace z7::cashflow::host
