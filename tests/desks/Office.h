#pragma once

#include "adapters/conformance/DatabaseUnderTest.h"
#include "adapters/odbc/CuttingProxy.h"
#include "host/cli/GlobalOptions.h"
#include "z7cashflow/ports/Connection.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace z7::cashflow::desks {

/// The year of the sample company's vouchers.
inline constexpr std::int16_t year = 2024;

/// The connections between an office and its database, which can be cut.
class Lines {
public:
    virtual ~Lines() = default;
    /// Cuts all connections at the n-th request from now, counted from 1 over all of them. Connections opened
    /// later are not affected.
    virtual void cutAt(int request, odbc::Cut moment) = 0;
    /// At the n-th request from now the database ends the transaction of that session, as the victim of a
    /// deadlock; the connections are kept. False if this is not supported.
    [[nodiscard]] virtual bool chooseVictimAt(int /*request*/) { return false; }
    /// Whether that has happened. Ends the counting.
    virtual bool stopCounting() = 0;
};

/// A database with the sample company that several desks share, used through one adapter. It is removed with this
/// object.
class Office {
public:
    virtual ~Office() = default;
    /// A closed connection of the adapter.
    [[nodiscard]] virtual std::unique_ptr<Connection> makeConnection() const = 0;
    /// A connection string whose sessions wait for a lock at most the given number of milliseconds.
    [[nodiscard]] virtual std::string connectionString(int timeout) const = 0;
    /// The options that a user of this office passes to the program.
    [[nodiscard]] virtual host::GlobalOptions options() const { return {}; }
    /// Whether a lock timeout is reported with the state HYT00.
    [[nodiscard]] virtual conformance::Capability tellsLockTimeout() const { return {}; }
    /// Whether a statement can create a table in tempdb.
    [[nodiscard]] virtual conformance::Capability selectInto() const { return {}; }
    /// The same as connectionString, over connections that can be cut; nothing if the adapter has none.
    [[nodiscard]] virtual std::string connectionStringOverLines(int timeout) const { return connectionString(timeout); }
    [[nodiscard]] virtual Lines* lines() { return nullptr; }
};

/// An office as a test parameter.
struct OfficeKind {
    std::string name;
    std::function<std::unique_ptr<Office>()> make; ///< a null pointer if it is not available
    std::string missing;                           ///< what is missing in that case
};

/// The embedded database; the embedded database through SQLite's ODBC driver; a server that speaks Transact-SQL.
[[nodiscard]] std::vector<OfficeKind> offices();

inline void PrintTo(const OfficeKind& kind, std::ostream* out) { *out << kind.name; }
inline std::string officeName(const ::testing::TestParamInfo<OfficeKind>& info) { return info.param.name; }

} // namespace z7::cashflow::desks
