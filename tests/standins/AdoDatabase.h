#pragma once

#include "standins/AutomationObject.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace z7::cashflow::test {

/// The database behind the ADO objects of a test, and what they have in common.
struct AdoDatabase {
    /// A new, closed connection, for each object of the class ADODB.Connection.
    std::function<std::unique_ptr<Connection>()> makeConnection;
    /// A new, closed recordset, for each one that is opened by connection string.
    std::function<std::shared_ptr<Recordset>()> makeRecordset;
    /// Put in front of the error in a connection's Errors collection, with its code, as by a server that reports a
    /// warning first.
    std::optional<Error> warning;
    std::shared_ptr<CallPlan> calls = std::make_shared<CallPlan>();
};

} // namespace z7::cashflow::test
