#pragma once

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/visibility.h"

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// True if an error concerns the database as a whole (locked, full, damaged, disconnected, not an account), so that
/// the next voucher would fail as well. False for errors of one voucher: a refusal, a value that cannot be
/// converted, a text that breaks a statement, a row that violates a constraint.
[[nodiscard]] bool isDatabaseFailure(const Error& error) noexcept;

/// True if another session holds a lock for longer than this session waits, or if the server ended this transaction
/// to resolve a deadlock. Only the current voucher is affected; it can be tried again.
[[nodiscard]] bool isHeldElsewhere(const Error& error) noexcept;

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
