#include "adapters/ado/Recordset.h"

#include "adapters/ado/Connection.h"
#include "adapters/ado/connectionSecrets.h"
#include "adapters/ado/databaseError.h"
#include "adapters/ado/hostValue.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/conversions.h"

#include <utility>

namespace z7::cashflow::ado {

namespace {

using adapters::automation::Dispatch;
using adapters::automation::OwnedVariant;
using shared::DatabaseReason;

constexpr std::int32_t commandIsText = 1;
constexpr std::int32_t stateIsOpen = 1;

Connection& adoConnection(cashflow::Connection& connection) {
    auto* ours = dynamic_cast<Connection*>(&connection);
    if (ours == nullptr) {
        raisePlatformError(DatabaseReason::connectionForeign);
    }
    return *ours;
}

/// ADO's and the providers' codes for a value that its column cannot take.
bool refusesValue(const Error& error) {
    constexpr int wrongType = 3421;
    constexpr auto errorsOccurred = static_cast<int>(0x80040E21); // in client cursors also for a text that is too long
    constexpr auto cannotConvert = static_cast<int>(0x80040E07);
    constexpr auto overflow = static_cast<int>(0x80040E57);
    const int number = error.number();
    return number == wrongType || number == errors::overflow || number == errorsOccurred || number == cannotConvert ||
           number == overflow;
}

} // namespace

Recordset::Recordset() : object_(Dispatch::create(L"ADODB.Recordset")) {}

Recordset::Recordset(Dispatch result, Connection& connection, std::string source)
    : object_(std::move(result)), source_(std::move(source)), connection_(&connection),
      connectionObject_(connection.object()) {}

Recordset::~Recordset() {
    ignoringErrors([this] {
        if (State() == ObjectState::open) {
            closeOpen();
        }
    });
}

template <class Action> decltype(auto) Recordset::onDatabase(Action&& action) const {
    try {
        return std::forward<Action>(action)();
    } catch (const Error& error) {
        throw databaseError(error, session(), secrets_);
    }
}

/// The connection whose Errors collection has the errors of this recordset; nothing if there is none.
Dispatch Recordset::session() const {
    Dispatch found = connectionObject_;
    if (!found) {
        ignoringErrors([&] { found = object_.getObject(L"ActiveConnection"); });
    }
    return found;
}

void Recordset::requireOpen() const {
    if (State() != ObjectState::open) {
        raisePlatformError(DatabaseReason::objectClosed);
    }
}

/// ADO itself would let a recordset without a session be changed, and nobody would ever write the changes.
void Recordset::requireWritable() const {
    if (isCutOff_) {
        raisePlatformError(DatabaseReason::recordsetReadOnly);
    }
}

void Recordset::remember(const cashflow::ActiveConnection& connection) {
    connectionObject_ = Dispatch();
    secrets_.clear();
    if (const auto* object = std::get_if<cashflow::Connection*>(&connection)) {
        connectionObject_ = adoConnection(**object).object();
    } else if (const auto* text = std::get_if<std::string>(&connection)) {
        secrets_ = secretsOf(*text);
    }
    connection_ = connection;
}

void Recordset::Open(const std::string& source, const cashflow::ActiveConnection& connection, CursorType cursorType,
                     LockType lockType) {
    if (State() == ObjectState::open) {
        raisePlatformError(DatabaseReason::objectOpen);
    }
    if (!std::holds_alternative<std::monostate>(connection)) {
        remember(connection);
    }
    OwnedVariant place = OwnedVariant::missing();
    if (connectionObject_) {
        place = OwnedVariant(connectionObject_.pointer());
    } else if (const auto* text = std::get_if<std::string>(&connection_)) {
        place = OwnedVariant(*text);
    } else {
        raisePlatformError(DatabaseReason::connectionMissing);
    }
    isPending_ = false;
    isCutOff_ = false;
    columns_.reset();
    onDatabase([&] {
        object_.call(L"Open", source, place, static_cast<std::int32_t>(cursorType), static_cast<std::int32_t>(lockType),
                     commandIsText);
    });
    source_ = source;
}

void Recordset::Close() {
    requireOpen();
    closeOpen();
}

void Recordset::closeOpen() {
    if (isPending_) {
        ignoringErrors([this] { object_.call(L"CancelUpdate"); }); // ADO closes no record that is being changed
        isPending_ = false;
    }
    columns_.reset();
    onDatabase([this] { object_.call(L"Close"); });
}

ObjectState Recordset::State() const {
    const std::int32_t state = wholeNumber(object_.get(L"State"), L"State");
    return (state & stateIsOpen) != 0 ? ObjectState::open : ObjectState::closed;
}

std::string Recordset::Source() const {
    requireOpen();
    return source_;
}

bool Recordset::atEnd() const {
    return onDatabase([this] { return toBool(object_.get(L"EOF").value()); });
}

std::int32_t Recordset::RecordCount() const {
    return onDatabase([this] { return wholeNumber(object_.get(L"RecordCount"), L"RecordCount"); });
}

void Recordset::MoveFirst() {
    onDatabase([this] {
        const bool atEnd = toBool(object_.get(L"EOF").value());
        if (atEnd && toBool(object_.get(L"BOF").value())) {
            return; // without records ADO would raise an error
        }
        object_.call(L"MoveFirst");
    });
    isPending_ = false;
}

void Recordset::MoveNext() {
    onDatabase([this] { object_.call(L"MoveNext"); });
    isPending_ = false;
}

FieldList& Recordset::Fields() {
    columns();
    return *this;
}

void Recordset::Filter(const std::string& criteria) {
    onDatabase([&] { object_.put(L"Filter", criteria); });
    isPending_ = false;
}

std::string Recordset::Filter() const {
    requireOpen();
    const OwnedVariant criteria = object_.get(L"Filter");
    return criteria.get().vt == VT_BSTR ? hostText(criteria, L"Filter")
                                        : std::string(); // without one it is the number 0
}

void Recordset::CursorLocation(cashflow::CursorLocation location) {
    onDatabase([&] { object_.put(L"CursorLocation", static_cast<std::int32_t>(location)); });
}

cashflow::CursorLocation Recordset::CursorLocation() const {
    return static_cast<cashflow::CursorLocation>(wholeNumber(object_.get(L"CursorLocation"), L"CursorLocation"));
}

void Recordset::ActiveConnection(const cashflow::ActiveConnection& connection) {
    const bool isOpen = State() == ObjectState::open;
    if (isOpen || std::holds_alternative<std::monostate>(connection)) {
        Dispatch target;
        if (const auto* object = std::get_if<cashflow::Connection*>(&connection)) {
            target = adoConnection(**object).object();
        }
        onDatabase([&] { object_.putRef(L"ActiveConnection", target.pointer()); });
        isCutOff_ = isOpen && !target;
    }
    remember(connection); // a closed recordset passes it to Open
}

cashflow::ActiveConnection Recordset::ActiveConnection() const { return connection_; }

void Recordset::AddNew() {
    requireOpen();
    requireWritable();
    onDatabase([this] { object_.call(L"AddNew"); });
    isPending_ = true;
}

void Recordset::Update() {
    if (!isPending_) {
        requireOpen();
        return; // ADO would raise an error if the records cannot be changed
    }
    onDatabase([this] { object_.call(L"Update"); });
    isPending_ = false;
}

const Recordset::Columns& Recordset::columns() const {
    if (!columns_) {
        requireOpen();
        auto columns = std::make_unique<Columns>();
        const Dispatch fields = object_.getObject(L"Fields");
        const std::int32_t count = wholeNumber(fields.get(L"Count"), L"Fields.Count");
        for (std::int32_t position = 0; position < count; ++position) {
            columns->fields.push_back(fields.getObject(L"Item", position));
            columns->names.push_back(hostText(columns->fields.back().get(L"Name"), L"Field.Name"));
            columns->positions.try_emplace(asciiLower(columns->names.back()), static_cast<std::size_t>(position));
        }
        columns_ = std::move(columns);
    }
    return *columns_;
}

const Dispatch& Recordset::field(std::string_view name) const {
    const Columns& known = columns();
    const auto found = known.positions.find(asciiLower(name));
    if (found == known.positions.end()) {
        raisePlatformError(DatabaseReason::fieldUnknown, {std::string(name)});
    }
    return known.fields[found->second];
}

int Recordset::Count() const { return static_cast<int>(columns().names.size()); }

const std::string& Recordset::Name(int position) const {
    const Columns& known = columns();
    if (position < 0 || static_cast<std::size_t>(position) >= known.names.size()) {
        raisePlatformError(DatabaseReason::fieldPositionUnknown, {std::to_string(position)});
    }
    return known.names[static_cast<std::size_t>(position)];
}

bool Recordset::has(std::string_view name) const { return columns().positions.contains(asciiLower(name)); }

Variant Recordset::Item(std::string_view name) const {
    const Dispatch& column = field(name);
    return onDatabase([&] { return column.get(L"Value").value(); });
}

Variant Recordset::Item(int position) const {
    static_cast<void>(Name(position)); // refuses a position that does not exist
    return onDatabase([&] { return columns().fields[static_cast<std::size_t>(position)].get(L"Value").value(); });
}

void Recordset::Item(std::string_view name, const Variant& value) {
    const Dispatch& column = field(name);
    requireWritable();
    onDatabase([&] {
        try {
            column.put(L"Value", value);
        } catch (const Error& error) {
            if (refusesValue(error)) {
                raisePlatformError(DatabaseReason::columnValueBad,
                                   {std::string(name), shortened(toTextOrEmpty(value))});
            }
            throw;
        }
    });
    isPending_ = true;
}

} // namespace z7::cashflow::ado
