#pragma once

#include "adapters/shared/recordset/RowSet.h"
#include "z7cashflow/ports/Recordset.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::shared {

/// A new value for a column of a record, already of the column's type.
struct Change {
    int column = 0;
    Variant value;
};

/// Writes records of one result back to the database.
class RowWriter {
public:
    virtual ~RowWriter() = default;
    /// Adds a record that has a value in the changed columns; the others take their defaults.
    virtual void insert(const std::vector<Change>& changes) = 0;
    /// Changes the stored record that a row of the result was read from. An Error if it cannot be identified, is
    /// gone, or its changed columns no longer hold what was read.
    virtual void update(const RowSet& rows, std::size_t row, const std::vector<Change>& changes) = 0;
};

/// The result of a statement.
struct Result {
    std::unique_ptr<RowSet> rows;      ///< nothing for a statement without a result
    std::shared_ptr<RowWriter> writer; ///< nothing if the records cannot be written, or if that was not asked for
};

/// A session that runs statements for a recordset. A recordset holds it for as long as it may write.
class Runner {
public:
    virtual ~Runner() = default;
    /// Runs a statement or a batch and fetches the rows of its first result whole.
    virtual Result run(const std::string& statement, bool updatable) = 0;
};

/// How an adapter finds the session for a recordset that is opened.
class Backend {
public:
    virtual ~Backend() = default;
    /// The session of an open connection. Error 3704 if it is closed, 3001 if it is another adapter's.
    virtual std::shared_ptr<Runner> runner(Connection& connection) = 0;
    /// A session of its own, which nobody else uses until it is let go.
    virtual std::shared_ptr<Runner> runner(const std::string& connectionString) = 0;
};

} // namespace z7::cashflow::shared
