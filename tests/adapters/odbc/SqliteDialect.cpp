#include "adapters/odbc/SqliteDialect.h"

#include "adapters/tsql/declaredType.h"
#include "adapters/tsql/literalValue.h"
#include "adapters/tsql/transaction.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow::odbc {
namespace {

using Place = tsql::TableName::Place;

constexpr std::size_t mostTables = 256;

void correctByItems(const tsql::Step& step, std::vector<DriverColumn>& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const tsql::ResultItem* item = tsql::itemOf(step.items, i, columns.size());
        if (item == nullptr) {
            continue;
        }
        if (item->unnamed) {
            columns[i].name.clear();
        }
        if (!item->castType.empty()) {
            columns[i].typeName = item->castType;
            columns[i].table = "cast"; // it has a type of its own, as a table's column has
        }
    }
}

std::int64_t numberOf(const Fetched& fetched) {
    if (fetched.rows == nullptr || fetched.rows->rowCount() == 0) {
        return 0;
    }
    return static_cast<std::int64_t>(fetched.rows->number(0, 0).value_or(0.0));
}

tsql::TextRunner textRunner(Driver& driver) {
    const auto run = [&driver](const std::string& sql) { driver.execute(sql); };
    return {run, run};
}

/// The state that other databases report for a failure; the driver has one for all.
std::string sqlState(int number, std::string_view text, const std::string& given) {
    constexpr int busy = 5;
    constexpr int locked = 6;
    constexpr int constraint = 19;
    if (number == busy || number == locked) {
        return "HYT00";
    }
    if (number == constraint) {
        return "23000";
    }
    if (text.starts_with("no such table") || text.starts_with("no such view")) {
        return "42S02";
    }
    if (text.starts_with("no such column") || text.find("has no column named") != std::string_view::npos) {
        return "42S22";
    }
    return text.ends_with("already exists") ? "42S01" : given;
}

} // namespace

void SqliteDialect::start(Driver& driver, const ConnectionOptions& options) {
    if (options.year) {
        driver.execute("select z7_use_year(" + std::to_string(*options.year) + ")");
    }
}

Fetched SqliteDialect::run(Driver& driver, const std::string& text, bool updatable) {
    const std::shared_ptr<std::vector<KnownStep>> steps = rewritings_.stepsOf(text);
    Fetched result;
    bool guardHolds = true;
    for (KnownStep& known : *steps) {
        if (!guardHolds) {
            guardHolds = true;
            continue;
        }
        const tsql::Step& step = known.step;
        const std::vector<Variant> values = literals(driver, known);
        if (step.kind == tsql::Step::Kind::queryInto) {
            runInto(driver, step, values);
            continue;
        }
        Fetched fetched = runStep(driver, known, values);
        if (step.kind == tsql::Step::Kind::guard) {
            guardHolds = (numberOf(fetched) != 0) == step.runNextIfFound;
        } else if (step.kind == tsql::Step::Kind::query && result.rows == nullptr) {
            result = std::move(fetched);
            if (updatable && step.writable) {
                result.target = step.target;
            }
        }
    }
    return result;
}

Fetched SqliteDialect::runStep(Driver& driver, KnownStep& known, const std::vector<Variant>& values) const {
    try {
        return driver.execute(
            known.step.sql, values,
            {[&known](std::vector<DriverColumn>& columns) { correctByItems(known.step, columns); }, &known.shape});
    } catch (const Error&) {
        known.meant.reset(); // a missing table may be created before the next use
        throw;
    }
}

std::vector<shared::Column> SqliteDialect::columnsMeant(Driver& driver, const tsql::Step& step) {
    std::vector<shared::Column> columns;
    for (const tsql::Parameter& parameter : step.parameters) {
        shared::Column& meant = columns.emplace_back(shared::Column{{}, shared::ColumnType::any, 0});
        Table holder;
        const TableColumn* known =
            parameter.use == tsql::Parameter::Use::plain ? nullptr : column(driver, parameter.column, holder);
        if (known != nullptr) {
            meant = tsql::declaredColumn(known->name, known->type);
        }
    }
    return columns;
}

std::vector<Variant> SqliteDialect::literals(Driver& driver, KnownStep& known) {
    if (!known.meant) {
        known.meant = columnsMeant(driver, known.step);
    }
    std::vector<Variant> values;
    values.reserve(known.step.parameters.size());
    for (const tsql::Parameter& parameter : known.step.parameters) {
        const tsql::Literal& literal = rewritings_.literals()[static_cast<std::size_t>(parameter.literal)];
        const bool assigned = parameter.use == tsql::Parameter::Use::assign;
        values.push_back(
            stored(tsql::literalValue(literal, parameter.negative, (*known.meant)[values.size()], assigned)));
    }
    return values;
}

void SqliteDialect::runInto(Driver& driver, const tsql::Step& step, const std::vector<Variant>& values) {
    const auto correct = [&step](std::vector<DriverColumn>& columns) { correctByItems(step, columns); };
    const Fetched shape = driver.execute("SELECT * FROM (" + step.sql + ") LIMIT 0", values, {correct});
    std::vector<std::string> columns;
    for (const DriverColumn& column : shape.shape->columns) {
        columns.push_back(columnDeclaration(driver, step, column));
    }
    tsql::fillNewTable(step, columns, textRunner(driver),
                       [&](const std::string& insert) { driver.execute(insert, values); });
}

std::string SqliteDialect::columnDeclaration(Driver& driver, const tsql::Step& step, const DriverColumn& column) {
    if (column.name.empty()) {
        constexpr int nameMissing = 1038;
        throw Error(nameMissing, "ODBC", "A column of the new table has no name; give the expression an alias.",
                    "42000");
    }
    std::string text = tsql::quotedName(column.name);
    if (column.table == "cast") {
        return text + ' ' + column.typeName;
    }
    for (const tsql::TableName& source : step.tables) {
        Table holder;
        const Table& columns = table(driver, source, holder);
        const std::string lower = asciiLower(column.name);
        const auto known = std::find_if(columns.begin(), columns.end(), [&lower](const TableColumn& candidate) {
            return asciiLower(candidate.name) == lower;
        });
        if (known == columns.end() || column.table.empty()) {
            continue;
        }
        text += ' ' + known->type;
        if (tsql::declaredColumn({}, known->type).type == shared::ColumnType::text) {
            text += " COLLATE z7_text";
        }
        return known->required ? text + " NOT NULL" : text;
    }
    return text;
}

void SqliteDialect::begin(Driver& driver) { tsql::beginTransaction(textRunner(driver)); }
void SqliteDialect::commit(Driver& driver) { driver.execute("COMMIT"); }

void SqliteDialect::rollback(Driver& driver) {
    if (inTransaction(driver)) {
        driver.execute("ROLLBACK");
    }
}

bool SqliteDialect::inTransaction(Driver& driver) {
    bool begun = false;
    ignoringErrors([&] { // refused within a transaction, and there is no other way to find out
        driver.execute("BEGIN");
        begun = true;
    });
    if (begun) {
        driver.execute("ROLLBACK");
    }
    return !begun;
}

Error SqliteDialect::explained(const Error& error) const {
    std::string text = error.description();
    const std::string code = " (" + std::to_string(error.number()) + ")"; // the driver writes it behind each text
    if (text.ends_with(code)) {
        text.erase(text.size() - code.size());
    }
    return {error.number(), error.source(), text, sqlState(error.number(), text, error.sqlState())};
}

ResultColumn SqliteDialect::resultColumn(const DriverColumn& column) const {
    ResultColumn result;
    result.column = tsql::declaredColumn(column.name, column.typeName);
    if (column.table.empty()) { // an expression, whose type the driver guesses from the first row
        using shared::ColumnType;
        const bool number = result.column.type == ColumnType::int32 || result.column.type == ColumnType::real;
        result.column.type = ColumnType::any;
        result.fetchAs = number ? FetchAs::numberOrText : FetchAs::text;
        return result;
    }
    switch (result.column.type) {
    case shared::ColumnType::boolean:
    case shared::ColumnType::byte:
    case shared::ColumnType::int16:
    case shared::ColumnType::int32:
        result.fetchAs = FetchAs::whole;
        break;
    case shared::ColumnType::real:
    case shared::ColumnType::money:
        result.fetchAs = FetchAs::real;
        break;
    case shared::ColumnType::text:
        result.column.length = column.typeName.find("char") == std::string::npos ? 0 : static_cast<int>(column.size);
        break;
    case shared::ColumnType::date: // stored as texts, which the shared recordset reads as dates
    case shared::ColumnType::any:
        break;
    }
    return result;
}

std::string SqliteDialect::tableText(const tsql::TableName& table) const { return tsql::qualifiedName(table); }
std::string SqliteDialect::columnText(const std::string& name) const { return tsql::quotedName(name); }

Variant SqliteDialect::stored(const Variant& value) const {
    const Date* date = value.get<Date>();
    return date == nullptr ? value : Variant(dateText(*date));
}

std::vector<std::string> SqliteDialect::key(Driver& driver, const tsql::TableName& name,
                                            const std::vector<DriverColumn>& columns) {
    tsql::TableName base = name;
    if (!columns.empty() && !columns.front().table.empty()) {
        base.name = columns.front().table; // the table of a view
    }
    Table holder;
    Table parts = table(driver, base, holder);
    std::erase_if(parts, [](const TableColumn& column) { return column.keyPosition == 0; });
    std::sort(parts.begin(), parts.end(), [](const auto& a, const auto& b) { return a.keyPosition < b.keyPosition; });
    std::vector<std::string> names;
    for (const TableColumn& part : parts) {
        names.push_back(part.name);
    }
    return names;
}

std::int64_t SqliteDialect::change(Driver& driver, const std::string& text, const std::vector<Variant>& values) {
    // Includes changes by triggers: a view's records are changed by nothing else.
    const std::int64_t before = numberOf(driver.execute("SELECT total_changes()"));
    driver.execute(text, values);
    return numberOf(driver.execute("SELECT total_changes()")) - before;
}

const SqliteDialect::Table& SqliteDialect::table(Driver& driver, const tsql::TableName& name, Table& holder) {
    const bool keep = name.place != Place::temp;
    const std::pair key(name.place, asciiLower(name.name));
    if (const auto known = keep ? tables_.find(key) : tables_.end(); known != tables_.end()) {
        return known->second;
    }
    holder = readTable(driver, name);
    if (keep && !holder.empty() && tables_.size() < mostTables) {
        return tables_.emplace(key, std::move(holder)).first->second;
    }
    return holder;
}

SqliteDialect::Table SqliteDialect::readTable(Driver& driver, const tsql::TableName& name) const {
    const Fetched fetched = driver.execute("SELECT name, type, \"notnull\", pk FROM pragma_table_info(?, ?)",
                                           {Variant(name.name), Variant(tsql::placeName(name.place))});
    Table columns;
    const shared::RowSet& rows = *fetched.rows;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        TableColumn column;
        column.name = toTextOrEmpty(rows.value(row, 0));
        column.type = toTextOrEmpty(rows.value(row, 1));
        column.keyPosition = static_cast<int>(rows.number(row, 3).value_or(0.0));
        column.required = rows.number(row, 2).value_or(0.0) != 0.0 || column.keyPosition > 0;
        columns.push_back(std::move(column));
    }
    return columns;
}

const SqliteDialect::TableColumn* SqliteDialect::column(Driver& driver, const tsql::ColumnUse& use, Table& holder) {
    const std::string lower = asciiLower(use.column);
    for (const tsql::TableName& name : use.tables) {
        const Table& columns = table(driver, name, holder);
        const auto found = std::find_if(columns.begin(), columns.end(), [&lower](const TableColumn& candidate) {
            return asciiLower(candidate.name) == lower;
        });
        if (!use.column.empty() && found != columns.end()) {
            return &*found;
        }
        if (use.column.empty() && use.position >= 0 && use.position < static_cast<int>(columns.size())) {
            return &columns[static_cast<std::size_t>(use.position)];
        }
    }
    return nullptr;
}

} // namespace z7::cashflow::odbc
