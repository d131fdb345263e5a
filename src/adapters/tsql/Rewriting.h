#pragma once

#include "adapters/tsql/Shape.h"
#include "z7cashflow/support/visibility.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::tsql {

/// A table or a view: its database and its plain name.
struct TableName {
    /// The account's database, the system database, the tempdb.
    enum class Place { account, system, temp };
    Place place = Place::account; ///< its database
    std::string name;             ///< without database, owner and brackets

    /// Equal if place and name are equal.
    friend bool operator==(const TableName&, const TableName&) = default;
};

/// The name of a database in the embedded database: main, zqsystem, tempdb.
[[nodiscard]] std::string_view placeName(TableName::Place place) noexcept;
/// The name in the form of a rewritten statement: main."code".
[[nodiscard]] std::string qualifiedName(const TableName& table);
/// The table into which rows of a table or view are inserted: for a view of one year its table, otherwise the same.
/// The embedded database inserts into views by triggers, which cannot distinguish an explicit null from an omitted
/// column; only the latter gets its default.
[[nodiscard]] TableName insertionTarget(const TableName& table);
/// A name in the quotes of the embedded database.
[[nodiscard]] std::string quotedName(std::string_view name);

/// The column with which a literal is compared or to which it is assigned: the first of the tables with a column of
/// this name, or the column at a position if there is no name.
struct ColumnUse {
    std::vector<TableName> tables; ///< in the order of the statement
    std::string column;            ///< its name; empty if only the position is known
    int position = -1;             ///< from 0; -1 if the name is known
};

/// A literal as a parameter of a rewritten statement. Its number is its index in Step::parameters, from 1.
struct Parameter {
    /// How it is used: by itself, in a comparison with a column, or as a new value of a column.
    enum class Use { plain, compare, assign };
    int literal = 0;       ///< index among the literals of the shape
    bool negative = false; ///< it was preceded by a minus
    Use use = Use::plain;  ///< which of them
    ColumnUse column;      ///< unless use is plain
};

/// A column of a query's result, as far as the text determines it.
struct ResultItem {
    bool star = false;    ///< all columns of a table
    bool unnamed = false; ///< an expression without a name
    std::string castType; ///< the type to which the expression is cast, in lower case; otherwise empty
    int parameter = -1;   ///< the parameter, if the item is a bare literal
};

/// One statement of the embedded database.
struct Step {
    /// What the statement does.
    enum class Kind {
        query,     ///< returns rows
        change,    ///< insert, update or delete
        drop,      ///< drops a table
        queryInto, ///< inserts the query's rows into a new table named by "target"
        guard      ///< a query; the next step runs only if it returns rows
    };
    Kind kind = Kind::query;           ///< which of them
    std::string sql;                   ///< with "?" and a number for each parameter
    std::vector<Parameter> parameters; ///< in the order of their numbers
    std::vector<ResultItem> items;     ///< of a query
    std::vector<TableName> tables;     ///< all tables that the statement names
    TableName target;                  ///< of queryInto, drop and change, and of a query whose records can be written
    bool writable = false;             ///< a query on one table, whose records can be written
    bool runNextIfFound = false;       ///< for a guard
};

/// A batch in the embedded database's dialect.
struct Rewriting {
    std::vector<Step> steps; ///< to be run in this order
    /// Literals that are part of the rewritten text, such as the 20 of nvarchar(20): a statement of the same
    /// shape with another value needs another rewriting.
    std::vector<int> inlined;
};

/// Rewrites a statement, or a batch of several. Error 102 quotes the token that is not understood.
[[nodiscard]] Rewriting rewrite(std::string_view statement);

/// What the text of a query determines about a column of its result, or a null pointer if its items cannot be
/// counted.
[[nodiscard]] const ResultItem* itemOf(const std::vector<ResultItem>& items, std::size_t column, std::size_t columns);

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
