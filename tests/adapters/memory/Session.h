#pragma once

#include "adapters/shared/session/Session.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::memory {

/// A table: its columns, and its records with a value for each of them.
struct Table {
    std::shared_ptr<const shared::ColumnList> columns;
    std::vector<std::vector<Variant>> records;
};

/// The tables of a database by their names in lower case. All sessions share them.
using Tables = std::map<std::string, Table>;

/// One session on tables in memory. It knows three statements: select * from TABLE, select ... into NEW from TABLE,
/// which makes an empty table with the columns of the other one, and drop table TABLE.
class Session final : public shared::Session, public std::enable_shared_from_this<Session> {
public:
    Session(int number, std::shared_ptr<Tables> tables, std::shared_ptr<const shared::Observers> observers);

    shared::Result run(const std::string& statement, bool updatable) override;
    void close() noexcept override;
    [[nodiscard]] int number() const noexcept override { return number_; }
    void begin() override;
    void commit() override;
    void rollback() override;
    [[nodiscard]] bool inTransaction() const noexcept override { return before_.has_value(); }
    [[nodiscard]] bool isIdle() const noexcept override { return tables_ != nullptr && !inTransaction(); }

    /// The table of a name in any letter case. Error 3704 if the session is closed, 208 if there is no such table.
    [[nodiscard]] Table& table(const std::string& name);

private:
    [[nodiscard]] shared::Result read(const std::string& name, bool updatable);
    void create(const std::string& name, const Table& model);
    void drop(const std::string& name);

    int number_;
    std::shared_ptr<Tables> tables_; ///< nothing once the session is closed
    std::shared_ptr<const shared::Observers> observers_;
    std::optional<Tables> before_; ///< what a rollback puts back; nothing outside a transaction
};

} // namespace z7::cashflow::memory
