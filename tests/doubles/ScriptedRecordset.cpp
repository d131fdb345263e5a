#include "doubles/ScriptedRecordset.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <numeric>
#include <optional>

namespace z7::cashflow::test {

namespace {

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return result;
}

[[noreturn]] void raise(int number, const std::string& description) {
    throw Error(number, "ScriptedRecordset", description);
}

struct Condition {
    std::string column;
    double number = 0;
};

/// The conditions of a filter, or nothing if the text is not of the form "column=number and column=number".
std::optional<std::vector<Condition>> parseFilter(const std::string& criteria) {
    std::vector<Condition> conditions;
    std::size_t begin = 0;
    while (true) {
        const std::size_t joint = criteria.find(" and ", begin);
        const std::string part = criteria.substr(begin, joint == std::string::npos ? joint : joint - begin);
        const std::size_t equals = part.find('=');
        if (equals == std::string::npos || equals == 0 || equals + 1 == part.size()) {
            return std::nullopt;
        }
        Condition condition{part.substr(0, equals), 0};
        const char* const end = part.data() + part.size();
        const auto read = std::from_chars(part.data() + equals + 1, end, condition.number);
        if (read.ec != std::errc() || read.ptr != end) {
            return std::nullopt;
        }
        conditions.push_back(condition);
        if (joint == std::string::npos) {
            return conditions;
        }
        begin = joint + 5;
    }
}

std::optional<double> numberOf(const Variant& value) {
    return value.visit([](const auto& held) -> std::optional<double> {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, std::string>) {
            double number = 0;
            const auto read = std::from_chars(held.data(), held.data() + held.size(), number);
            return read.ec == std::errc() ? std::optional(number) : std::nullopt;
        } else if constexpr (std::is_arithmetic_v<T>) {
            return static_cast<double>(held);
        } else {
            return std::nullopt;
        }
    });
}

} // namespace

ScriptedRecordset::ScriptedRecordset(ScriptedDatabase& database, Connection* creator, std::string session)
    : database_(database), creator_(creator), session_(std::move(session)) {}

ScriptedRecordset::~ScriptedRecordset() {
    if (open_) {
        database_.dropped_.push_back(source_);
        Close();
    }
}

void ScriptedRecordset::fill(const std::string& source, Table table) {
    source_ = source;
    table_ = std::move(table);
    open_ = true;
    database_.open_[this] = source;
    showAll();
}

void ScriptedRecordset::Open(const std::string& source, const cashflow::ActiveConnection& connection,
                             CursorType cursorType, LockType lockType) {
    if (open_) {
        raise(errors::objectOpen, "the recordset is open");
    }
    const auto& on = std::holds_alternative<std::monostate>(connection) ? active_ : connection;
    std::string session =
        "(" + std::to_string(static_cast<int>(cursorType)) + "," + std::to_string(static_cast<int>(lockType));
    if (const auto* text = std::get_if<std::string>(&on)) {
        EXPECT_EQ(*text, ScriptedDatabase::connectionString()) << "an own session on another database: " << source;
        session = "own" + session + "," + std::to_string(static_cast<int>(location_)) + ")";
    } else if (const auto* given = std::get_if<Connection*>(&on)) {
        EXPECT_EQ(*given, creator_) << "a recordset on a session that is not its own: " << source;
        session = session_ + session + ")";
    } else {
        raise(3709, "the recordset has no connection");
    }
    writable_ = lockType == LockType::Pessimistic || lockType == LockType::Optimistic;
    Table table = database_.run(session, source);
    if (!table.columns.empty()) {
        fill(source, std::move(table));
    }
}

void ScriptedRecordset::Close() {
    needOpen();
    open_ = false;
    database_.open_.erase(this);
    database_.note("Close");
}

std::string ScriptedRecordset::Source() const {
    needOpen();
    return source_;
}

bool ScriptedRecordset::EndOfFile() const {
    needOpen();
    return !adding_ && at_ >= shown_.size();
}

std::int32_t ScriptedRecordset::RecordCount() const {
    needOpen();
    return static_cast<std::int32_t>(shown_.size());
}

void ScriptedRecordset::MoveFirst() {
    needOpen();
    at_ = 0;
}

void ScriptedRecordset::MoveNext() {
    needOpen();
    if (at_ >= shown_.size()) {
        raise(errors::noCurrentRecord, "no record to move from");
    }
    ++at_;
}

FieldList& ScriptedRecordset::Fields() {
    needOpen();
    return *this;
}

void ScriptedRecordset::Filter(const std::string& criteria) {
    needOpen();
    database_.note("Filter " + criteria);
    if (criteria.empty()) {
        filter_ = criteria;
        showAll();
        return;
    }
    const auto conditions = parseFilter(criteria);
    if (!conditions) {
        raise(errors::badFilter, "not a filter: " + criteria);
    }
    std::vector<std::size_t> shown;
    for (std::size_t row = 0; row < table_.rows.size(); ++row) {
        if (std::all_of(conditions->begin(), conditions->end(), [&](const Condition& condition) {
                return numberOf(table_.rows[row].at(position(condition.column))) == condition.number;
            })) {
            shown.push_back(row);
        }
    }
    filter_ = criteria;
    shown_ = std::move(shown);
    at_ = 0;
}

void ScriptedRecordset::CursorLocation(cashflow::CursorLocation location) {
    if (open_) {
        raise(errors::objectOpen, "the recordset is open");
    }
    location_ = location;
}

void ScriptedRecordset::AddNew() {
    needOpen();
    needWritable();
    database_.note("AddNew");
    adding_ = true;
    changed_ = true;
    table_.rows.emplace_back(table_.columns.size());
    shown_.push_back(table_.rows.size() - 1);
    at_ = shown_.size() - 1;
}

void ScriptedRecordset::Update() {
    needOpen();
    database_.note("Update");
    if (database_.updateFailure_) {
        const Error error = *database_.updateFailure_;
        database_.updateFailure_.reset();
        throw Error(error);
    }
    adding_ = false;
    changed_ = false;
}

int ScriptedRecordset::Count() const {
    needOpen();
    return static_cast<int>(table_.columns.size());
}

const std::string& ScriptedRecordset::Name(int index) const {
    needOpen();
    if (index < 0 || static_cast<std::size_t>(index) >= table_.columns.size()) {
        raise(errors::unknownField, "no column " + std::to_string(index));
    }
    return table_.columns[static_cast<std::size_t>(index)];
}

bool ScriptedRecordset::Has(std::string_view name) const {
    needOpen();
    return std::any_of(table_.columns.begin(), table_.columns.end(),
                       [&](const auto& column) { return lower(column) == lower(name); });
}

Variant ScriptedRecordset::Item(std::string_view name) const {
    needOpen();
    const std::size_t column = position(name);
    return table_.rows[currentRow()].at(column);
}

Variant ScriptedRecordset::Item(int index) const {
    needOpen();
    static_cast<void>(Name(index));
    return table_.rows[currentRow()].at(static_cast<std::size_t>(index));
}

void ScriptedRecordset::Item(std::string_view name, const Variant& value) {
    needOpen();
    needWritable();
    const std::size_t column = position(name);
    Variant& field = table_.rows[currentRow()].at(column);
    const auto conversion = table_.conversions.find(table_.columns[column]);
    field = conversion == table_.conversions.end() ? value : conversion->second(value);
    changed_ = true;
    database_.note(std::string(name) + " = " + (field.isNull() ? "null" : toText(field)));
}

void ScriptedRecordset::needOpen() const {
    if (!open_) {
        raise(errors::objectClosed, "the recordset is closed");
    }
}

void ScriptedRecordset::needWritable() const {
    if (!writable_) {
        raise(3251, "the recordset is read-only");
    }
}

std::size_t ScriptedRecordset::position(std::string_view name) const {
    for (std::size_t column = 0; column < table_.columns.size(); ++column) {
        if (lower(table_.columns[column]) == lower(name)) {
            return column;
        }
    }
    raise(errors::unknownField, "no column " + std::string(name));
}

std::size_t ScriptedRecordset::currentRow() const {
    if (at_ >= shown_.size()) {
        raise(errors::noCurrentRecord, "no current record");
    }
    return shown_[at_];
}

void ScriptedRecordset::showAll() {
    shown_.resize(table_.rows.size());
    std::iota(shown_.begin(), shown_.end(), std::size_t{0});
    at_ = 0;
}

} // namespace z7::cashflow::test
