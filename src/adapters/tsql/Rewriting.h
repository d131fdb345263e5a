#pragma once

#include "adapters/tsql/Shape.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::tsql {

/// A table or a view by the database that it lies in and its plain name.
struct TableName {
    enum class Place { account, system, temp };
    Place place = Place::account;
    std::string name;

    friend bool operator==(const TableName&, const TableName&) = default;
};

/// The name by which the embedded database knows the place: main, zqsystem, tempdb.
[[nodiscard]] std::string_view placeName(TableName::Place place) noexcept;
/// The name as it stands in a rewritten statement: main."code".
[[nodiscard]] std::string qualifiedName(const TableName& table);
/// The table that takes the rows that are inserted into a table or a view: for a view of one year the table that it
/// shows, for all else the same. The embedded database inserts through a view by a trigger, which cannot tell a column
/// that was given null from one that was left out; only the latter takes its default.
[[nodiscard]] TableName insertionTarget(const TableName& table);
/// A name in the quotes of the embedded database.
[[nodiscard]] std::string quotedName(std::string_view name);

/// The column that a literal is compared with or goes into. The first of the tables that has a column of this name is
/// meant, or the column at a position if there is no name.
struct ColumnUse {
    std::vector<TableName> tables;
    std::string column;
    int position = -1;
};

/// A literal as a parameter of a rewritten statement. Its number there is its place in Step::parameters, from 1.
struct Parameter {
    enum class Use { plain, compare, assign };
    int literal = 0;       ///< which of the shape's literals it is
    bool negative = false; ///< a minus stood before it
    Use use = Use::plain;
    ColumnUse column; ///< where use is not plain
};

/// A column of a query's result as far as the text tells about it.
struct ResultItem {
    bool star = false;    ///< stands for all columns of a table
    bool unnamed = false; ///< an expression that was given no name
    std::string castType; ///< the type that the expression is cast to, in lower case; else empty
    int parameter = -1;   ///< the parameter, if the item is a bare literal
};

/// One statement of the embedded database.
struct Step {
    enum class Kind {
        query,     ///< gives rows
        change,    ///< insert, update or delete
        drop,      ///< drops a table
        queryInto, ///< the query's rows go into a new table of the name in "target"
        guard      ///< a query whose having rows decides whether the next step runs
    };
    Kind kind = Kind::query;
    std::string sql;
    std::vector<Parameter> parameters;
    std::vector<ResultItem> items; ///< of a query
    std::vector<TableName> tables; ///< all that the statement names
    TableName target;              ///< of queryInto, drop and change; of a query that can be written, its one table
    bool writable = false;         ///< a query over one table, whose records can be written
    bool runNextIfFound = false;   ///< of a guard
};

/// A batch in the embedded database's dialect.
struct Rewriting {
    std::vector<Step> steps;
    /// Literals that are part of the rewritten text, such as the 20 of nvarchar(20): a statement of the same shape with
    /// another value there has another rewriting.
    std::vector<int> inlined;
};

/// Rewrites a statement, or a batch of several, by its syntax. Error 102 quotes the token that is not understood.
[[nodiscard]] Rewriting rewrite(std::string_view statement);

/// What the text of a query tells about a column of its result, or null if its items cannot be counted.
[[nodiscard]] const ResultItem* itemOf(const std::vector<ResultItem>& items, std::size_t column, std::size_t columns);

} // namespace z7::cashflow::tsql
