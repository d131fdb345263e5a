#include "adapters/guard/GuardedConnection.h"

#include "z7cashflow/support/Error.h"

#include <utility>

namespace z7::cashflow::guard {

namespace {

// A recordset whose statement is looked at before it is opened; everything else goes on as it is.
class GuardedRecordset final : public Recordset {
public:
    GuardedRecordset(std::shared_ptr<Recordset> inner, std::shared_ptr<StatementGuard> guard, Connection* outer,
                     std::shared_ptr<Connection> connection)
        : inner_(std::move(inner)), guard_(std::move(guard)), outer_(outer), connection_(std::move(connection)) {}

    void Open(const std::string& source, const cashflow::ActiveConnection& connection, CursorType cursorType,
              LockType lockType) override {
        guard_->check(source);
        inner_->Open(source, unwrapped(connection), cursorType, lockType);
    }
    void Close() override { inner_->Close(); }
    [[nodiscard]] ObjectState State() const override { return inner_->State(); }
    [[nodiscard]] std::string Source() const override { return inner_->Source(); }
    [[nodiscard]] bool EndOfFile() const override { return inner_->EndOfFile(); }
    [[nodiscard]] std::int32_t RecordCount() const override { return inner_->RecordCount(); }
    void MoveFirst() override { inner_->MoveFirst(); }
    void MoveNext() override { inner_->MoveNext(); }
    [[nodiscard]] FieldList& Fields() override { return inner_->Fields(); }
    void Filter(const std::string& criteria) override { inner_->Filter(criteria); }
    [[nodiscard]] std::string Filter() const override { return inner_->Filter(); }
    void CursorLocation(cashflow::CursorLocation location) override { inner_->CursorLocation(location); }
    [[nodiscard]] cashflow::CursorLocation CursorLocation() const override { return inner_->CursorLocation(); }
    void ActiveConnection(const cashflow::ActiveConnection& connection) override {
        inner_->ActiveConnection(unwrapped(connection));
    }
    [[nodiscard]] cashflow::ActiveConnection ActiveConnection() const override {
        const cashflow::ActiveConnection connection = inner_->ActiveConnection();
        const auto* object = std::get_if<Connection*>(&connection);
        return object != nullptr && *object == connection_.get() ? cashflow::ActiveConnection(outer_) : connection;
    }
    void AddNew() override { inner_->AddNew(); }
    void Update() override { inner_->Update(); }

private:
    // The guarded database knows its own connection only.
    [[nodiscard]] cashflow::ActiveConnection unwrapped(const cashflow::ActiveConnection& connection) const {
        const auto* object = std::get_if<Connection*>(&connection);
        return object != nullptr && *object == outer_ ? cashflow::ActiveConnection(connection_.get()) : connection;
    }

    std::shared_ptr<Recordset> inner_;
    std::shared_ptr<StatementGuard> guard_;
    Connection* outer_;
    std::shared_ptr<Connection> connection_;
};

} // namespace

GuardedConnection::GuardedConnection(std::shared_ptr<Connection> inner)
    : inner_(std::move(inner)), guard_(std::make_shared<StatementGuard>()) {
    if (!inner_) {
        raisePlatformError(Reason::connectionMissing);
    }
}

void GuardedConnection::Open(const std::string& connectionString) { inner_->Open(connectionString); }

void GuardedConnection::Close() { inner_->Close(); }

ObjectState GuardedConnection::State() const { return inner_->State(); }

std::string GuardedConnection::ConnectionString() const { return inner_->ConnectionString(); }

std::shared_ptr<Recordset> GuardedConnection::Execute(const std::string& commandText) {
    guard_->check(commandText);
    return guarded(inner_->Execute(commandText));
}

std::shared_ptr<Recordset> GuardedConnection::CreateRecordset() { return guarded(inner_->CreateRecordset()); }

std::shared_ptr<Recordset> GuardedConnection::guarded(std::shared_ptr<Recordset> recordset) {
    return recordset == nullptr ? nullptr
                                : std::make_shared<GuardedRecordset>(std::move(recordset), guard_, this, inner_);
}

void GuardedConnection::BeginTrans() { inner_->BeginTrans(); }

void GuardedConnection::CommitTrans() { inner_->CommitTrans(); }

void GuardedConnection::RollbackTrans() { inner_->RollbackTrans(); }

} // namespace z7::cashflow::guard
