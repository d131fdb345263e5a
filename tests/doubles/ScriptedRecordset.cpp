#include "doubles/ScriptedRecordset.h"

#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

namespace z7::cashflow::test {

namespace {

using shared::ColumnType;

/// Accepts every record: it is only recorded in the journal.
class JournalOnly final : public shared::RowWriter {
public:
    void insert(const std::vector<shared::Change>& /*changes*/) override {}
    void update(const shared::RowSet& /*rows*/, std::size_t /*row*/,
                const std::vector<shared::Change>& /*changes*/) override {}
};

ColumnType typeOf(const Variant& value) {
    return value.visit([](const auto& held) {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, bool>) {
            return ColumnType::boolean;
        } else if constexpr (std::is_same_v<T, std::uint8_t>) {
            return ColumnType::byte;
        } else if constexpr (std::is_same_v<T, std::int16_t>) {
            return ColumnType::int16;
        } else if constexpr (std::is_same_v<T, std::int32_t>) {
            return ColumnType::int32;
        } else if constexpr (std::is_same_v<T, double>) {
            return ColumnType::real;
        } else if constexpr (std::is_same_v<T, Date>) {
            return ColumnType::date;
        } else {
            return ColumnType::any; // a text as it is, also next to nulls
        }
    });
}

/// The given type of a column, or the common type of its values; "any" if they differ or are all null.
ColumnType typeOf(const Table& table, std::size_t column) {
    if (const auto given = table.types.find(table.columns[column]); given != table.types.end()) {
        return given->second;
    }
    ColumnType type = ColumnType::any;
    bool found = false;
    for (const auto& row : table.rows) {
        const Variant& value = row.at(column);
        if (value.isNull()) {
            continue;
        }
        if (found && typeOf(value) != type) {
            return ColumnType::any;
        }
        type = typeOf(value);
        found = true;
    }
    return type;
}

std::unique_ptr<shared::RowSet> rowsOf(const Table& table) {
    std::vector<shared::Column> columns;
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        columns.push_back({table.columns[column], typeOf(table, column), 0});
    }
    auto rows = std::make_unique<shared::RowSet>(std::make_shared<const shared::ColumnList>(std::move(columns)));
    for (const auto& row : table.rows) {
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            rows->add(row.at(column));
        }
    }
    return rows;
}

} // namespace

ScriptedRecordset::ScriptedRecordset(ScriptedDatabase& database, Connection* creator, std::string session)
    : database_(database), creator_(creator), session_(std::move(session)) {}

ScriptedRecordset::~ScriptedRecordset() {
    if (State() == ObjectState::open) {
        database_.dropped_.push_back(source_);
        Close();
    }
}

void ScriptedRecordset::fill(const std::string& source, const Table& table, bool writable) {
    source_ = source;
    shared::Result result;
    result.rows = rowsOf(table);
    if (writable) {
        result.writer = std::make_shared<JournalOnly>();
    }
    records_.present(std::move(result), source, {});
    fields_ = &records_.Fields();
    database_.open_[this] = source;
}

void ScriptedRecordset::Open(const std::string& source, const cashflow::ActiveConnection& connection,
                             CursorType cursorType, LockType lockType) {
    if (State() == ObjectState::open) {
        throw Error(errors::objectOpen, "ScriptedRecordset", "the recordset is open");
    }
    const auto on = std::holds_alternative<std::monostate>(connection) ? active_ : connection;
    std::string session =
        "(" + std::to_string(static_cast<int>(cursorType)) + "," + std::to_string(static_cast<int>(lockType));
    if (const auto* text = std::get_if<std::string>(&on)) {
        EXPECT_EQ(*text, ScriptedDatabase::connectionString()) << "an own session on another database: " << source;
        session = "own" + session + "," + std::to_string(static_cast<int>(location_)) + ")";
    } else if (const auto* given = std::get_if<Connection*>(&on)) {
        EXPECT_EQ(*given, creator_) << "a recordset on a session that is not its own: " << source;
        session = session_ + session + ")";
    } else {
        throw Error(errors::noConnection, "ScriptedRecordset", "the recordset has no connection");
    }
    const Table table = database_.run(session, source);
    if (!table.columns.empty()) {
        fill(source, table, lockType == LockType::pessimistic || lockType == LockType::optimistic);
    }
    active_ = on;
    countsRows_ = location_ == cashflow::CursorLocation::client || cursorType != CursorType::dynamic;
}

void ScriptedRecordset::Close() {
    records_.Close();
    database_.open_.erase(this);
    database_.note("Close");
}

FieldList& ScriptedRecordset::Fields() {
    static_cast<void>(records_.Fields()); // an error if it is closed
    return *this;
}

void ScriptedRecordset::Filter(const std::string& criteria) {
    database_.note("Filter " + criteria);
    records_.Filter(criteria);
}

void ScriptedRecordset::CursorLocation(cashflow::CursorLocation location) {
    records_.CursorLocation(location);
    location_ = location;
}

void ScriptedRecordset::AddNew() {
    database_.note("AddNew");
    records_.AddNew();
}

void ScriptedRecordset::Update() {
    database_.note("Update");
    if (database_.updateFailure_) {
        const Error error = *std::exchange(database_.updateFailure_, std::nullopt);
        throw Error(error);
    }
    records_.Update();
}

void ScriptedRecordset::Item(std::string_view name, const Variant& value) {
    fields_->Item(name, value);
    const Variant& field = fields_->Item(name);
    database_.note(std::string(name) + " = " + (field.isNull() ? "null" : toText(field)));
}

} // namespace z7::cashflow::test
