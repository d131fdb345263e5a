#include "adapters/sqlite/Handle.h"

#include <sqlite3.h>

namespace z7::cashflow::sqlite {

void HandleCloser::operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }

} // namespace z7::cashflow::sqlite
