#include "standins/AdoRecordset.h"

#include "standins/AdoFields.h"

#include <utility>

namespace z7::cashflow::test {

namespace {

constexpr IID recordsetKind{0x5a370004, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};
constexpr const char* source = "ADODB.Recordset";

[[noreturn]] void refuseBecauseOpen() {
    throw Error(errors::objectOpen, source, "Operation is not allowed when the object is open.");
}

} // namespace

AdoRecordset::AdoRecordset(std::shared_ptr<AdoDatabase> database)
    : AutomationObject(database->calls, recordsetKind), database_(std::move(database)) {
    addProperties();
    addMethods();
}

AdoRecordset::AdoRecordset(std::shared_ptr<AdoDatabase> database, ComPtr<AdoConnection> connection,
                           std::shared_ptr<Recordset> records, std::int32_t cursorLocation)
    : AdoRecordset(std::move(database)) {
    connection_ = std::move(connection);
    records_ = std::move(records);
    cursorLocation_ = cursorLocation;
    if (isOpen()) {
        source_ = records_->Source();
        afterRepositioning();
        connection_->opened(this);
    }
}

AdoRecordset::~AdoRecordset() {
    if (connection_) {
        connection_->closed(this);
    }
}

Recordset& AdoRecordset::records() {
    requireOpen();
    return *records_;
}

void AdoRecordset::requireOpen() const {
    if (!isOpen()) {
        throw Error(errors::objectClosed, source, "Operation is not allowed when the object is closed.");
    }
}

void AdoRecordset::setValue(const std::string& field, const Variant& value) {
    constexpr int wrongType = 3421;
    try {
        onDatabase([&] { records().Fields().Item(field, value); });
    } catch (const Failure&) { // a provider's code for a value that cannot be converted is ADO's own error
        throw Error(wrongType, source, "Application uses a value of the wrong type for the current operation.");
    }
    isChanging_ = true;
}

void AdoRecordset::connectionClosed() {
    if (isOpen()) {
        records_->Close();
    }
}

bool AdoRecordset::isOpen() const { return records_ && records_->State() == ObjectState::open; }

void AdoRecordset::onDatabase(const std::function<void()>& action) {
    if (connection_) {
        connection_->onDatabase(action);
    } else {
        action();
    }
}

void AdoRecordset::chooseConnection(const Call& call, std::size_t position) {
    if (IDispatch* object = call.object(position)) {
        AdoConnection* connection = AdoConnection::of(object);
        if (connection == nullptr) {
            throw Error(errors::invalidArgument, source, "Arguments are of the wrong type.");
        }
        connection_ = ComPtr<AdoConnection>(connection);
        connectionString_.reset();
    } else {
        connectionString_ = call.text(position);
        connection_ = makeObject<AdoConnection>(database_, std::shared_ptr<Connection>(database_->makeConnection()));
    }
}

void AdoRecordset::open(const Call& call) {
    if (isOpen()) {
        refuseBecauseOpen();
    }
    source_ = call.text(0, source_);
    if (call.has(1)) {
        chooseConnection(call, 1);
    }
    if (!connection_ || (!connectionString_ && connection_->connection().State() == ObjectState::closed)) {
        throw Error(errors::noConnection, source, "The connection cannot be used to perform this operation.");
    }
    cursorType_ = static_cast<CursorType>(call.number(2, 0));
    lockType_ = static_cast<LockType>(call.number(3, 1));
    records_ = connectionString_ ? database_->makeRecordset() : connection_->connection().createRecordset();
    records_->CursorLocation(static_cast<CursorLocation>(cursorLocation_));
    onDatabase([&] {
        const ActiveConnection place =
            connectionString_ ? ActiveConnection(*connectionString_) : ActiveConnection(&connection_->connection());
        records_->Open(source_, place, cursorType_, lockType_);
    });
    isChanging_ = false;
    if (isOpen()) {
        afterRepositioning();
        connection_->opened(this);
    }
}

void AdoRecordset::close() {
    constexpr int illegalOperation = 3219;
    requireOpen();
    if (isChanging_) {
        throw Error(illegalOperation, source, "Operation is not allowed in this context.");
    }
    records_->Close();
    if (connection_) {
        connection_->closed(this);
    }
}

void AdoRecordset::setActiveConnection(const Call& call) {
    const bool isNothing = call.object(0) == nullptr && call.isPutRef();
    if (!isOpen()) {
        if (isNothing) {
            connection_.reset();
            connectionString_.reset();
        } else {
            chooseConnection(call, 0);
        }
        return;
    }
    if (isOnServer() || !isNothing) {
        refuseBecauseOpen();
    }
    records_->ActiveConnection(std::monostate());
    connection_->closed(this);
    connection_.reset();
}

OwnedVariant AdoRecordset::recordCount() {
    const bool isUnknown =
        isOnServer() && (cursorType_ == CursorType::forwardOnly || cursorType_ == CursorType::dynamic);
    const std::int32_t count = records().RecordCount();
    return OwnedVariant(isUnknown ? std::int32_t{-1} : count);
}

void AdoRecordset::addProperties() {
    const auto nothing = [](auto&& action) {
        action();
        return OwnedVariant();
    };
    property(L"State", [this](const Call&) { return OwnedVariant(std::int32_t{isOpen() ? 1 : 0}); });
    property(
        L"Source", [this](const Call&) { return OwnedVariant(source_); },
        [this, nothing](const Call& call) { return nothing([&] { source_ = call.text(0); }); });
    property(L"EOF", [this](const Call&) { return OwnedVariant(records().atEnd()); });
    property(L"BOF", [this](const Call&) { return OwnedVariant(records().atEnd() && isBeforeFirst_); });
    property(L"RecordCount", [this](const Call&) { return recordCount(); });
    property(L"Fields",
             [this](const Call&) { return asValue(makeObject<AdoFields>(plan(), ComPtr<AdoRecordset>(this))); });
    defaultMember(L"Fields");
    property(
        L"Filter",
        [this](const Call&) {
            const std::string criteria = records().Filter();
            return criteria.empty() ? OwnedVariant(std::int32_t{0}) : OwnedVariant(criteria);
        },
        [this, nothing](const Call& call) {
            return nothing([&] {
                records().Filter(call.text(0));
                afterRepositioning();
            });
        });
    property(
        L"CursorLocation", [this](const Call&) { return OwnedVariant(cursorLocation_); },
        [this, nothing](const Call& call) {
            return nothing([&] {
                if (isOpen()) {
                    refuseBecauseOpen();
                }
                cursorLocation_ = call.number(0);
            });
        });
    property(
        L"ActiveConnection", [this](const Call&) { return OwnedVariant(static_cast<IDispatch*>(connection_.get())); },
        [this, nothing](const Call& call) { return nothing([&] { setActiveConnection(call); }); });
}

void AdoRecordset::addMethods() {
    const auto add = [this](const wchar_t* name, std::function<void(const Call&)> run) {
        method(name, [run = std::move(run)](const Call& call) {
            run(call);
            return OwnedVariant();
        });
    };
    add(L"Open", [this](const Call& call) { open(call); });
    add(L"Close", [this](const Call&) { close(); });
    add(L"MoveFirst", [this](const Call&) {
        if (records().atEnd() && isBeforeFirst_) {
            throw Error(errors::noCurrentRecord, source, "Either BOF or EOF is True.");
        }
        onDatabase([&] { records().MoveFirst(); });
        isChanging_ = false;
        afterRepositioning();
    });
    add(L"MoveNext", [this](const Call&) {
        onDatabase([&] { records().MoveNext(); });
        isChanging_ = false;
    });
    add(L"AddNew", [this](const Call&) {
        onDatabase([&] { records().AddNew(); });
        isChanging_ = true;
    });
    add(L"Update", [this](const Call&) {
        if (lockType_ == LockType::readOnly || lockType_ == LockType::unspecified) {
            throw Error(errors::notUpdatable, source, "Current Recordset does not support updating.");
        }
        onDatabase([&] { records().Update(); });
        isChanging_ = false;
    });
    add(L"CancelUpdate", [this](const Call&) {
        requireOpen();
        isChanging_ = false;
    });
    method(L"NextRecordset", [this](const Call&) {
        records_.reset();
        return OwnedVariant(static_cast<IDispatch*>(nullptr));
    });
}

} // namespace z7::cashflow::test
