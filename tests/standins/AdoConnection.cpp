#include "standins/AdoConnection.h"

#include "standins/AdoRecordset.h"
#include "z7cashflow/support/conversions.h"

#include <utility>

namespace z7::cashflow::test {

namespace {

constexpr IID connectionKind{0x5a370003, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};
constexpr auto errorInCommand = static_cast<HRESULT>(0x80040E14);

/// A connection string as ADO shows it once it is open.
std::string withoutPassword(const std::string& text) {
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(';', at), text.size());
        const std::string part = text.substr(at, end - at);
        const std::string lower = asciiLower(part);
        if (!lower.starts_with("password=") && !lower.starts_with("pwd=")) {
            shown += (shown.empty() ? "" : ";") + part;
        }
        at = end + 1;
    }
    return shown;
}

} // namespace

AdoConnection::AdoConnection(std::shared_ptr<AdoDatabase> database, std::shared_ptr<Connection> connection)
    : AutomationObject(database->calls, connectionKind), database_(std::move(database)),
      connection_(std::move(connection)) {
    if (connection_->State() == ObjectState::open) {
        connectionString_ = connection_->ConnectionString();
    }
    addProperties();
    method(L"Open", [this](const Call& call) {
        const std::string text = call.text(0, connectionString_);
        onDatabase([&] { connection_->Open(text); });
        connectionString_ = withoutPassword(text);
        return OwnedVariant();
    });
    method(L"Close", [this](const Call&) {
        onDatabase([&] { connection_->Close(); });
        for (AdoRecordset* recordset : std::exchange(recordsets_, {})) {
            recordset->connectionClosed();
        }
        return OwnedVariant();
    });
    method(L"Execute", [this](const Call& call) { return execute(call); });
    method(L"BeginTrans", [this](const Call&) {
        onDatabase([&] { connection_->BeginTrans(); });
        return OwnedVariant(std::int32_t{1}); // the level
    });
    method(L"CommitTrans", [this](const Call&) {
        onDatabase([&] { connection_->CommitTrans(); });
        return OwnedVariant();
    });
    method(L"RollbackTrans", [this](const Call&) {
        onDatabase([&] { connection_->RollbackTrans(); });
        return OwnedVariant();
    });
}

void AdoConnection::addProperties() {
    property(L"State", [this](const Call&) { return OwnedVariant(static_cast<std::int32_t>(connection_->State())); });
    property(
        L"ConnectionString", [this](const Call&) { return OwnedVariant(connectionString_); },
        [this](const Call& call) {
            if (connection_->State() == ObjectState::open) {
                throw Error(errors::objectOpen, "ADODB.Connection",
                            "Operation is not allowed when the object is open.");
            }
            connectionString_ = call.text(0);
            return OwnedVariant();
        });
    defaultMember(L"ConnectionString");
    property(
        L"CursorLocation", [this](const Call&) { return OwnedVariant(cursorLocation_); },
        [this](const Call& call) {
            cursorLocation_ = call.number(0);
            return OwnedVariant();
        });
    property(L"Errors", [this](const Call&) { return asValue(makeObject<AdoErrors>(plan(), errors_)); });
}

AdoConnection* AdoConnection::of(IDispatch* object) {
    return static_cast<AdoConnection*>(ofKind(object, connectionKind));
}

void AdoConnection::onDatabase(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        if (isErrorOfAdo(error)) {
            throw;
        }
        errors_.clear();
        if (database_->warning) {
            errors_.push_back({errorInCommand, *database_->warning});
        }
        errors_.push_back({errorInCommand, error});
        throw Failure{errorInCommand, "Provider", error.description(), true};
    }
}

OwnedVariant AdoConnection::execute(const Call& call) {
    std::shared_ptr<Recordset> result;
    onDatabase([&] { result = connection_->Execute(call.text(0)); });
    call.store(1, -1); // the number of changed records, which the library's connections do not tell
    return asValue(
        makeObject<AdoRecordset>(database_, ComPtr<AdoConnection>(this), std::move(result), cursorLocation_));
}

} // namespace z7::cashflow::test
