#pragma once

#include "adapters/guard/StatementGuard.h"
#include "z7cashflow/ports/Connection.h"

#include <memory>
#include <string>

namespace z7::cashflow::guard {

/// A connection that runs only the library's own statements and hands everything else on as it is: values that would turn a
/// statement into another are refused with error 10020 (statementRefused) before anything reaches the database.
///
/// A host gives it to the library in place of its own connection, on which it goes on running its own statements. Both
/// are one session: transactions begun on either are the same. The recordsets that it makes are guarded too.
class GuardedConnection final : public Connection {
public:
    /// Guards a connection, which must not be null and is shared.
    explicit GuardedConnection(std::shared_ptr<Connection> inner);

    void Open(const std::string& connectionString) override;
    void Close() override;
    [[nodiscard]] ObjectState State() const override;
    [[nodiscard]] std::string ConnectionString() const override;
    std::shared_ptr<Recordset> Execute(const std::string& commandText) override;
    [[nodiscard]] std::shared_ptr<Recordset> CreateRecordset() override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

private:
    [[nodiscard]] std::shared_ptr<Recordset> guarded(std::shared_ptr<Recordset> recordset);

    std::shared_ptr<Connection> inner_;
    std::shared_ptr<StatementGuard> guard_;
};

} // namespace z7::cashflow::guard
