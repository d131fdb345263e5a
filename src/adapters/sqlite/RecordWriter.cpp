#include "adapters/sqlite/RecordWriter.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/sqlite/databaseError.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::sqlite {

RecordWriter::RecordWriter(std::shared_ptr<Session> session, tsql::TableName target, std::vector<ColumnOrigin> origins)
    : session_(std::move(session)), target_(std::move(target)), origins_(std::move(origins)) {}

void RecordWriter::insert(const std::vector<shared::Change>& changes) {
    std::vector<Variant> values;
    values.reserve(changes.size());
    for (const shared::Change& change : changes) {
        values.push_back(change.value);
    }
    session_->runOwn(insertText(changes), values);
}

void RecordWriter::update(const shared::RowSet& rows, std::size_t row, const std::vector<shared::Change>& changes) {
    std::string sql = "UPDATE " + tsql::qualifiedName(target_) + " SET ";
    std::vector<Variant> values;
    for (const shared::Change& change : changes) {
        sql += (values.empty() ? "" : ", ") + tsql::quotedName(columnName(change.column)) + " = ?";
        values.push_back(change.value);
    }
    const std::vector<int> key = keyColumns();
    if (key.empty()) {
        throw Error(errorSource, {shared::DatabaseReason::recordWithoutKey, {target_.name}});
    }
    std::string_view before = " WHERE ";
    for (const int column : key) {
        sql.append(before).append(tsql::quotedName(columnName(column))).append(" = ?");
        values.push_back(rows.value(row, column));
        before = " AND ";
    }
    for (const shared::Change& change : changes) {
        sql.append(before).append(tsql::quotedName(columnName(change.column))).append(" IS ?");
        values.push_back(rows.value(row, change.column));
    }
    if (session_->runOwn(sql, values) == 0) {
        throw Error(errorSource, {shared::DatabaseReason::recordChanged, {target_.name}});
    }
}

const std::string& RecordWriter::insertText(const std::vector<shared::Change>& changes) {
    const bool asBefore = !insertText_.empty() &&
                          std::equal(changes.begin(), changes.end(), insertColumns_.begin(), insertColumns_.end(),
                                     [](const shared::Change& change, int column) { return change.column == column; });
    if (asBefore) {
        return insertText_;
    }
    std::vector<int> numbers;
    std::string columns;
    std::string places;
    for (const shared::Change& change : changes) {
        numbers.push_back(change.column);
        columns += (columns.empty() ? "" : ", ") + tsql::quotedName(columnName(change.column));
        places += places.empty() ? "?" : ", ?";
    }
    const std::string sql = "INSERT INTO " + tsql::qualifiedName(tsql::insertionTarget(target_));
    insertText_ = changes.empty() ? sql + " DEFAULT VALUES" : sql + " (" + columns + ") VALUES (" + places + ")";
    insertColumns_ = std::move(numbers);
    return insertText_;
}

std::string RecordWriter::columnName(int column) const {
    const ColumnOrigin& origin = origins_[static_cast<std::size_t>(column)];
    if (origin.column.empty()) {
        raisePlatformError(shared::DatabaseReason::columnOfExpression, {target_.name});
    }
    return origin.column;
}

std::vector<int> RecordWriter::keyColumns() const {
    tsql::TableName base = target_;
    base.name = origins_.front().table; // the table of a view
    const auto shape = session_->catalogue().table(base);
    std::vector<int> columns;
    for (const std::string& name : shape->key) {
        for (std::size_t i = 0; i < origins_.size(); ++i) {
            if (origins_[i].table == origins_.front().table && asciiLower(origins_[i].column) == asciiLower(name)) {
                columns.push_back(static_cast<int>(i));
                break;
            }
        }
    }
    return columns.size() == shape->key.size() ? columns : std::vector<int>();
}

} // namespace z7::cashflow::sqlite
