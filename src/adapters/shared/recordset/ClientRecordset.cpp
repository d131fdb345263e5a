#include "adapters/shared/recordset/ClientRecordset.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/recordset/fieldValue.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::shared {

ClientRecordset::ClientRecordset(std::shared_ptr<Backend> backend) : backend_(std::move(backend)) {}

void ClientRecordset::present(Result result, std::string source, const cashflow::ActiveConnection& connection) {
    source_ = std::move(source);
    connection_ = connection;
    rows_ = std::move(result.rows);
    writer_ = std::move(result.writer);
    if (rows_ != nullptr) {
        standOn(0);
    }
}

void ClientRecordset::Open(const std::string& source, const cashflow::ActiveConnection& connection, CursorType,
                           LockType lockType) {
    if (rows_ != nullptr) {
        raisePlatformError(DatabaseReason::objectOpen);
    }
    if (!std::holds_alternative<std::monostate>(connection)) {
        connection_ = connection;
    }
    std::shared_ptr<Runner> runner;
    if (auto* const* session = std::get_if<Connection*>(&connection_); session != nullptr && *session != nullptr) {
        runner = backend_->runner(**session);
    } else if (const auto* text = std::get_if<std::string>(&connection_)) {
        runner = backend_->runner(*text);
    } else {
        raisePlatformError(DatabaseReason::connectionMissing);
    }
    const bool updatable = lockType == LockType::pessimistic || lockType == LockType::optimistic;
    Result result = runner->run(source, updatable);
    present(std::move(result), source, connection_);
    if (rows_ != nullptr && writer_ != nullptr) {
        runner_ = std::move(runner); // a reader no longer needs its session
    }
}

void ClientRecordset::Close() {
    requireOpen();
    rows_.reset();
    writer_.reset();
    runner_.reset();
    filter_.forget();
    criteria_.clear();
    shown_.reset();
    row_.reset();
    adding_ = false;
    pending_.clear();
}

ObjectState ClientRecordset::State() const { return rows_ == nullptr ? ObjectState::closed : ObjectState::open; }

std::string ClientRecordset::Source() const {
    requireOpen();
    return source_;
}

bool ClientRecordset::atEnd() const {
    requireOpen();
    return !row_ && !adding_;
}

std::int32_t ClientRecordset::RecordCount() const {
    requireOpen();
    return static_cast<std::int32_t>(shownCount());
}

void ClientRecordset::MoveFirst() {
    requireOpen();
    writePending();
    standOn(0);
}

void ClientRecordset::MoveNext() {
    if (atEnd()) {
        raisePlatformError(DatabaseReason::recordMissing);
    }
    writePending();
    standOn(shownAt_ + 1);
}

FieldList& ClientRecordset::Fields() {
    requireOpen();
    return *this;
}

void ClientRecordset::Filter(const std::string& criteria) {
    requireOpen();
    if (criteria.empty()) {
        writePending();
        shown_.reset();
    } else {
        const std::vector<FilterCondition> conditions = parseFilter(criteria, rows_->columns());
        writePending();
        shown_ = filter_.match(*rows_, conditions);
    }
    criteria_ = criteria;
    standOn(0);
}

std::string ClientRecordset::Filter() const {
    requireOpen();
    return criteria_;
}

void ClientRecordset::CursorLocation(cashflow::CursorLocation location) {
    if (rows_ != nullptr) {
        raisePlatformError(DatabaseReason::objectOpen);
    }
    location_ = location;
}

cashflow::CursorLocation ClientRecordset::CursorLocation() const { return location_; }

void ClientRecordset::ActiveConnection(const cashflow::ActiveConnection& connection) {
    if (rows_ != nullptr) { // an open recordset can only be detached from its session
        if (!std::holds_alternative<std::monostate>(connection)) {
            raisePlatformError(DatabaseReason::objectOpen);
        }
        writer_.reset();
        runner_.reset();
    }
    connection_ = connection;
}

cashflow::ActiveConnection ClientRecordset::ActiveConnection() const { return connection_; }

void ClientRecordset::AddNew() {
    requireOpen();
    static_cast<void>(writer());
    writePending();
    adding_ = true;
    row_.reset();
}

void ClientRecordset::Update() {
    requireOpen();
    writePending();
}

int ClientRecordset::Count() const { return rows().columns().count(); }

const std::string& ClientRecordset::Name(int position) const {
    const ColumnList& columns = rows().columns();
    if (position < 0 || position >= columns.count()) {
        raisePlatformError(DatabaseReason::fieldPositionUnknown, {std::to_string(position)});
    }
    return columns[position].name;
}

bool ClientRecordset::has(std::string_view name) const { return rows().columns().find(name) >= 0; }

Variant ClientRecordset::Item(std::string_view name) const { return Item(position(name)); }

Variant ClientRecordset::Item(int position) const {
    const RowSet& stored = rows();
    if (position < 0 || position >= stored.columns().count()) {
        raisePlatformError(DatabaseReason::fieldPositionUnknown, {std::to_string(position)});
    }
    if (!row_ && !adding_) {
        raisePlatformError(DatabaseReason::recordMissing);
    }
    for (const Change& change : pending_) {
        if (change.column == position) {
            return change.value;
        }
    }
    return row_ ? stored.value(*row_, position) : Variant();
}

void ClientRecordset::Item(std::string_view name, const Variant& value) {
    const int column = position(name);
    if (!row_ && !adding_) {
        raisePlatformError(DatabaseReason::recordMissing);
    }
    static_cast<void>(writer());
    Variant fitting = fieldValue(rows_->columns()[column], value);
    const auto known = std::find_if(pending_.begin(), pending_.end(),
                                    [column](const Change& change) { return change.column == column; });
    if (known != pending_.end()) {
        known->value = std::move(fitting);
    } else {
        pending_.push_back({column, std::move(fitting)});
    }
}

void ClientRecordset::requireOpen() const {
    if (rows_ == nullptr) {
        raisePlatformError(DatabaseReason::objectClosed);
    }
}

const RowSet& ClientRecordset::rows() const {
    requireOpen();
    return *rows_;
}

int ClientRecordset::position(std::string_view name) const {
    const int found = rows().columns().find(name);
    if (found < 0) {
        raisePlatformError(DatabaseReason::fieldUnknown, {std::string(name)});
    }
    return found;
}

std::size_t ClientRecordset::shownCount() const { return shown_ ? shown_->size() : rows_->rowCount(); }

void ClientRecordset::standOn(std::size_t shown) {
    shownAt_ = std::min(shown, shownCount());
    row_.reset();
    if (shownAt_ < shownCount()) {
        row_ = shown_ ? (*shown_)[shownAt_] : shownAt_;
    }
}

RowWriter& ClientRecordset::writer() const {
    if (writer_ == nullptr) {
        raisePlatformError(DatabaseReason::recordsetReadOnly);
    }
    return *writer_;
}

void ClientRecordset::writePending() {
    if (!adding_ && pending_.empty()) {
        return;
    }
    if (adding_) {
        writer().insert(pending_);
        addPendingRow();
    } else {
        writer().update(*rows_, *row_, pending_);
        for (const Change& change : pending_) {
            rows_->replace(*row_, change.column, change.value);
        }
    }
    pending_.clear();
    filter_.forget();
}

void ClientRecordset::addPendingRow() {
    const std::size_t row = rows_->rowCount();
    rows_->addNullRow();
    for (const Change& change : pending_) {
        rows_->replace(row, change.column, change.value);
    }
    adding_ = false;
    row_ = row;
    shownAt_ = row;
    if (shown_) { // as on the platform, a new record is visible until the filter is set again
        shownAt_ = shown_->size();
        shown_->push_back(static_cast<std::uint32_t>(row));
    }
}

} // namespace z7::cashflow::shared
