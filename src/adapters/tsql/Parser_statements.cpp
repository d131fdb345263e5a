#include "adapters/tsql/Parser.h"

#include "z7cashflow/support/conversions.h"

#include <utility>

namespace z7::cashflow::tsql {

void Parser::parseStatement() {
    if (isWord("if")) {
        parseGuarded();
    } else if (isWord("select")) {
        parseSelect();
    } else if (isWord("insert")) {
        parseInsert();
    } else if (isWord("delete")) {
        parseDelete();
    } else if (isWord("update")) {
        parseUpdate();
    } else if (isWord("drop")) {
        parseDrop();
    } else {
        refuse();
    }
}

void Parser::parseGuarded() {
    beginStep(Step::Kind::guard);
    expectWord("if");
    step().runNextIfFound = !takeWord("not");
    expectWord("exists");
    expectSymbol("(");
    write("SELECT EXISTS (");
    parseUnion(false);
    expectSymbol(")");
    write(")");
    finishStep();
    const std::size_t guard = result_.steps.size();
    const Token& guarded = token();
    if (isWord("if")) {
        refuse();
    }
    parseStatement();
    if (result_.steps.size() != guard + 1) {
        raiseSyntaxError(guarded.text);
    }
}

void Parser::parseSelect() {
    beginStep(Step::Kind::query);
    Query query = parseUnion(true);
    Step& done = step();
    done.items = std::move(query.items);
    done.writable = query.writable;
    if (query.into) {
        done.kind = Step::Kind::queryInto;
        done.target = std::move(*query.into);
        done.writable = false;
    } else if (query.writable) {
        done.target = query.tables.front();
    }
    finishStep();
}

void Parser::parseInsert() {
    beginStep(Step::Kind::change);
    expectWord("insert");
    takeWord("into");
    const TableName table = insertionTarget(takeTable());
    step().target = table;
    write("INSERT INTO " + qualifiedName(table));
    std::vector<std::string> columns;
    if (takeSymbol("(")) {
        do {
            write(columns.empty() ? " (" : ", ");
            columns.push_back(takeDottedName().parts.back());
            write(quotedName(columns.back()));
        } while (takeSymbol(","));
        expectSymbol(")");
        write(")");
    }
    if (isWord("select")) {
        parseInsertedQuery(table, columns);
    } else if (columns.empty() && takeWord("default")) {
        expectWord("values");
        write(" DEFAULT VALUES");
    } else {
        parseValues(table, columns);
    }
    finishStep();
}

void Parser::parseValues(const TableName& table, const std::vector<std::string>& columns) {
    expectWord("values");
    write(" VALUES ");
    bool firstRow = true;
    do {
        expectSymbol("(");
        write(firstRow ? "(" : ", (");
        firstRow = false;
        std::size_t position = 0;
        do {
            write(position > 0 ? ", " : "");
            const Expression value = valueOnly(parseSum());
            if (value.parameter >= 0 && (columns.empty() || position < columns.size())) {
                useFor(value.parameter, Parameter::Use::assign,
                       {{table}, columns.empty() ? std::string() : columns[position], static_cast<int>(position)});
            }
            ++position;
        } while (takeSymbol(","));
        expectSymbol(")");
        write(")");
        if (!columns.empty() && position != columns.size()) {
            raiseError(position < columns.size() ? TsqlReason::valuesMissing : TsqlReason::valuesTooMany,
                       {std::to_string(columns.size()), std::to_string(position)}, "21S01");
        }
    } while (takeSymbol(","));
}

void Parser::parseInsertedQuery(const TableName& table, const std::vector<std::string>& columns) {
    write(" ");
    const Query query = parseUnion(false);
    for (std::size_t i = 0; i < query.items.size() && !query.items[i].star; ++i) {
        const int parameter = query.items[i].parameter;
        if (parameter >= 0 && (columns.empty() || i < columns.size())) {
            useFor(parameter, Parameter::Use::assign,
                   {{table}, columns.empty() ? std::string() : columns[i], static_cast<int>(i)});
        }
    }
}

void Parser::parseDelete() {
    beginStep(Step::Kind::change);
    expectWord("delete");
    takeWord("from");
    const TableName table = takeTable();
    step().target = table;
    openScope();
    addSource(table.name, {table});
    parseHints();
    write("DELETE FROM " + qualifiedName(table));
    if (takeWord("where")) {
        write(" WHERE ");
        parseCondition();
    }
    finishStep();
}

void Parser::parseUpdate() {
    beginStep(Step::Kind::change);
    expectWord("update");
    openScope();
    const DottedName name = takeDottedName();
    const std::vector<Assignment> assignments = parseAssignments();
    UpdateSources sources;
    if (takeWord("from")) {
        sources = parseUpdateSources();
    }
    const UpdateSources::Item updated = takeUpdated(name, sources);
    if (takeWord("where")) {
        sources.conditions.push_back(captured([this] { parseCondition(); }));
    }

    step().target = updated.table;
    write("UPDATE " + qualifiedName(updated.table));
    write(updated.alias.empty() ? std::string() : " AS " + quotedName(updated.alias));
    std::string_view before = " SET ";
    for (const Assignment& assignment : assignments) {
        write(before);
        write(quotedName(assignment.column) + " = " + assignment.value);
        before = ", ";
        if (assignment.parameter >= 0) {
            useFor(assignment.parameter, Parameter::Use::assign, {{updated.table}, assignment.column, -1});
        }
    }
    before = " FROM ";
    for (const UpdateSources::Item& item : sources.items) {
        write(before);
        write(qualifiedName(item.table));
        write(item.alias.empty() ? std::string() : " AS " + quotedName(item.alias));
        before = ", ";
    }
    before = " WHERE ";
    for (const std::string& condition : sources.conditions) {
        write(before);
        write(sources.conditions.size() > 1 ? "(" + condition + ")" : condition);
        before = " AND ";
    }
    finishStep();
}

std::vector<Parser::Assignment> Parser::parseAssignments() {
    expectWord("set");
    std::vector<Assignment> assignments;
    do {
        Assignment assignment;
        assignment.column = takeDottedName().parts.back();
        expectSymbol("=");
        assignment.value = captured([&] { assignment.parameter = valueOnly(parseSum()).parameter; });
        assignments.push_back(std::move(assignment));
    } while (takeSymbol(","));
    return assignments;
}

Parser::UpdateSources Parser::parseUpdateSources() {
    UpdateSources sources;
    bool joined = false;
    do {
        const TableName table = takeTable();
        parseHints();
        const auto alias = takeAlias();
        parseHints();
        addSource(alias ? *alias : table.name, {table});
        sources.items.push_back({table, alias.value_or(std::string())});
        if (joined && takeWord("on")) {
            sources.conditions.push_back(captured([this] { parseCondition(); }));
        } else if (joined) {
            refuse();
        }
        joined = isWord("join") || isWord("inner"); // an outer join cannot take part in an update here
        if (joined) {
            takeWord("inner");
            expectWord("join");
        }
    } while (joined || takeSymbol(","));
    return sources;
}

Parser::UpdateSources::Item Parser::takeUpdated(const DottedName& name, UpdateSources& sources) {
    const std::string lower = asciiLower(name.parts.back());
    const auto isUpdated = [&](const UpdateSources::Item& item, bool byAlias) {
        return byAlias ? name.parts.size() == 1 && asciiLower(item.alias) == lower
                       : asciiLower(item.table.name) == lower;
    };
    for (const bool byAlias : {true, false}) {
        std::size_t found = sources.items.size();
        for (std::size_t i = 0; i < sources.items.size(); ++i) {
            if (!isUpdated(sources.items[i], byAlias)) {
                continue;
            }
            if (found < sources.items.size()) {
                raiseError(TsqlReason::tableAmbiguous, {std::string(name.text)});
            }
            found = i;
        }
        if (found < sources.items.size()) {
            UpdateSources::Item updated = sources.items[found];
            sources.items.erase(sources.items.begin() + static_cast<std::ptrdiff_t>(found));
            return updated;
        }
    }
    const TableName table = tableOf(name);
    addSource(table.name, {table});
    return {table, {}};
}

void Parser::parseDrop() {
    expectWord("drop");
    expectWord("table");
    do {
        beginStep(Step::Kind::drop);
        const TableName table = takeTable();
        step().target = table;
        write("DROP TABLE " + qualifiedName(table));
        finishStep();
    } while (takeSymbol(","));
}

} // namespace z7::cashflow::tsql
