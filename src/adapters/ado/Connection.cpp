#include "adapters/ado/Connection.h"

#include "adapters/ado/Recordset.h"
#include "adapters/ado/connectionSecrets.h"
#include "adapters/ado/databaseError.h"
#include "adapters/ado/hostValue.h"
#include "z7cashflow/support/Error.h"

#include <cstdint>
#include <utility>

namespace z7::cashflow::ado {

namespace {

using adapters::automation::Dispatch;
using adapters::automation::OwnedVariant;

constexpr std::int32_t commandIsText = 1;
constexpr std::int32_t stateIsOpen = 1;
constexpr auto clientCursors = static_cast<std::int32_t>(CursorLocation::client);

bool isOpen(const Dispatch& recordset) { return (wholeNumber(recordset.get(L"State"), L"State") & stateIsOpen) != 0; }

/// The next result of a batch; Nothing after the last one, or if the provider has one result only.
OwnedVariant nextResult(const Dispatch& recordset) {
    try {
        return recordset.call(L"NextRecordset");
    } catch (const Error& error) {
        if (error.number() == errors::notUpdatable) { // which ADO raises for everything that a provider cannot do
            return {};
        }
        throw;
    }
}

/// The first result with records of a batch, whose other statements only count the records that they change.
Dispatch firstResult(Dispatch recordset) {
    while (!isOpen(recordset)) {
        const OwnedVariant next = nextResult(recordset);
        if (next.get().vt != VT_DISPATCH || next.get().pdispVal == nullptr) {
            break;
        }
        recordset = Dispatch(next.get().pdispVal);
    }
    return recordset;
}

/// The ADO connection's results are on the client during the life of this object.
class ClientCursors {
public:
    explicit ClientCursors(const Dispatch& connection)
        : connection_(connection), former_(wholeNumber(connection.get(L"CursorLocation"), L"CursorLocation")) {
        if (former_ != clientCursors) {
            connection_.put(L"CursorLocation", clientCursors);
        }
    }
    ClientCursors(const ClientCursors&) = delete;
    ClientCursors& operator=(const ClientCursors&) = delete;
    ~ClientCursors() {
        if (former_ != clientCursors) {
            ignoringErrors([this] { connection_.put(L"CursorLocation", former_); });
        }
    }

private:
    const Dispatch& connection_;
    std::int32_t former_;
};

} // namespace

Connection::Connection() : object_(Dispatch::create(L"ADODB.Connection")), isOwn_(true) {}

Connection::Connection(Dispatch hostConnection) : object_(std::move(hostConnection)), isOwn_(false) {
    requireObject(object_, L"Connection");
}

Connection::~Connection() {
    if (isOwn_) {
        ignoringErrors([this] {
            if (State() == ObjectState::open) {
                object_.call(L"Close");
            }
        });
    }
}

void Connection::Open(const std::string& connectionString) {
    const std::vector<std::string> secrets = secretsOf(connectionString);
    withDatabaseErrors(object_, secrets, [&] { object_.call(L"Open", connectionString); });
    connectionString_ = connectionString;
    secrets_ = secrets;
}

void Connection::Close() { call(L"Close"); }

ObjectState Connection::State() const { return isOpen(object_) ? ObjectState::open : ObjectState::closed; }

std::string Connection::ConnectionString() const {
    return connectionString_.empty() ? hostText(object_.get(L"ConnectionString"), L"ConnectionString")
                                     : connectionString_;
}

std::shared_ptr<cashflow::Recordset> Connection::Execute(const std::string& commandText) {
    return withDatabaseErrors(object_, secrets_, [&]() -> std::shared_ptr<cashflow::Recordset> {
        return std::make_shared<Recordset>(run(commandText), *this, commandText);
    });
}

Dispatch Connection::run(const std::string& commandText) {
    const ClientCursors guard(object_);
    return firstResult(object_.callObject(L"Execute", commandText, OwnedVariant::missing(), commandIsText));
}

std::shared_ptr<cashflow::Recordset> Connection::createRecordset() { return std::make_shared<Recordset>(); }

void Connection::BeginTrans() { call(L"BeginTrans"); }

void Connection::CommitTrans() { call(L"CommitTrans"); }

void Connection::RollbackTrans() { call(L"RollbackTrans"); }

void Connection::call(const wchar_t* method) {
    withDatabaseErrors(object_, secrets_, [&] { object_.call(method); });
}

} // namespace z7::cashflow::ado
