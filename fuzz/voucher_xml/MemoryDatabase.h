#pragma once

#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/shared/recordset/Backend.h"
#include "adapters/shared/recordset/ClientRecordset.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::fuzz {

/// A database that consists of one table of voucher lines in memory: every query returns that table without rows,
/// and written lines are collected in a list. Field values are converted by the recordset that the database
/// adapters share.
class MemoryDatabase final : public Connection {
public:
    using Line = std::map<std::string, Variant>;

    /// The lines that were written, by the names of the columns with a value.
    [[nodiscard]] const std::vector<Line>& lines() const { return table_->lines; }
    /// The number of statements on all sessions.
    [[nodiscard]] std::size_t statements() const { return table_->statements; }

    void Open(const std::string& /*connectionString*/) override {}
    void Close() override {}
    [[nodiscard]] ObjectState State() const override { return ObjectState::Open; }
    [[nodiscard]] std::string ConnectionString() const override { return "memory"; }
    std::shared_ptr<Recordset> Execute(const std::string& /*commandText*/) override {
        ++table_->statements;
        return CreateRecordset();
    }
    [[nodiscard]] std::shared_ptr<Recordset> CreateRecordset() override {
        return std::make_shared<shared::ClientRecordset>(std::make_shared<Backend>(table_));
    }
    void BeginTrans() override {}
    void CommitTrans() override {}
    void RollbackTrans() override {}

private:
    struct Table {
        std::shared_ptr<const shared::ColumnList> columns = std::make_shared<const shared::ColumnList>(lineColumns());
        std::vector<Line> lines;
        std::size_t statements = 0;
    };

    class Writer final : public shared::RowWriter {
    public:
        explicit Writer(std::shared_ptr<Table> table) : table_(std::move(table)) {}
        void insert(const std::vector<shared::Change>& changes) override {
            Line line;
            for (const shared::Change& change : changes) {
                line[(*table_->columns)[change.column].name] = change.value;
            }
            table_->lines.push_back(std::move(line));
        }
        void update(const shared::RowSet& /*rows*/, std::size_t /*row*/,
                    const std::vector<shared::Change>& /*changes*/) override {
            raisePlatformError(shared::DatabaseReason::recordsetReadOnly);
        }

    private:
        std::shared_ptr<Table> table_;
    };

    class Runner final : public shared::Runner {
    public:
        explicit Runner(std::shared_ptr<Table> table) : table_(std::move(table)) {}
        shared::Result run(const std::string& /*statement*/, bool /*updatable*/) override {
            ++table_->statements;
            return {std::make_unique<shared::RowSet>(table_->columns), std::make_shared<Writer>(table_)};
        }

    private:
        std::shared_ptr<Table> table_;
    };

    class Backend final : public shared::Backend {
    public:
        explicit Backend(std::shared_ptr<Table> table) : table_(std::move(table)) {}
        std::shared_ptr<shared::Runner> runner(Connection& /*connection*/) override {
            return std::make_shared<Runner>(table_);
        }
        std::shared_ptr<shared::Runner> runner(const std::string& /*connectionString*/) override {
            return std::make_shared<Runner>(table_);
        }

    private:
        std::shared_ptr<Table> table_;
    };

    static std::vector<shared::Column> lineColumns() {
        using shared::ColumnType;
        return {{"inid", ColumnType::int16, 0},       {"idoc", ColumnType::int16, 0},
                {"cdigest", ColumnType::text, 300},   {"ccode", ColumnType::text, 40},
                {"cexch_name", ColumnType::text, 20}, {"md", ColumnType::money, 0},
                {"mc", ColumnType::money, 0},         {"md_f", ColumnType::money, 0},
                {"mc_f", ColumnType::money, 0},       {"nd_s", ColumnType::real, 0},
                {"nc_s", ColumnType::real, 0},        {"dt_date", ColumnType::date, 0},
                {"citem_class", ColumnType::text, 2}, {"coutno_id", ColumnType::text, 0},
                {"cDefine4", ColumnType::date, 0},    {"cDefine5", ColumnType::int32, 0}};
    }

    std::shared_ptr<Table> table_ = std::make_shared<Table>();
};

} // namespace z7::cashflow::fuzz
