#pragma once

#include "adapters/odbc/Dialect.h"

namespace z7::cashflow::odbc {

/// A server that speaks Transact-SQL. Statements are sent unchanged.
class TsqlDialect final : public Dialect {
public:
    void start(Driver& driver, const ConnectionOptions& options) override;
    Fetched run(Driver& driver, const std::string& batch, bool updatable) override;
    /// Transactions are begun and ended by statements: ODBC's own manual mode would silently begin one with the
    /// next statement after each commit.
    void begin(Driver& driver) override;
    void commit(Driver& driver) override;
    void rollback(Driver& driver) override;
    [[nodiscard]] bool inTransaction(Driver& driver) override;
    [[nodiscard]] Error explained(const Error& error) const override;
    [[nodiscard]] ResultColumn resultColumn(const DriverColumn& column) const override;
    [[nodiscard]] bool needsOrigins() const noexcept override { return false; }
    [[nodiscard]] std::string tableText(const tsql::TableName& table) const override;
    [[nodiscard]] std::string columnText(const std::string& name) const override;
    [[nodiscard]] Variant stored(const Variant& value) const override { return value; }
    [[nodiscard]] std::string comparand(const Variant& value) const override;
    [[nodiscard]] std::vector<std::string> key(Driver& driver, const tsql::TableName& table,
                                               const std::vector<DriverColumn>& columns) override;
    std::int64_t change(Driver& driver, const std::string& text, const std::vector<Variant>& values) override;
};

} // namespace z7::cashflow::odbc
