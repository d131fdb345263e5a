#pragma once

#include "z7cashflow/ports/Recordset.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A session on the account's database. Hosts open it, own it and pass it in; the library runs statements on it and
/// never begins, commits or rolls back a transaction on it.
///
/// Errors of the database are raised as Error with the database's own number and text. A closed connection raises
/// error 3704.
class Connection {
public:
    virtual ~Connection() = default;

    /// Opens the session that the connection string names. Error 3705 if it is already open; if the database
    /// cannot be reached or does not exist, the database's own error, whose text contains no password of the
    /// string.
    virtual void Open(const std::string& connectionString) = 0;
    /// Ends the session; uncommitted changes are rolled back. Error 3704 if it is already closed.
    virtual void Close() = 0;
    /// Whether the session is open. Does not access the database.
    [[nodiscard]] virtual ObjectState State() const = 0;
    /// The text with which the connection was opened. Opening it again creates a separate session on the same
    /// database.
    [[nodiscard]] virtual std::string ConnectionString() const = 0;

    /// Runs the text of one statement, or of several as one batch, unchanged. Returns the result's records,
    /// positioned on the first; for a statement without a result the recordset is closed. The caller owns the
    /// recordset.
    virtual std::shared_ptr<Recordset> Execute(const std::string& commandText) = 0;
    /// A new, closed recordset for the same kind of database, to be opened on this connection or by connection
    /// string.
    [[nodiscard]] virtual std::shared_ptr<Recordset> createRecordset() = 0;

    /// Begins a transaction. Nested transactions are not supported: error of the database if one is open.
    virtual void BeginTrans() = 0;
    /// Commits the transaction. Error of the database if none is open, if the database has already rolled it
    /// back, or if its answer was lost, so that it is unknown whether the changes were committed. In the last
    /// two cases the caller must also roll back.
    virtual void CommitTrans() = 0;
    /// Rolls the transaction back, unless the database has already done so. Error of the database if none is open.
    virtual void RollbackTrans() = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
