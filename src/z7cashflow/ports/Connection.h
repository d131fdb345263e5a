#pragma once

#include "z7cashflow/ports/Recordset.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// A session on the account's database. Hosts open it, own it and hand it in; the library runs statements on it and
/// never opens, commits or rolls back a transaction on it.
///
/// Errors of the database come out as Error with the database's own number and text. A closed connection
/// answers with error 3704.
class Connection {
public:
    virtual ~Connection() = default;

    /// Opens the session that the connection string names. Error 3705 if it is open already; a database that cannot be
    /// reached or does not exist is the database's own error, without any password of the string in its text.
    virtual void Open(const std::string& connectionString) = 0;
    /// Ends the session; what its transaction has not committed is rolled back. Error 3704 if it is closed already.
    virtual void Close() = 0;
    [[nodiscard]] virtual ObjectState State() const = 0;
    /// The text that the connection was opened with. Opened again, it makes a session of its own on the same database.
    [[nodiscard]] virtual std::string ConnectionString() const = 0;

    /// Runs the text of one statement, or of several as one batch, exactly as it is. Returns the result's records, at
    /// the first one; for a statement without a result the recordset is closed. The caller owns the recordset.
    virtual std::shared_ptr<Recordset> Execute(const std::string& commandText) = 0;
    /// A new, closed recordset of the same kind of database, to be opened on this connection or on a connection string.
    [[nodiscard]] virtual std::shared_ptr<Recordset> CreateRecordset() = 0;

    /// Begins a transaction. Nested transactions are not offered: error of the database if one is open.
    virtual void BeginTrans() = 0;
    /// Commits the transaction. Error of the database if none is open, if the database has already rolled it back, or
    /// if its answer got lost, after which the changes may be committed or not. In the last two cases the caller rolls
    /// back as well.
    virtual void CommitTrans() = 0;
    /// Rolls the transaction back, unless the database has already done so. Error of the database if none is open.
    virtual void RollbackTrans() = 0;
};

} // namespace z7::cashflow
