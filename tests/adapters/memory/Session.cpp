#include "adapters/memory/Session.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::memory {
namespace {

constexpr const char* errorSource = "Memory";

/// Writes the records of one result back into its table.
class RecordWriter final : public shared::RowWriter {
public:
    RecordWriter(std::shared_ptr<Session> session, std::string table)
        : session_(std::move(session)), table_(std::move(table)) {}

    void insert(const std::vector<shared::Change>& changes) override {
        Table& table = session_->table(table_);
        assign(table.records.emplace_back(static_cast<std::size_t>(table.columns->count())), changes);
    }
    void update(const shared::RowSet& rows, std::size_t row, const std::vector<shared::Change>& changes) override {
        std::vector<Variant> read;
        for (int column = 0; column < rows.columns().count(); ++column) {
            read.push_back(rows.value(row, column));
        }
        auto& records = session_->table(table_).records;
        const auto stored = std::find(records.begin(), records.end(), read);
        if (stored == records.end()) {
            throw Error(errorSource, {shared::DatabaseReason::recordChanged, {table_}});
        }
        assign(*stored, changes);
    }

private:
    static void assign(std::vector<Variant>& record, const std::vector<shared::Change>& changes) {
        for (const shared::Change& change : changes) {
            record[static_cast<std::size_t>(change.column)] = change.value;
        }
    }

    std::shared_ptr<Session> session_;
    std::string table_;
};

} // namespace

Session::Session(int number, std::shared_ptr<Tables> tables, std::shared_ptr<const shared::Observers> observers)
    : number_(number), tables_(std::move(tables)), observers_(std::move(observers)) {}

shared::Result Session::run(const std::string& statement, bool updatable) {
    if (observers_->statement) {
        observers_->statement(number_, statement);
    }
    const std::string beginning = "select * from ";
    if (!asciiLower(statement).starts_with(beginning)) {
        throw Error(errors::badSyntax, errorSource, "Only \"select * from TABLE\" is understood.", "42000");
    }
    const std::string name = statement.substr(beginning.size());
    const Table& found = table(name);
    shared::Result result;
    result.rows = std::make_unique<shared::RowSet>(found.columns);
    for (const std::vector<Variant>& record : found.records) {
        for (const Variant& value : record) {
            result.rows->add(value);
        }
    }
    if (updatable) {
        result.writer = std::make_shared<RecordWriter>(shared_from_this(), name);
    }
    return result;
}

void Session::close() noexcept {
    if (before_) {
        *tables_ = std::move(*before_);
        before_.reset();
    }
    tables_.reset();
}

void Session::begin() {
    if (before_) {
        throw Error(errors::transactionExists, errorSource, {shared::DatabaseReason::transactionOpen}, "25000");
    }
    before_ = *tables_;
}

void Session::commit() {
    if (!before_) {
        throw Error(errors::noTransactionToCommit, errorSource, {shared::DatabaseReason::noTransactionToCommit},
                    "25000");
    }
    before_.reset();
}

void Session::rollback() {
    if (!before_) {
        throw Error(errors::noTransactionToRollBack, errorSource, {shared::DatabaseReason::noTransactionToRollBack},
                    "25000");
    }
    *tables_ = *std::exchange(before_, std::nullopt);
}

Table& Session::table(const std::string& name) {
    if (tables_ == nullptr) {
        throw Error(errorSource, {shared::DatabaseReason::objectClosed});
    }
    const auto found = tables_->find(asciiLower(name));
    if (found == tables_->end()) {
        throw Error(errors::unknownObject, errorSource, "There is no table " + name + ".", "42S02");
    }
    return found->second;
}

} // namespace z7::cashflow::memory
