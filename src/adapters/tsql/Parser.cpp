#include "adapters/tsql/Parser.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <utility>

namespace z7::cashflow::tsql {
namespace {

constexpr std::size_t longestName = 128;
constexpr std::size_t mostParameters = 30000;

/// Words that can be names only in brackets.
constexpr auto reservedWords = std::to_array<std::string_view>(
    {"all",      "alter",    "and",      "any",     "as",     "asc",   "begin",   "between", "by",
     "case",     "cast",     "coalesce", "convert", "create", "cross", "declare", "default", "delete",
     "desc",     "distinct", "drop",     "else",    "end",    "exec",  "execute", "exists",  "for",
     "from",     "full",     "group",    "having",  "if",     "in",    "inner",   "insert",  "into",
     "is",       "join",     "left",     "like",    "merge",  "not",   "null",    "on",      "or",
     "order",    "outer",    "pivot",    "right",   "select", "set",   "table",   "then",    "top",
     "truncate", "union",    "unique",   "update",  "values", "when",  "where",   "with"});
static_assert(std::is_sorted(reservedWords.begin(), reservedWords.end()));

bool isReserved(std::string_view lower) {
    return std::binary_search(reservedWords.begin(), reservedWords.end(), lower);
}

std::string unquoted(std::string_view quoted) {
    const char close = quoted.back();
    std::string name;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        name += quoted[i];
        if (quoted[i] == close) {
            ++i;
        }
    }
    return name;
}

} // namespace

Rewriting Parser::parse() {
    while (takeSymbol(";")) {
    }
    if (token().kind == Token::Kind::end) {
        raiseSyntaxError({});
    }
    while (token().kind != Token::Kind::end) {
        parseStatement();
        while (takeSymbol(";")) {
        }
    }
    std::sort(result_.inlined.begin(), result_.inlined.end());
    return std::move(result_);
}

const Token& Parser::token(std::size_t ahead) const {
    return source_.tokens[std::min(at_ + ahead, source_.tokens.size() - 1)];
}

bool Parser::isWord(std::string_view lower, std::size_t ahead) const {
    return token(ahead).kind == Token::Kind::identifier && token(ahead).lower == lower;
}

bool Parser::isSymbol(std::string_view symbol, std::size_t ahead) const {
    return token(ahead).kind == Token::Kind::symbol && token(ahead).text == symbol;
}

bool Parser::isName() const {
    return token().kind == Token::Kind::quotedIdentifier ||
           (token().kind == Token::Kind::identifier && !isReserved(token().lower));
}

bool Parser::takeWord(std::string_view lower) {
    const bool found = isWord(lower);
    at_ += found ? 1 : 0;
    return found;
}

bool Parser::takeSymbol(std::string_view symbol) {
    const bool found = isSymbol(symbol);
    at_ += found ? 1 : 0;
    return found;
}

void Parser::expectWord(std::string_view lower) {
    if (!takeWord(lower)) {
        refuse();
    }
}

void Parser::expectSymbol(std::string_view symbol) {
    if (!takeSymbol(symbol)) {
        refuse();
    }
}

void Parser::refuse() const { raiseSyntaxError(token().text); }

std::string Parser::takeName() {
    if (!isName()) {
        refuse();
    }
    const Token& name = token();
    std::string text = name.kind == Token::Kind::quotedIdentifier ? unquoted(name.text) : std::string(name.text);
    const bool special = name.kind == Token::Kind::identifier && text.find_first_of("@#$") == 0;
    if (special || text.empty() || characterCount(text) > longestName) {
        refuse(); // variables, temporary tables of one session and the like are not supported
    }
    ++at_;
    return text;
}

Parser::DottedName Parser::takeDottedName() {
    DottedName name;
    const char* begin = token().text.data();
    name.parts.push_back(takeName());
    while (takeSymbol(".")) {
        if (isSymbol(".")) { // "tempdb..X": the owner is left out
            name.parts.emplace_back();
            continue;
        }
        name.parts.push_back(takeName());
    }
    const std::string_view last = source_.tokens[at_ - 1].text;
    name.text = std::string_view(begin, static_cast<std::size_t>(last.data() + last.size() - begin));
    if (name.parts.size() > 4) {
        raiseSyntaxError(name.text);
    }
    return name;
}

TableName Parser::tableOf(const DottedName& name) {
    const std::size_t count = name.parts.size();
    const std::string owner = count > 1 ? asciiLower(name.parts[count - 2]) : std::string();
    const bool ownerLeftOut = count > 1 && owner.empty();
    if (count > 3 || (count == 2 && ownerLeftOut) || (!owner.empty() && owner != "dbo")) {
        raiseError(TsqlReason::objectUnknown, {std::string(name.text)}, "42S02");
    }
    TableName table{TableName::Place::account, name.parts.back()};
    if (count == 3) {
        const std::string database = asciiLower(name.parts.front());
        if (database == "tempdb") {
            table.place = TableName::Place::temp;
        } else if (database == "zqsystem") {
            table.place = TableName::Place::system;
        } else {
            raiseError(TsqlReason::databaseUnknown, {name.parts.front()}, "08004");
        }
    }
    result_.steps.back().tables.push_back(table);
    return table;
}

std::optional<std::string> Parser::takeAlias() {
    if (takeWord("as") || isName()) {
        return takeName();
    }
    return std::nullopt;
}

std::string Parser::takeInlinedNumber() {
    if (token().kind != Token::Kind::literal) {
        refuse();
    }
    const int index = token().literal;
    const Literal& literal = source_.literals[static_cast<std::size_t>(index)];
    const bool digits = literal.body.find_first_not_of("0123456789") == std::string_view::npos;
    if (literal.kind != Literal::Kind::number || !digits || literal.body.size() > 9) {
        refuse();
    }
    result_.inlined.push_back(index);
    ++at_;
    return std::string(literal.body);
}

int Parser::addParameter(int literal, bool negative) {
    std::vector<Parameter>& parameters = result_.steps.back().parameters;
    if (parameters.size() >= mostParameters) {
        raiseError(TsqlReason::tooManyValues, {std::to_string(mostParameters)});
    }
    Parameter parameter;
    parameter.literal = literal;
    parameter.negative = negative;
    parameters.push_back(std::move(parameter));
    write("?" + std::to_string(parameters.size()));
    return static_cast<int>(parameters.size()) - 1;
}

void Parser::useFor(int parameter, Parameter::Use use, ColumnUse column) {
    Parameter& target = result_.steps.back().parameters[static_cast<std::size_t>(parameter)];
    target.use = use;
    target.column = std::move(column);
}

void Parser::resolveUses() {
    for (const PendingUse& use : pending_) {
        ColumnUse column;
        column.column = use.column;
        for (int scope = use.scope; scope >= 0; scope = scopes_[static_cast<std::size_t>(scope)].outer) {
            for (const Source& source : scopes_[static_cast<std::size_t>(scope)].sources) {
                if (use.qualifier.empty() || source.alias == use.qualifier) {
                    column.tables.insert(column.tables.end(), source.tables.begin(), source.tables.end());
                }
            }
        }
        useFor(use.parameter, Parameter::Use::compare, std::move(column));
    }
    pending_.clear();
}

void Parser::beginStep(Step::Kind kind) {
    result_.steps.emplace_back().kind = kind;
    out_.clear();
    scopes_.clear();
    scope_ = -1;
}

void Parser::finishStep() {
    resolveUses();
    result_.steps.back().sql = std::move(out_);
    out_.clear();
}

} // namespace z7::cashflow::tsql
