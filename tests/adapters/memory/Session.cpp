#include "adapters/memory/Session.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/tsql/TsqlReason.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <iterator>
#include <sstream>
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
    std::istringstream text(statement);
    const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
    const auto says = [&words](std::size_t at, const char* word) {
        return at < words.size() && asciiLower(words[at]) == word;
    };
    const auto into = static_cast<std::size_t>(
        std::find_if(words.begin(), words.end(), [](const auto& word) { return asciiLower(word) == "into"; }) -
        words.begin());
    if (says(0, "drop") && says(1, "table") && words.size() == 3) {
        drop(words[2]);
        return {};
    }
    if (says(0, "select") && into + 3 < words.size() && says(into + 2, "from")) {
        create(words[into + 1], table(words[into + 3]));
        return {};
    }
    if (says(0, "select") && says(1, "*") && says(2, "from") && words.size() == 4) {
        return read(words[3], updatable);
    }
    throw Error(errorSource, {tsql::TsqlReason::syntaxNear, {shortened(statement)}}, "42000");
}

shared::Result Session::read(const std::string& name, bool updatable) {
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

void Session::create(const std::string& name, const Table& model) {
    if (!tables_->try_emplace(asciiLower(name), Table{model.columns, {}}).second) {
        throw Error(errorSource, {Reason::keyExists, {name}}, "42S01");
    }
}

void Session::drop(const std::string& name) {
    static_cast<void>(table(name)); // an error if there is none
    tables_->erase(asciiLower(name));
}

Table& Session::table(const std::string& name) {
    if (tables_ == nullptr) {
        throw Error(errorSource, {shared::DatabaseReason::objectClosed});
    }
    const auto found = tables_->find(asciiLower(name));
    if (found == tables_->end()) {
        throw Error(errorSource, {tsql::TsqlReason::objectUnknown, {name}}, "42S02");
    }
    return found->second;
}

} // namespace z7::cashflow::memory
