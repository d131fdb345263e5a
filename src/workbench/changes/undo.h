#pragma once

#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/VoucherResult.h"

namespace z7::cashflow::workbench {

/// Gives a voucher the rows back that it had before a run, each with every column, in a transaction of its own that
/// notes this as well. Refused where the rows are no longer what the run left, or where another session holds the
/// voucher; nothing is changed then. Without keep everything is rolled back. Errors that concern the database as a
/// whole come out.
[[nodiscard]] VoucherResult undoVoucher(Connection& connection, RunLog& log, std::int32_t run, const VoucherKey& key,
                                        bool keep);

} // namespace z7::cashflow::workbench
