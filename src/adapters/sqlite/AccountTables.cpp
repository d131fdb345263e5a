#include "adapters/sqlite/AccountTables.h"

#include "adapters/shared/loading/TableLoader.h"
#include "adapters/sqlite/Catalogue.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/Session.h"
#include "adapters/sqlite/databaseError.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/conversions.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace z7::cashflow::sqlite {
namespace {

/// The databases in which a table may be, in search order, and its plain name.
std::vector<tsql::TableName> placesOf(const std::string& table) {
    using Place = tsql::TableName::Place;
    const std::string lower = asciiLower(table);
    for (const auto& [prefix, place] : {std::pair<std::string_view, Place>{"tempdb..", Place::temp},
                                        std::pair<std::string_view, Place>{"zqsystem..", Place::system}}) {
        if (lower.starts_with(prefix)) {
            return {{place, table.substr(prefix.size())}};
        }
    }
    return {{Place::account, table}, {Place::system, table}};
}

struct FoundTable {
    tsql::TableName name;
    std::shared_ptr<const TableShape> shape;
};

FoundTable findTable(Session& session, const std::string& table) {
    for (const tsql::TableName& name : placesOf(table)) {
        if (name.place == tsql::TableName::Place::temp) {
            session.useTempDatabase();
        }
        auto shape = session.catalogue().table(name);
        if (!shape->columns.empty()) {
            return {name, std::move(shape)};
        }
    }
    tsql::raiseError(tsql::TsqlReason::objectUnknown, {table}, "42S02");
}

/// The columns that SQLite names in "UNIQUE constraint failed: t.a, t.b"; none for any other text.
std::vector<std::string> keyColumnsIn(std::string_view description) {
    constexpr std::string_view beginning = "UNIQUE constraint failed: ";
    std::vector<std::string> columns;
    const std::size_t at = description.find(beginning);
    if (at == std::string_view::npos) {
        return columns;
    }
    for (std::string_view rest = description.substr(at + beginning.size()); !rest.empty();) {
        const std::size_t end = std::min(rest.find(", "), rest.size());
        const std::string_view column = rest.substr(0, end);
        columns.emplace_back(column.substr(column.rfind('.') + 1));
        rest.remove_prefix(std::min(end + 2, rest.size()));
    }
    return columns;
}

/// Rows for one table, written in the session's transaction.
class TableLoader final : public shared::TableLoader {
public:
    TableLoader(std::shared_ptr<Session> session, const FoundTable& found, const std::vector<std::string>& columns)
        : shared::TableLoader(errorSource, found.name.name, {found.shape->columns.begin(), found.shape->columns.end()},
                              columns),
          session_(std::move(session)) {
        std::string list;
        std::string places;
        for (const shared::TableColumn& column : this->columns()) {
            list += (list.empty() ? "" : ", ") + tsql::quotedName(column.name);
            places += places.empty() ? "?" : ", ?";
        }
        sql_ = "INSERT INTO " + tsql::qualifiedName(found.name) + " (" + list + ") VALUES (" + places + ")";
    }

private:
    void insert(const std::vector<Variant>& values) override {
        try {
            session_->runOwn(sql_, values);
        } catch (const Error& error) {
            if ((error.number() & 0xFF) != SQLITE_CONSTRAINT) {
                throw;
            }
            auto key = keyColumnsIn(error.description());
            if (!key.empty()) {
                refuseDoubleKey(std::move(key));
            }
            refuseRow(error);
        }
    }

    std::shared_ptr<Session> session_;
    std::string sql_;
};

} // namespace

std::vector<std::string> AccountTables::names() {
    std::vector<std::string> names;
    for (const char* place : {"main", "zqsystem"}) {
        Statement statement(connection_.session().nativeHandle(),
                            "SELECT name FROM " + std::string(place) +
                                ".sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite[_]%'");
        while (statement.step()) {
            names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
        }
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return asciiLower(a) < asciiLower(b); });
    return names;
}

std::unique_ptr<RowLoader> AccountTables::loader(const std::string& table, const std::vector<std::string>& columns) {
    Session& session = connection_.session();
    return std::make_unique<TableLoader>(session.shared_from_this(), findTable(session, table), columns);
}

} // namespace z7::cashflow::sqlite
