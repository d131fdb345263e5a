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

/// The year in which the sample company has its vouchers.
inline constexpr std::int16_t year = 2024;

/// The lines between an office and its database, which can be cut.
class Lines {
public:
    virtual ~Lines() = default;
    /// Cuts all lines at the n-th request from now on, counted from 1 over all of them. Lines that are made later
    /// stand.
    virtual void cutAt(int request, odbc::Cut moment) = 0;
    /// At the n-th request from now on the database ends the transaction of its session, as the victim of a deadlock.
    /// The lines stand. False if these lines cannot have that done.
    [[nodiscard]] virtual bool chooseVictimAt(int /*request*/) { return false; }
    /// Whether that has happened. Ends the counting.
    virtual bool stopCounting() = 0;
};

/// A database with the sample company that several desks share, behind one adapter. It goes away with this object.
class Office {
public:
    virtual ~Office() = default;
    /// A closed connection of the adapter.
    [[nodiscard]] virtual std::unique_ptr<Connection> makeConnection() const = 0;
    /// A connection string whose sessions wait at most so many milliseconds for a lock.
    [[nodiscard]] virtual std::string connectionString(int timeout) const = 0;
    /// What a user of this office gives a host.
    [[nodiscard]] virtual host::GlobalOptions options() const { return {}; }
    /// Whether a wait for another desk's lock that is over ends in the state HYT00.
    [[nodiscard]] virtual conformance::Capability tellsLockTimeout() const { return {}; }
    /// Whether a statement can make a table of tempdb.
    [[nodiscard]] virtual conformance::Capability selectInto() const { return {}; }
    /// The same as connectionString, by lines that can be cut; nothing if the adapter has no lines.
    [[nodiscard]] virtual std::string connectionStringOverLines(int timeout) const { return connectionString(timeout); }
    [[nodiscard]] virtual Lines* lines() { return nullptr; }
};

/// An office as a parameter of a test.
struct OfficeKind {
    std::string name;
    std::function<std::unique_ptr<Office>()> make; ///< a null pointer if there is none here
    std::string missing;                           ///< what is missing then
};

/// The embedded database; the embedded database behind SQLite's ODBC driver; a server that speaks Transact-SQL.
[[nodiscard]] std::vector<OfficeKind> offices();

inline void PrintTo(const OfficeKind& kind, std::ostream* out) { *out << kind.name; }
inline std::string officeName(const ::testing::TestParamInfo<OfficeKind>& info) { return info.param.name; }

} // namespace z7::cashflow::desks
