#pragma once

#include "adapters/shared/recordset/RowSet.h"
#include "z7cashflow/ports/Recordset.h"
#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// A new value for a column of a record, already of the column's type.
struct Change {
    int column = 0; ///< position from 0
    Variant value;  ///< null included
};

/// Writes records of one result to the database.
class RowWriter {
public:
    virtual ~RowWriter() = default;
    /// Adds a record with values for the changed columns; all others get their defaults.
    virtual void insert(const std::vector<Change>& changes) = 0;
    /// Changes the stored record from which a row of the result was read. Raises an Error if the record cannot
    /// be identified, no longer exists, or its changed columns no longer hold what was read.
    virtual void update(const RowSet& rows, std::size_t row, const std::vector<Change>& changes) = 0;
};

/// The result of a statement.
struct Result {
    std::unique_ptr<RowSet> rows;      ///< a null pointer for a statement without a result
    std::shared_ptr<RowWriter> writer; ///< a null pointer unless writing was requested and is possible
};

/// A session that runs statements for a recordset. The recordset keeps it as long as it may write.
class Runner {
public:
    virtual ~Runner() = default;
    /// Runs a statement or a batch and fetches the complete rows of its first result.
    virtual Result run(const std::string& statement, bool updatable) = 0;
};

/// How an adapter finds the session for a recordset to be opened.
class Backend {
public:
    virtual ~Backend() = default;
    /// The session of an open connection. Error 3704 if it is closed, 3001 if it belongs to another adapter.
    virtual std::shared_ptr<Runner> runner(Connection& connection) = 0;
    /// A separate session, which nobody else uses until it is released.
    virtual std::shared_ptr<Runner> runner(const std::string& connectionString) = 0;
};

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
