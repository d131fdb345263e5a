#pragma once

#include "z7cashflow/support/Error.h"

namespace z7::cashflow::host {

/// True if an error says that the database as a whole fails (locked, full, broken, gone, not the suite's), so that the next
/// voucher would fail too. False for what concerns one voucher: a refusal, a value that does not convert, a text that
/// breaks a statement, a row that a constraint keeps out.
[[nodiscard]] bool isDatabaseFailure(const Error& error) noexcept;

} // namespace z7::cashflow::host
