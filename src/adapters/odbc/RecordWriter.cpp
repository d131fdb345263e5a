#include "adapters/odbc/RecordWriter.h"

#include "adapters/odbc/databaseError.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/conversions.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <utility>

namespace z7::cashflow::odbc {

RecordWriter::RecordWriter(std::shared_ptr<Session> session, tsql::TableName target, std::vector<DriverColumn> columns)
    : session_(std::move(session)), target_(std::move(target)), columns_(std::move(columns)) {}

void RecordWriter::insert(const std::vector<shared::Change>& changes) {
    const Dialect& dialect = session_->dialect();
    Command command;
    command.text = "insert into " + dialect.tableText(target_);
    if (changes.empty()) {
        command.text += " default values";
    } else {
        std::string_view before = " (";
        for (const shared::Change& change : changes) {
            command.text.append(before).append(dialect.columnText(columnName(change.column)));
            before = ", ";
        }
        before = ") values (";
        for (const shared::Change& change : changes) {
            command.text.append(before);
            addValue(command, change.value);
            before = ", ";
        }
        command.text += ")";
    }
    session_->guarded([&] { session_->execute(command.text, command.values); });
}

void RecordWriter::update(const shared::RowSet& rows, std::size_t row, const std::vector<shared::Change>& changes) {
    Dialect& dialect = session_->dialect();
    Command command;
    command.text = "update " + dialect.tableText(target_);
    std::string_view before = " set ";
    for (const shared::Change& change : changes) {
        command.text.append(before).append(dialect.columnText(columnName(change.column))).append(" = ");
        addValue(command, change.value);
        before = ", ";
    }
    before = " where ";
    for (const int column : keyColumns()) {
        command.text.append(before);
        addCondition(command, columnName(column), rows.value(row, column));
        before = " and ";
    }
    for (const shared::Change& change : changes) {
        const short type = columns_[static_cast<std::size_t>(change.column)].sqlType;
        if (type == SQL_LONGVARCHAR || type == SQL_WLONGVARCHAR) {
            continue; // the server does not compare its long texts
        }
        command.text.append(before);
        addCondition(command, columnName(change.column), rows.value(row, change.column));
    }
    std::int64_t changed = 0;
    session_->guarded([&] { changed = dialect.change(*session_, command.text, command.values); });
    if (changed < 1) {
        throw Error(errorSource, {shared::DatabaseReason::recordChanged, {target_.name}});
    }
}

void RecordWriter::addValue(Command& command, const Variant& value) const {
    if (value.isNull()) { // a null parameter would have a type, which may not match
        command.text += "null";
        return;
    }
    command.text += "?";
    command.values.push_back(session_->dialect().stored(value));
}

void RecordWriter::addCondition(Command& command, const std::string& column, const Variant& value) const {
    command.text += session_->dialect().columnText(column);
    if (value.isNull()) {
        command.text += " is null";
        return;
    }
    command.text += " = " + session_->dialect().comparand(value);
    command.values.push_back(session_->dialect().stored(value));
}

std::string RecordWriter::columnName(int column) const { return columns_[static_cast<std::size_t>(column)].name; }

const std::vector<int>& RecordWriter::keyColumns() {
    if (!key_) {
        std::vector<std::string> names;
        session_->guarded([&] { names = session_->dialect().key(*session_, target_, columns_); });
        std::vector<int> key = positionsOf(names);
        if (key.empty() || key.size() != names.size()) {
            throw Error(errorSource, {shared::DatabaseReason::recordWithoutKey, {target_.name}});
        }
        key_ = std::move(key);
    }
    return *key_;
}

std::vector<int> RecordWriter::positionsOf(const std::vector<std::string>& names) const {
    std::vector<int> positions;
    for (const std::string& name : names) {
        const auto found = std::find_if(columns_.begin(), columns_.end(), [&name](const DriverColumn& column) {
            return asciiLower(column.name) == asciiLower(name);
        });
        if (found != columns_.end()) {
            positions.push_back(static_cast<int>(found - columns_.begin()));
        }
    }
    return positions;
}

} // namespace z7::cashflow::odbc
