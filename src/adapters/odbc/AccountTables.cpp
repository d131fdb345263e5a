#include "adapters/odbc/AccountTables.h"

#include "adapters/odbc/accountSchema.h"
#include "adapters/odbc/databaseError.h"
#include "adapters/odbc/quoting.h"
#include "adapters/tsql/declaredType.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace z7::cashflow::odbc {
namespace {

constexpr const char* ofSystem = "zqsystem..";

bool isSystemTable(const std::string& table) {
    const std::vector<std::string> names = systemNames();
    return std::any_of(names.begin(), names.end(),
                       [&table](const std::string& name) { return asciiLower(name) == asciiLower(table); });
}

/// Whether an error means that the server refuses this row, and not all rows.
bool concernsRow(const Error& error) {
    constexpr std::array<int, 13> numbers{220, 232, 241, 242, 245, 248, 515, 547, 2601, 2627, 2628, 8115, 8152};
    return error.sqlState().starts_with("22") || error.sqlState().starts_with("23") ||
           std::find(numbers.begin(), numbers.end(), error.number()) != numbers.end();
}

} // namespace

/// A table's name in the form of a statement, and its columns.
struct AccountTables::Found {
    std::string name;
    std::string text;
    bool shared = false; ///< it is in the system database
    std::vector<shared::TableColumn> columns;
    std::string numbered; ///< the identity column; empty without one
};

namespace {

/// Loads rows into one table, by a recordset that is reopened from time to time because it keeps its records.
class ServerLoader final : public shared::TableLoader {
public:
    ServerLoader(Connection& connection, const std::string& name, std::string text, bool shared,
                 const std::vector<shared::TableColumn>& known, const std::vector<std::string>& columns)
        : shared::TableLoader(errorSource, name, known, columns), connection_(connection), text_(std::move(text)),
          shared_(shared) {
        std::string list;
        for (const shared::TableColumn& column : this->columns()) {
            list += (list.empty() ? "" : ", ") + serverName(column.name);
        }
        query_ = "select " + list + " from " + text_ + " where 1=0";
    }

private:
    void insert(const std::vector<Variant>& values) override {
        if (shared_ && isThere(values)) {
            return;
        }
        constexpr std::int64_t mostKept = 1000;
        if (records_ == nullptr || count() % mostKept == 0) {
            records_ = connection_.createRecordset();
            records_->Open(query_, &connection_, CursorType::keyset, LockType::optimistic);
        }
        try {
            records_->AddNew();
            for (std::size_t i = 0; i < values.size(); ++i) {
                records_->Fields().Item(columns()[i].name, values[i]);
            }
            records_->Update();
        } catch (const Error& error) {
            if (!concernsRow(error)) {
                throw;
            }
            refuseRow(error);
        }
    }

    [[nodiscard]] bool isThere(const std::vector<Variant>& values) {
        std::string query = "select count(*) as found from " + text_;
        const char* before = " where ";
        for (std::size_t i = 0; i < values.size(); ++i) {
            query += before + serverName(columns()[i].name);
            query += values[i].isNull() ? " is null" : " = " + serverText(toText(values[i]));
            before = " and ";
        }
        return toInt32(connection_.Execute(query)->Fields().Item(0)) > 0;
    }

    Connection& connection_;
    std::string text_;
    bool shared_;
    std::string query_;
    std::shared_ptr<Recordset> records_;
};

} // namespace

std::vector<std::string> AccountTables::names() {
    std::vector<std::string> names;
    for (const auto records = connection_.Execute("select name from sys.tables"); !records->atEnd();
         records->MoveNext()) {
        names.push_back(toText(records->Fields().Item(0)));
    }
    const std::vector<std::string> shared = systemNames();
    names.insert(names.end(), shared.begin(), shared.end());
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return asciiLower(a) < asciiLower(b); });
    return names;
}

std::unique_ptr<RowLoader> AccountTables::loader(const std::string& table, const std::vector<std::string>& columns) {
    const Found found = find(table);
    auto loader =
        std::make_unique<ServerLoader>(connection_, found.name, found.text, found.shared, found.columns, columns);
    if (!numbering_.empty()) {
        connection_.Execute("set identity_insert " + std::exchange(numbering_, {}) + " off");
    }
    if (!found.numbered.empty() && std::any_of(columns.begin(), columns.end(), [&found](const std::string& name) {
            return asciiLower(name) == asciiLower(found.numbered);
        })) {
        connection_.Execute("set identity_insert " + found.text + " on");
        numbering_ = found.text;
    }
    return loader;
}

AccountTables::Found AccountTables::find(const std::string& table) {
    Found found;
    found.name = table;
    found.shared = isSystemTable(table);
    const std::string place = found.shared ? ofSystem : "";
    found.text = place + serverName(table);
    const std::string catalogue = found.shared ? std::string(systemDatabase) + ".sys." : "sys.";
    const auto records =
        connection_.Execute("select c.name as name, t.name as type, c.max_length as length, c.is_nullable as nullable, "
                            "c.is_identity as numbered, c.default_object_id as filled from " +
                            catalogue + "columns c join " + catalogue +
                            "types t on t.user_type_id = c.user_type_id where c.object_id = object_id(" +
                            serverText(found.text) + ") order by c.column_id");
    for (; !records->atEnd(); records->MoveNext()) {
        const FieldList& fields = records->Fields();
        const std::string type = asciiLower(toText(fields.Item("type")));
        shared::TableColumn column;
        column.name = toText(fields.Item("name"));
        column.type = tsql::declaredColumn({}, type).type;
        const int bytes = toInt32(fields.Item("length")); // -1 without a bound
        if (column.type == shared::ColumnType::text && bytes > 0) {
            column.length = type.starts_with('n') ? bytes / 2 : bytes;
        }
        column.nullable = toBool(fields.Item("nullable"));
        const bool numbered = toBool(fields.Item("numbered"));
        column.hasDefault = numbered || toInt32(fields.Item("filled")) != 0;
        if (numbered) {
            found.numbered = column.name;
        }
        found.columns.push_back(std::move(column));
    }
    if (found.columns.empty()) {
        tsql::raiseError(tsql::TsqlReason::objectUnknown, {table}, "42S02");
    }
    return found;
}

} // namespace z7::cashflow::odbc
