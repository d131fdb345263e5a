#include "adapters/tsql/Parser.h"

#include "adapters/tsql/declaredType.h"
#include "z7cashflow/support/conversions.h"

#include <utility>

namespace z7::cashflow::tsql {

// Operator precedence is that of the server: or, and, not, comparisons, + - &
// , * / %, signs.

Parser::Expression Parser::parseExpression() {
    const Nesting nesting(*this);
    Expression left = parseAnd();
    while (isWord("or")) {
        if (!left.predicate) {
            refuse();
        }
        ++at_;
        write(" OR ");
        if (!parseAnd().predicate) {
            refuse();
        }
    }
    return left;
}

Parser::Expression Parser::parseAnd() {
    Expression left = parseNot();
    while (isWord("and")) {
        if (!left.predicate) {
            refuse();
        }
        ++at_;
        write(" AND ");
        if (!parseNot().predicate) {
            refuse();
        }
    }
    return left;
}

Parser::Expression Parser::parseNot() {
    const Nesting nesting(*this);
    if (!takeWord("not")) {
        return parsePredicate();
    }
    write("NOT ");
    Expression inner = parseNot();
    if (!inner.predicate) {
        refuse();
    }
    return inner;
}

Parser::Expression Parser::parsePredicate() {
    if (takeWord("exists")) {
        expectSymbol("(");
        write("EXISTS (");
        parseUnion(false);
        expectSymbol(")");
        write(")");
        Expression found;
        found.predicate = true;
        return found;
    }
    Expression left = parseSum();
    return left.predicate ? left : parseRestOfPredicate(std::move(left));
}

Parser::Expression Parser::parseRestOfPredicate(Expression left) {
    if (token().kind == Token::Kind::symbol) {
        for (const std::string_view sign : {"=", "<>", "!=", "<=", ">=", "<", ">"}) {
            if (takeSymbol(sign)) {
                return parseComparison(left, sign == "!=" ? "<>" : sign);
            }
        }
        if (takeSymbol("!<")) {
            return parseComparison(left, ">=");
        }
        if (takeSymbol("!>")) {
            return parseComparison(left, "<=");
        }
        return left;
    }
    Expression result;
    result.predicate = true;
    if (takeWord("is")) {
        write(takeWord("not") ? " IS NOT NULL" : " IS NULL");
        expectWord("null");
        return result;
    }
    const bool negated = isWord("not") && (isWord("in", 1) || isWord("like", 1) || isWord("between", 1));
    if (negated) {
        ++at_;
        write(" NOT");
    }
    if (takeWord("in")) {
        return parseIn(left);
    }
    if (takeWord("between")) {
        return parseBetween(left);
    }
    if (takeWord("like")) {
        write(" LIKE ");
        valueOnly(parseSum());
        if (isWord("escape")) {
            refuse();
        }
        return result;
    }
    return left;
}

Parser::Expression Parser::parseComparison(const Expression& left, std::string_view sign) {
    write(" ");
    write(sign);
    write(" ");
    const Expression right = valueOnly(parseSum());
    compare(left, right);
    Expression result;
    result.predicate = true;
    return result;
}

Parser::Expression Parser::parseIn(const Expression& left) {
    expectSymbol("(");
    write(" IN (");
    if (isWord("select")) {
        parseUnion(false);
    } else {
        compare(left, valueOnly(parseSum()));
        while (takeSymbol(",")) {
            write(", ");
            compare(left, valueOnly(parseSum()));
        }
    }
    expectSymbol(")");
    write(")");
    Expression result;
    result.predicate = true;
    return result;
}

Parser::Expression Parser::parseBetween(const Expression& left) {
    write(" BETWEEN ");
    compare(left, valueOnly(parseSum()));
    expectWord("and");
    write(" AND ");
    compare(left, valueOnly(parseSum()));
    Expression result;
    result.predicate = true;
    return result;
}

Parser::Expression Parser::parseSum() {
    const std::size_t begin = out_.size();
    Expression left = parseProduct();
    while (isSymbol("+") || isSymbol("-") || isSymbol("&") || isSymbol("|")) {
        const std::string_view sign = token().text;
        valueOnly(left);
        ++at_;
        if (sign == "+" && !left.numeric) { // numbers are added, texts are joined: only the values tell
            out_.insert(begin, "z7_plus(");
            write(", ");
            valueOnly(parseProduct());
            write(")");
            left = Expression();
            continue;
        }
        write(" ");
        write(sign);
        write(" ");
        const Expression right = valueOnly(parseProduct());
        if (right.textLiteral) {
            refuse();
        }
        left = Expression();
        left.numeric = true;
    }
    return left;
}

Parser::Expression Parser::parseProduct() {
    Expression left = parseSigned();
    while (isSymbol("*") || isSymbol("/") || isSymbol("%")) {
        valueOnly(left);
        write(" ");
        write(token().text);
        write(" ");
        ++at_;
        valueOnly(parseSigned());
        left = Expression();
        left.numeric = true;
    }
    return left;
}

Parser::Expression Parser::parseSigned() {
    const Nesting nesting(*this);
    if (takeSymbol("+")) {
        return valueOnly(parseSigned());
    }
    if (!takeSymbol("-")) {
        return parsePrimary();
    }
    if (token().kind == Token::Kind::literal &&
        source_.literals[static_cast<std::size_t>(token().literal)].kind == Literal::Kind::number) {
        return parseLiteral(true);
    }
    write("- ");
    valueOnly(parseSigned());
    Expression result;
    result.numeric = true;
    return result;
}

Parser::Expression Parser::parsePrimary() {
    if (token().kind == Token::Kind::literal) {
        return parseLiteral(false);
    }
    if (isSymbol("(")) {
        return parseParenthesised();
    }
    if (takeWord("null")) {
        write("NULL");
        return {};
    }
    if (takeWord("case")) {
        return parseCase();
    }
    if (takeWord("cast")) {
        return parseCast();
    }
    return parseNameOrFunction();
}

Parser::Expression Parser::parseParenthesised() {
    expectSymbol("(");
    write("(");
    Expression inner;
    if (isWord("select")) {
        parseUnion(false);
    } else {
        inner = parseExpression();
    }
    expectSymbol(")");
    write(")");
    inner.textLiteral = false;
    inner.end = out_.size();
    return inner;
}

Parser::Expression Parser::parseLiteral(bool negative) {
    const int index = token().literal;
    ++at_;
    Expression literal;
    literal.parameter = addParameter(index, negative);
    literal.textLiteral = source_.literals[static_cast<std::size_t>(index)].kind == Literal::Kind::text;
    literal.numeric = !literal.textLiteral;
    literal.end = out_.size();
    return literal;
}

Parser::Expression Parser::parseNameOrFunction() {
    const bool wordOfFunction =
        token().kind == Token::Kind::identifier &&
        (isName() || isWord("coalesce") || isWord("convert") || isWord("left") || isWord("right"));
    if (wordOfFunction && isSymbol("(", 1)) {
        const Token& name = token();
        at_ += 2;
        return parseFunction(name.lower);
    }
    const DottedName name = takeDottedName();
    Expression column;
    column.column = name.parts.back();
    if (name.parts.size() > 1) {
        const std::string& qualifier = name.parts[name.parts.size() - 2];
        if (qualifier.empty()) {
            raiseSyntaxError(name.text);
        }
        column.qualifier = asciiLower(qualifier);
        write(quotedName(qualifier) + ".");
    }
    write(quotedName(column.column));
    column.end = out_.size();
    return column;
}

Parser::Expression Parser::parseFunction(std::string_view name) {
    struct Known {
        std::string_view name;
        std::string_view written;
        int fewest;
        int most;
        bool aggregate;
        bool numeric;
    };
    static constexpr Known known[] = {
        {"count", "count", 1, 1, true, true},     {"sum", "sum", 1, 1, true, true},
        {"min", "min", 1, 1, true, false},        {"max", "max", 1, 1, true, false},
        {"isnull", "ifnull", 2, 2, false, false}, {"coalesce", "coalesce", 2, 100, false, false},
        {"abs", "abs", 1, 1, false, true},        {"len", "z7_len", 1, 1, false, true},
        {"ltrim", "ltrim", 1, 1, false, false},   {"rtrim", "rtrim", 1, 1, false, false},
    };
    const Known* function = nullptr;
    for (const Known& candidate : known) {
        function = candidate.name == name ? &candidate : function;
    }
    if (function == nullptr) {
        raiseError(TsqlReason::functionUnknown, {std::string(name)});
    }
    write(function->written);
    write("(");
    Expression result;
    result.numeric = function->numeric;
    if (name == "count" && takeSymbol("*")) {
        write("*");
    } else {
        if (function->aggregate && takeWord("distinct")) {
            write("DISTINCT ");
        } else if (function->aggregate) {
            takeWord("all");
        }
        int count = 0;
        do {
            write(count++ > 0 ? ", " : "");
            valueOnly(parseSum());
        } while (takeSymbol(","));
        if (count < function->fewest || count > function->most) {
            raiseError(TsqlReason::argumentCountWrong, {std::string(name), std::to_string(count)});
        }
    }
    expectSymbol(")");
    write(")");
    return result;
}

Parser::Expression Parser::parseCast() {
    expectSymbol("(");
    write("z7_cast(");
    valueOnly(parseSum());
    expectWord("as");
    Expression result;
    result.castType = parseType();
    write(", '" + result.castType + "')");
    expectSymbol(")");
    return result;
}

std::string Parser::parseType() {
    const Token& name = token();
    std::string type(name.kind == Token::Kind::identifier ? name.lower : std::string_view());
    if (!isCastType(type)) {
        raiseError(TsqlReason::typeUnknown, {std::string(name.text)});
    }
    ++at_;
    if (!takeSymbol("(")) {
        return type;
    }
    if (takeWord("max")) {
        expectSymbol(")");
        return type;
    }
    std::string width = takeInlinedNumber();
    if (takeSymbol(",")) {
        width += "," + takeInlinedNumber();
    }
    expectSymbol(")");
    return type + "(" + width + ")";
}

Parser::Expression Parser::parseCase() {
    write("CASE");
    Expression subject;
    const bool simple = !isWord("when");
    if (simple) {
        write(" ");
        subject = valueOnly(parseSum());
    }
    if (!isWord("when")) {
        refuse();
    }
    while (takeWord("when")) {
        write(" WHEN ");
        if (simple) {
            compare(subject, valueOnly(parseSum()));
        } else {
            parseCondition();
        }
        expectWord("then");
        write(" THEN ");
        valueOnly(parseSum());
    }
    if (takeWord("else")) {
        write(" ELSE ");
        valueOnly(parseSum());
    }
    expectWord("end");
    write(" END");
    return {};
}

Parser::Expression Parser::valueOnly(Expression expression) const {
    if (expression.predicate) {
        refuse();
    }
    return expression;
}

void Parser::compare(const Expression& a, const Expression& b) {
    const bool aIsLiteral = a.parameter >= 0;
    const bool bIsLiteral = b.parameter >= 0;
    if (a.isColumn() && bIsLiteral) {
        pending_.push_back({b.parameter, scope_, a.qualifier, a.column});
    } else if (b.isColumn() && aIsLiteral) {
        pending_.push_back({a.parameter, scope_, b.qualifier, b.column});
    } else if (!a.isColumn() && !b.isColumn() && (a.textLiteral || b.textLiteral)) {
        collateLiteral(b.textLiteral ? b : a); // neither operand is a column with a collation
    }
}

void Parser::collateLiteral(const Expression& literal) { out_.insert(literal.end, " COLLATE z7_text"); }

} // namespace z7::cashflow::tsql
