#pragma once

#include "z7cashflow/support/Error.h"

namespace z7::cashflow::workbench {

/// True if an error says that the database as a whole fails (locked, full, broken, gone, not the suite's), so that the
/// next voucher would fail too. False for what concerns one voucher: a refusal, a value that does not convert, a text
/// that breaks a statement, a row that a constraint keeps out.
[[nodiscard]] bool isDatabaseFailure(const Error& error) noexcept;

/// True if an error says that another session holds what is needed for longer than this one waits, or that the server
/// chose this one's transaction to end because the two waited for each other. Only the voucher at hand is concerned; it
/// can be tried again.
[[nodiscard]] bool isHeldElsewhere(const Error& error) noexcept;

} // namespace z7::cashflow::workbench
