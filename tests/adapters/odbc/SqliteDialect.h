#pragma once

#include "adapters/odbc/Dialect.h"
#include "adapters/tsql/RewritingCache.h"

#include <map>
#include <utility>

namespace z7::cashflow::odbc {

/// The embedded database used through its ODBC driver: statements are rewritten to its own dialect, and their
/// literals are bound as values of the columns to which they belong. The driver must load an extension that
/// provides the schema's functions and attaches the companions of the account's file; the year is passed to the
/// extension's function z7_use_year.
class SqliteDialect final : public Dialect {
public:
    void start(Driver& driver, const ConnectionOptions& options) override;
    Fetched run(Driver& driver, const std::string& text, bool updatable) override;
    void begin(Driver& driver) override;
    void commit(Driver& driver) override;
    void rollback(Driver& driver) override;
    [[nodiscard]] bool inTransaction(Driver& driver) override;
    [[nodiscard]] Error explained(const Error& error) const override;
    [[nodiscard]] ResultColumn resultColumn(const DriverColumn& column) const override;
    [[nodiscard]] bool needsOrigins() const noexcept override { return true; }
    [[nodiscard]] std::string tableText(const tsql::TableName& table) const override;
    [[nodiscard]] std::string columnText(const std::string& name) const override;
    [[nodiscard]] Variant stored(const Variant& value) const override;
    [[nodiscard]] std::vector<std::string> key(Driver& driver, const tsql::TableName& table,
                                               const std::vector<DriverColumn>& columns) override;
    std::int64_t change(Driver& driver, const std::string& text, const std::vector<Variant>& values) override;

private:
    /// A column of a table as declared.
    struct TableColumn {
        std::string name;
        std::string type;
        bool required = false;
        int keyPosition = 0; ///< from 1; 0 if it is not part of the key
    };
    using Table = std::vector<TableColumn>;

    /// A statement of a batch with what is known about it.
    struct KnownStep {
        tsql::Step step;
        std::optional<std::vector<shared::Column>>
            meant;                                ///< the columns of its parameters; empty until they are needed
        std::shared_ptr<const ResultShape> shape; ///< of its last result
    };
    static constexpr std::size_t mostShapes = 256;

    Fetched runStep(Driver& driver, KnownStep& known, const std::vector<Variant>& values) const;
    /// The columns of a table; those of a table that must be read each time are stored in the holder.
    [[nodiscard]] const Table& table(Driver& driver, const tsql::TableName& name, Table& holder);
    [[nodiscard]] Table readTable(Driver& driver, const tsql::TableName& name) const;
    [[nodiscard]] const TableColumn* column(Driver& driver, const tsql::ColumnUse& use, Table& holder);
    [[nodiscard]] std::vector<shared::Column> columnsMeant(Driver& driver, const tsql::Step& step);
    [[nodiscard]] std::vector<Variant> literals(Driver& driver, KnownStep& known);
    void runInto(Driver& driver, const tsql::Step& step, const std::vector<Variant>& values);
    [[nodiscard]] std::string columnDeclaration(Driver& driver, const tsql::Step& step, const DriverColumn& column);

    std::map<std::pair<tsql::TableName::Place, std::string>, Table> tables_; ///< without those of tempdb
    tsql::RewritingCache<KnownStep> rewritings_{mostShapes};
};

} // namespace z7::cashflow::odbc
