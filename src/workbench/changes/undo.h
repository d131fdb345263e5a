#pragma once

#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/VoucherResult.h"
#include "z7cashflow/support/visibility.h"

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// Restores the rows that a voucher had before a run, with every column, in a transaction of its own that is logged
/// as well. Refused, without any change, if the rows are no longer those that the run stored, or if another session
/// holds the voucher. If keep is false, everything is rolled back. Errors that concern the database as a whole pass
/// through.
[[nodiscard]] VoucherResult undoVoucher(Connection& connection, RunLog& log, std::int32_t run, const VoucherKey& key,
                                        bool keep);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
