#pragma once

#include "adapters/ado/automation/Dispatch.h"
#include "z7cashflow/ports/Connection.h"

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::ado {

/// A session on a database through an ADO connection, that of the host or one of our own. It is used on the thread that
/// it was made on.
///
/// The results of Execute are fetched to the client at once, so that they can be counted and filtered, and so that
/// several can be open in one transaction. For this the ADO connection's CursorLocation is changed while a statement
/// runs and restored afterwards; nothing else of the host's connection is changed.
///
/// Errors of ADO itself have its numbers (3704: closed); errors of the database have the number, the SQL state and the
/// text that the provider reports for the database. No password of a connection string that was passed to Open appears
/// in a message.
class Connection final : public cashflow::Connection {
public:
    /// A closed connection of our own, an object of the class ADODB.Connection. If the system cannot create it, its
    /// error.
    Connection();
    /// The host's connection in its present state. It is not closed by the destructor. Error 91 for nothing.
    explicit Connection(adapters::automation::Dispatch hostConnection);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    /// Closes a connection of our own, and so rolls back what is not committed.
    ~Connection() override;

    void Open(const std::string& connectionString) override;
    void Close() override;
    [[nodiscard]] ObjectState State() const override;
    /// Of our own connection the text that was passed to Open. Of the host's connection its property, in which ADO
    /// leaves out the password unless the host has opened it with "Persist Security Info=True".
    [[nodiscard]] std::string ConnectionString() const override;
    std::shared_ptr<cashflow::Recordset> Execute(const std::string& commandText) override;
    [[nodiscard]] std::shared_ptr<cashflow::Recordset> createRecordset() override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

    /// The ADO connection, for objects of the host that need it.
    [[nodiscard]] const adapters::automation::Dispatch& object() const noexcept { return object_; }

private:
    /// Calls a method without arguments.
    void call(const wchar_t* method);
    adapters::automation::Dispatch run(const std::string& commandText);

    adapters::automation::Dispatch object_;
    bool isOwn_;
    std::string connectionString_;     ///< passed to Open last
    std::vector<std::string> secrets_; ///< in it
};

} // namespace z7::cashflow::ado
