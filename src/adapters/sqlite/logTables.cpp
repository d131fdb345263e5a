#include "adapters/sqlite/logTables.h"

#include "adapters/sqlite/Session.h"
#include "adapters/sqlite/Statement.h"
#include "adapters/sqlite/scripts.h"

namespace z7::cashflow::sqlite {

void addLogTables(Connection& connection) { executeScript(connection.session().nativeHandle(), scripts::logTables); }

} // namespace z7::cashflow::sqlite
