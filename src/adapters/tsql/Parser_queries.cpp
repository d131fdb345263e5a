#include "adapters/tsql/Parser.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::tsql {

Parser::Query Parser::parseUnion(bool mayGoInto) {
    const Nesting nesting(*this);
    const int outer = scope_;
    Query query = parseQuery(mayGoInto);
    const int scope = scope_;
    while (isWord("union")) {
        if (!query.limit.empty() || query.into) {
            refuse();
        }
        ++at_;
        write(takeWord("all") ? " UNION ALL " : " UNION ");
        scope_ = outer;
        const Query more = parseQuery(false);
        if (!more.limit.empty()) {
            refuse();
        }
        query.tables.insert(query.tables.end(), more.tables.begin(), more.tables.end());
        query.writable = false;
    }
    scope_ = scope;
    parseOrder();
    if (!query.limit.empty()) {
        write(" LIMIT " + query.limit);
    }
    scope_ = outer;
    return query;
}

Parser::Query Parser::parseQuery(bool mayGoInto) {
    expectWord("select");
    write("SELECT ");
    openScope();
    Query query;
    query.writable = true;
    if (takeWord("distinct")) {
        write("DISTINCT ");
        query.writable = false;
    } else {
        takeWord("all");
    }
    parseTop(query);
    parseItems(query);
    if (isWord("into") && mayGoInto) {
        ++at_;
        query.into = takeTable();
        step().tables.pop_back(); // it does not exist yet
    }
    if (takeWord("from")) {
        parseFrom(query);
    } else {
        query.writable = false;
    }
    if (takeWord("where")) {
        write(" WHERE ");
        parseCondition();
    }
    parseGroup(query);
    return query;
}

void Parser::parseTop(Query& query) {
    if (!takeWord("top")) {
        return;
    }
    const bool bracketed = takeSymbol("(");
    if (token().kind != Token::Kind::literal ||
        source_.literals[static_cast<std::size_t>(token().literal)].kind != Literal::Kind::number) {
        refuse();
    }
    const int literal = token().literal;
    ++at_;
    query.limit = captured([&] { addParameter(literal, false); });
    if (bracketed) {
        expectSymbol(")");
    }
    if (isWord("percent") || isWord("with")) {
        refuse();
    }
}

void Parser::parseItems(Query& query) {
    do {
        write(query.items.empty() ? "" : ", ");
        bool bare = false;
        query.items.push_back(parseItem(bare));
        query.writable = query.writable && bare;
    } while (takeSymbol(","));
}

ResultItem Parser::parseItem(bool& bare) {
    ResultItem item;
    if (takeSymbol("*")) {
        write("*");
        item.star = bare = true;
        return item;
    }
    std::size_t ahead = 0;
    while (token(ahead).kind == Token::Kind::identifier || token(ahead).kind == Token::Kind::quotedIdentifier) {
        if (!isSymbol(".", ahead + 1)) {
            break;
        }
        ahead += isSymbol(".", ahead + 2) ? 3 : 2;
    }
    if (ahead > 0 && isSymbol("*", ahead)) { // table.*
        const std::size_t end = at_ + ahead;
        std::string table = takeName();
        while (at_ + 1 < end) {
            if (!takeSymbol(".")) {
                table = takeName();
            }
        }
        at_ = end + 1;
        write(quotedName(table) + ".*");
        item.star = bare = true;
        return item;
    }
    const Expression value = valueOnly(parseSum());
    item.castType = value.castType;
    item.parameter = value.parameter;
    item.unnamed = !value.isColumn();
    bare = value.isColumn();
    if (const auto alias = takeAlias()) {
        write(" AS " + quotedName(*alias));
        item.unnamed = false;
    }
    return item;
}

void Parser::parseFrom(Query& query) {
    write(" FROM ");
    parseSource(query);
    bool more = true;
    while (more) {
        if (takeSymbol(",")) {
            write(", ");
            parseSource(query);
            query.writable = false;
        } else {
            more = parseJoin(query);
        }
    }
}

bool Parser::parseJoin(Query& query) {
    std::string_view join = " JOIN ";
    if (takeWord("inner")) {
        expectWord("join");
    } else if (takeWord("cross")) {
        expectWord("join");
        join = " CROSS JOIN ";
    } else if (isWord("left") || isWord("right") || isWord("full")) {
        join = isWord("left") ? " LEFT JOIN " : isWord("right") ? " RIGHT JOIN " : " FULL JOIN ";
        ++at_;
        takeWord("outer");
        expectWord("join");
    } else if (!takeWord("join")) {
        return false;
    }
    write(join);
    query.writable = false;
    parseSource(query);
    if (join != " CROSS JOIN ") {
        expectWord("on");
        write(" ON ");
        parseCondition();
    }
    return true;
}

void Parser::parseSource(Query& query) {
    if (takeSymbol("(")) {
        write("(");
        if (!isWord("select")) {
            refuse();
        }
        const Query inner = parseUnion(false);
        expectSymbol(")");
        const auto alias = takeAlias();
        if (!alias) {
            refuse(); // the server requires a name for it
        }
        write(") AS " + quotedName(*alias));
        addSource(*alias, inner.tables);
        query.tables.insert(query.tables.end(), inner.tables.begin(), inner.tables.end());
        query.writable = false;
        return;
    }
    const TableName table = takeTable();
    write(qualifiedName(table));
    parseHints();
    const auto alias = takeAlias();
    if (alias) {
        write(" AS " + quotedName(*alias));
        parseHints();
    }
    addSource(alias ? *alias : table.name, {table});
    query.tables.push_back(table);
}

void Parser::parseHints() {
    static constexpr std::string_view known[] = {"nolock",  "readuncommitted", "readcommitted", "readpast",
                                                 "updlock", "holdlock",        "rowlock",       "tablock",
                                                 "xlock",   "tablockx"};
    const auto isHint = [this](std::size_t ahead) {
        return std::any_of(std::begin(known), std::end(known),
                           [&](std::string_view hint) { return isWord(hint, ahead); });
    };
    if (isWord("with") && isSymbol("(", 1)) {
        at_ += 2;
    } else if (isSymbol("(") && isHint(1)) {
        ++at_;
    } else {
        return;
    }
    do { // lock hints for the server; here every reader reads what was committed when it began
        if (!isHint(0)) {
            refuse();
        }
        ++at_;
    } while (takeSymbol(","));
    expectSymbol(")");
}

void Parser::parseGroup(Query& query) {
    if (takeWord("group")) {
        expectWord("by");
        write(" GROUP BY ");
        query.writable = false;
        bool first = true;
        do {
            write(first ? "" : ", ");
            first = false;
            if (valueOnly(parseSum()).parameter >= 0) {
                refuse();
            }
        } while (takeSymbol(","));
    }
    if (takeWord("having")) {
        write(" HAVING ");
        query.writable = false;
        parseCondition();
    }
}

void Parser::parseOrder() {
    if (!takeWord("order")) {
        return;
    }
    expectWord("by");
    write(" ORDER BY ");
    bool first = true;
    do {
        write(first ? "" : ", ");
        first = false;
        if (valueOnly(parseSum()).parameter >= 0) {
            raiseError(TsqlReason::orderByPosition);
        }
        if (takeWord("desc")) {
            write(" DESC");
        } else {
            takeWord("asc");
        }
    } while (takeSymbol(","));
}

void Parser::parseCondition() {
    if (!parseExpression().predicate) {
        refuse();
    }
}

void Parser::openScope() {
    Scope scope;
    scope.outer = scope_;
    scopes_.push_back(std::move(scope));
    scope_ = static_cast<int>(scopes_.size()) - 1;
}

void Parser::addSource(std::string_view alias, std::vector<TableName> tables) {
    scopes_[static_cast<std::size_t>(scope_)].sources.push_back({asciiLower(alias), std::move(tables)});
}

} // namespace z7::cashflow::tsql
