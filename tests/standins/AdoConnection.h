#pragma once

#include "standins/AdoDatabase.h"
#include "standins/AdoErrors.h"
#include "standins/AutomationObject.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {

class AdoRecordset;

/// An automation object that answers like an ADO connection, over any connection of the library. Its member names and
/// their meaning are those of the documentation of ADO:
/// - The password is left out of ConnectionString as soon as the connection is open.
/// - Closing it closes its recordsets, unless they are cut off from it.
/// - An error of the database is a provider's code and becomes the only content of Errors; errors of ADO itself, such
///   as 3704, do not change Errors.
class AdoConnection final : public AutomationObject {
public:
    /// Over a connection that the test may keep.
    AdoConnection(std::shared_ptr<AdoDatabase> database, std::shared_ptr<Connection> connection);

    /// The ADO connection behind an interface pointer; null if it is something else. Adds no reference.
    [[nodiscard]] static AdoConnection* of(IDispatch* object);

    /// The connection of the library.
    [[nodiscard]] Connection& connection() { return *connection_; }
    /// Runs an action on the database and turns its error into that of a provider.
    void onDatabase(const std::function<void()>& action);
    /// A recordset that is open on this connection, or no longer.
    void opened(AdoRecordset* recordset) { recordsets_.push_back(recordset); }
    void closed(AdoRecordset* recordset) { std::erase(recordsets_, recordset); }

private:
    ~AdoConnection() override = default;
    void addProperties();
    OwnedVariant execute(const Call& call);

    std::shared_ptr<AdoDatabase> database_;
    std::shared_ptr<Connection> connection_;
    std::string connectionString_; ///< put before Open, without the password afterwards
    std::int32_t cursorLocation_ = static_cast<std::int32_t>(CursorLocation::server);
    std::vector<AdoErrorEntry> errors_;
    std::vector<AdoRecordset*> recordsets_;
};

} // namespace z7::cashflow::test
