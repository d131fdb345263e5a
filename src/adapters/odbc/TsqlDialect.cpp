#include "adapters/odbc/TsqlDialect.h"

#include "adapters/odbc/OdbcReason.h"
#include "adapters/odbc/databaseError.h"
#include "adapters/odbc/quoting.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/conversions.h"

#include <sql.h>
#include <sqlext.h>

#include <cstddef>
#include <optional>
#include <string_view>

namespace z7::cashflow::odbc {
namespace {

std::string databaseOf(const tsql::TableName& table) {
    switch (table.place) {
    case tsql::TableName::Place::system:
        return "zqsystem";
    case tsql::TableName::Place::temp:
        return "tempdb";
    case tsql::TableName::Place::account:
        break;
    }
    return {};
}

/// The single whole number that a query returns; -1 if it returns none.
std::int64_t numberOf(const Fetched& fetched) {
    if (fetched.rows == nullptr || fetched.rows->rowCount() == 0) {
        return -1;
    }
    return static_cast<std::int64_t>(fetched.rows->number(0, 0).value_or(-1.0));
}

/// Dates are read with the year first whatever the login's language; comparisons with null, division by zero and
/// texts that are too long behave according to the standard; an error ends its statement and not the host's
/// transaction; long texts are returned completely; lock waits are limited. The row proves that texts arrive
/// unchanged.
constexpr const char* sessionSettings = "set dateformat ymd "
                                        "set ansi_nulls on set ansi_padding on set ansi_warnings on "
                                        "set quoted_identifier on set concat_null_yields_null on "
                                        "set arithabort on set numeric_roundabort off "
                                        "set xact_abort off set implicit_transactions off set nocount off "
                                        "set textsize 2147483647 ";

/// The table of a view on one table, from the definition of the view; empty for any other view.
std::optional<tsql::TableName> tableBehind(const std::string& definition, const tsql::TableName& view) {
    std::optional<tsql::TableName> table;
    ignoringErrors([&] { // a definition that cannot be parsed is ignored
        const tsql::Tokens source(definition);
        const auto& tokens = source.tokens;
        for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
            const std::string_view word = tokens[i].lower;
            if (word == "join" || word == "union" || (word == "from" && table)) {
                table.reset();
                return;
            }
            if (word != "from") {
                continue;
            }
            std::size_t name = i + 1;
            while (name + 2 < tokens.size() && tokens[name + 1].text == ".") {
                name += 2; // the owner before the table's name
            }
            if (tokens[name].kind != tsql::Token::Kind::identifier || tokens[name + 1].text == ",") {
                return;
            }
            table = tsql::TableName{view.place, std::string(tokens[name].text)};
        }
    });
    return table;
}

/// The SQL states of the server's errors, for drivers that report the same one for all.
const char* sqlState(int number) {
    switch (number) {
    case 207:
        return "42S22";
    case 208:
        return "42S02";
    case 515:
    case 547:
    case 2601:
    case 2627:
        return "23000";
    case 1205:
        return "40001";
    case 1222:
        return "HYT00";
    case 2714:
        return "42S01";
    default:
        return nullptr;
    }
}

struct Mapped {
    shared::ColumnType type;
    FetchAs fetchAs;
};

Mapped mappedType(const DriverColumn& column) {
    using shared::ColumnType;
    constexpr short dateTimeOffset = -155; // the server's own type number
    switch (column.sqlType) {
    case SQL_BIT:
        return {ColumnType::boolean, FetchAs::whole};
    case SQL_TINYINT:
        return {ColumnType::byte, FetchAs::whole};
    case SQL_SMALLINT:
        return {ColumnType::int16, FetchAs::whole};
    case SQL_INTEGER:
        return {ColumnType::int32, FetchAs::whole};
    case SQL_BIGINT:
        return {ColumnType::any, FetchAs::whole};
    case SQL_DECIMAL:
    case SQL_NUMERIC: {
        const bool money = column.digits == 4 && (column.size == 19 || column.size == 10);
        return {money ? ColumnType::money : ColumnType::real, FetchAs::real};
    }
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return {ColumnType::real, FetchAs::real};
    case SQL_DATETIME:
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case dateTimeOffset:
        return {ColumnType::date, FetchAs::date};
    default:
        return {ColumnType::text, FetchAs::text};
    }
}

} // namespace

void TsqlDialect::start(Driver& driver, const ConnectionOptions& options) {
    driver.execute(sessionSettings + ("set lock_timeout " + std::to_string(options.timeout)));
    const Fetched probe = driver.execute("select unicode(N'现') as code, N'现金' as text");
    const bool asTheyAre = probe.rows != nullptr && probe.rows->rowCount() == 1 && probe.rows->number(0, 0) == 0x73B0 &&
                           probe.rows->value(0, 1) == Variant("现金");
    if (!asTheyAre) {
        throw Error(errorSource, {OdbcReason::driverNotUtf8}, "22021");
    }
    if (options.year) {
        driver.execute("exec sp_set_session_context N'iyear', " + std::to_string(*options.year));
    }
}

Fetched TsqlDialect::run(Driver& driver, const std::string& batch, bool updatable) {
    Fetched fetched = driver.execute(batch);
    if (updatable && fetched.rows != nullptr) {
        ignoringErrors([&] { // if only the server understands a text, its records cannot be written
            const tsql::Rewriting rewriting = tsql::rewrite(batch);
            if (rewriting.steps.size() == 1 && rewriting.steps.front().writable) {
                fetched.target = rewriting.steps.front().target;
            }
        });
    }
    return fetched;
}

void TsqlDialect::begin(Driver& driver) { driver.execute("begin transaction"); }
void TsqlDialect::commit(Driver& driver) { driver.execute("commit transaction"); }
void TsqlDialect::rollback(Driver& driver) { driver.execute("if @@trancount > 0 rollback transaction"); }
bool TsqlDialect::inTransaction(Driver& driver) { return numberOf(driver.execute("select @@trancount")) > 0; }

Error TsqlDialect::explained(const Error& error) const {
    const char* state = sqlState(error.number());
    if (state == nullptr && error.description().find("due to lock timeout") != std::string::npos) {
        state =
            "HYT00"; // an open-source server passes on the words of the database below it, with no number of its own
    }
    return state == nullptr ? error : Error(error.number(), error.source(), error.asCause(), state);
}

ResultColumn TsqlDialect::resultColumn(const DriverColumn& column) const {
    const Mapped mapped = mappedType(column);
    ResultColumn result;
    result.column.name = column.name;
    result.column.type = mapped.type;
    result.fetchAs = mapped.fetchAs;
    constexpr std::size_t longestBounded = 8000;
    if (mapped.type == shared::ColumnType::text && column.size <= longestBounded) {
        result.column.length = static_cast<int>(column.size);
    }
    return result;
}

std::string TsqlDialect::tableText(const tsql::TableName& table) const {
    const std::string database = databaseOf(table);
    return (database.empty() ? "" : database + "..") + columnText(table.name);
}

std::string TsqlDialect::columnText(const std::string& name) const { return serverName(name); }

std::string TsqlDialect::comparand(const Variant& value) const {
    // Drivers send times in a more precise type than that of the columns, to which the server would convert the
    // column's three-hundredths of a second.
    return value.is<Date>() ? "cast(? as datetime)" : "?";
}

std::vector<std::string> TsqlDialect::key(Driver& driver, const tsql::TableName& table,
                                          const std::vector<DriverColumn>& columns) {
    const std::string database = databaseOf(table);
    std::vector<std::string> names = driver.primaryKey(database, table.name);
    if (!names.empty()) {
        return names;
    }
    for (const DriverColumn& column : columns) {
        if (column.identity) {
            return {column.name};
        }
    }
    // A view has no key: its records are those of its table.
    const Fetched found = driver.execute("select object_definition(object_id(" + serverText(tableText(table)) + "))");
    if (found.rows != nullptr && found.rows->rowCount() > 0) {
        if (const auto base = tableBehind(toTextOrEmpty(found.rows->value(0, 0)), table)) {
            return driver.primaryKey(database, base->name);
        }
    }
    return {};
}

std::int64_t TsqlDialect::change(Driver& driver, const std::string& text, const std::vector<Variant>& values) {
    return numberOf(driver.execute(text + "; select @@rowcount as changed", values));
}

} // namespace z7::cashflow::odbc
