#pragma once

#include "adapters/odbc/ConnectionOptions.h"
#include "adapters/odbc/ResultReader.h"
#include "adapters/tsql/Rewriting.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::odbc {

/// The first result with rows of a text, as described and fetched by the driver.
struct Fetched {
    std::unique_ptr<shared::RowSet> rows;     ///< a null pointer without a result
    std::shared_ptr<const ResultShape> shape; ///< the shape of that result
    std::optional<tsql::TableName> target;    ///< the only table of the records; empty if they cannot be written
};

/// What a caller knows about a result in advance.
struct ResultDescription {
    /// Corrects the driver's description of the columns; empty if it is right.
    std::function<void(std::vector<DriverColumn>&)> correct{};
    /// The shape of the text's last result, kept by the caller; a null pointer if nobody keeps it. It is reused if the
    /// driver describes the columns in the same way, which saves further queries, and otherwise replaced.
    std::shared_ptr<const ResultShape>* known = nullptr;
};

/// A session as used by a dialect: a driver that runs texts in any SQL dialect.
class Driver {
public:
    virtual ~Driver() = default;
    /// Runs a text with values for its "?", and fetches its complete first result. An error of any of its statements is
    /// raised.
    virtual Fetched execute(const std::string& text, const std::vector<Variant>& values,
                            const ResultDescription& description) = 0;
    /// The same for a result of which nothing is known in advance.
    Fetched execute(const std::string& text, const std::vector<Variant>& values = {}) {
        return execute(text, values, {});
    }
    /// The primary key of a table in the current or another database, from the driver's catalogue.
    [[nodiscard]] virtual std::vector<std::string> primaryKey(const std::string& database,
                                                              const std::string& table) = 0;
};

/// The differences between the databases that drivers connect to. Each session has its own object.
class Dialect {
public:
    virtual ~Dialect() = default;

    /// Prepares a new session: texts unambiguous, lock timeout limited, the year set.
    virtual void start(Driver& driver, const ConnectionOptions& options) = 0;
    /// Runs a Transact-SQL batch. "updatable" means that its records are to be written.
    virtual Fetched run(Driver& driver, const std::string& batch, bool updatable) = 0;

    /// Begins a transaction. The session makes sure that none is open.
    virtual void begin(Driver& driver) = 0;
    /// Commits the open transaction.
    virtual void commit(Driver& driver) = 0;
    /// Rolls back the open transaction; does nothing if the database has already rolled it back.
    virtual void rollback(Driver& driver) = 0;
    /// Whether the transaction still exists after an error.
    [[nodiscard]] virtual bool inTransaction(Driver& driver) = 0;

    /// An error of the driver with the appropriate SQL state and text, if the driver reports others.
    [[nodiscard]] virtual Error explained(const Error& error) const { return error; }

    /// The type and the way of fetching of a column.
    [[nodiscard]] virtual ResultColumn resultColumn(const DriverColumn& column) const = 0;
    /// Whether resultColumn needs the names of type and table.
    [[nodiscard]] virtual bool needsOrigins() const noexcept = 0;

    /// The name of a table or a column in the form of a statement.
    [[nodiscard]] virtual std::string tableText(const tsql::TableName& table) const = 0;
    /// The name of a column in the form of a statement.
    [[nodiscard]] virtual std::string columnText(const std::string& name) const = 0;
    /// A value as stored by this database in a column of its type.
    [[nodiscard]] virtual Variant stored(const Variant& value) const = 0;
    /// The placeholder of a value in a comparison with a column.
    [[nodiscard]] virtual std::string comparand(const Variant& /*value*/) const { return "?"; }
    /// The columns by which a record of the result can be located; empty if there are none.
    [[nodiscard]] virtual std::vector<std::string> key(Driver& driver, const tsql::TableName& table,
                                                       const std::vector<DriverColumn>& columns) = 0;
    /// Runs an insert, an update or a delete and returns the number of rows that it changed.
    virtual std::int64_t change(Driver& driver, const std::string& text, const std::vector<Variant>& values) = 0;
};

/// Creates the dialect of a new session.
using DialectFactory = std::function<std::unique_ptr<Dialect>()>;

} // namespace z7::cashflow::odbc

Z7_PUBLIC_END
