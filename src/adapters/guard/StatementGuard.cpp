#include "adapters/guard/StatementGuard.h"

#include "adapters/guard/libraryStatements.h"
#include "adapters/tsql/shape.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/names.h"

#include <algorithm>

namespace z7::cashflow::guard {

namespace {

// A shape writes a number as 1 and a text as 2; patterns add names of tables and the values of an insert.
constexpr char numberMark = '\x01';
constexpr char textMark = '\x02';
constexpr char tableMark = '\x03';
constexpr char valueMark = '\x04';
constexpr char temporaryMark = '\x05';

// Tables that callers name are many over time, so what is remembered is bounded.
constexpr std::size_t rememberedShapes = 1024;
constexpr std::size_t longestRemembered = 8192;

void replaceAll(std::string& text, std::string_view what, char mark) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        text.replace(at, what.size(), 1, mark);
    }
}

// The length of the name of a temporary table as the library makes it.
std::size_t temporaryTableLength(std::string_view text) {
    constexpr std::string_view stem = "tempdb..TempVoucher";
    if (!text.starts_with(stem)) {
        return 0;
    }
    return std::min(text.find_first_not_of("0123456789ABCDEF", stem.size()), text.size());
}

std::size_t numberLength(std::string_view text) {
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    return text.substr(sign).starts_with(numberMark) ? sign + 1 : 0;
}

std::size_t blanksLength(std::string_view text) { return std::min(text.find_first_not_of(' '), text.size()); }

// A number of a row goes into its insert as it was given, with the sign and the blanks that were around it.
std::size_t valueLength(std::string_view text) {
    constexpr std::string_view null = "Null";
    if (text.starts_with(null)) {
        return null.size();
    }
    if (text.starts_with(textMark)) {
        return 1;
    }
    const std::size_t before = blanksLength(text);
    const std::size_t sign = text.substr(before).starts_with('+') ? 1 : 0;
    const std::size_t number = sign + numberLength(text.substr(before + sign));
    return number == sign || text.substr(before).starts_with("+-")
               ? 0
               : before + number + blanksLength(text.substr(before + number));
}

// How much of a shape one element of a pattern takes; 0 if it does not fit.
std::size_t elementLength(char element, std::string_view shape) {
    switch (element) {
    case numberMark:
        return numberLength(shape);
    case tableMark:
        return tableNameLength(shape);
    case valueMark:
        return valueLength(shape);
    case temporaryMark:
        return temporaryTableLength(shape);
    default:
        return shape.starts_with(element) ? 1 : 0;
    }
}

// The place in a statement of a place in its shape.
std::size_t placeInStatement(std::string_view statement, const tsql::Shape& shape, std::size_t agreed) {
    std::size_t place = agreed;
    std::size_t literal = 0;
    for (std::size_t at = 0; at < agreed && at < shape.key.size() && literal < shape.literals.size(); ++at) {
        if (shape.key[at] == numberMark || shape.key[at] == textMark) {
            place += shape.literals[literal++].source.size() - 1;
        }
    }
    return std::min(place, statement.size());
}

// The shape of a statement. One whose text or comment does not end was changed by a value as well.
tsql::Shape shapeToJudge(std::string_view statement) {
    try {
        return tsql::shapeOf(statement);
    } catch (const Error& error) {
        throw Error("Z7CashFlow", {Reason::statementRefused, {error.description()}});
    }
}

} // namespace

StatementGuard::StatementGuard() {
    for (const std::string& sample : libraryStatements()) {
        std::string pattern = tsql::shapeOf(sample).key;
        replaceAll(pattern, tablePlaceholder, tableMark);
        replaceAll(pattern, valuePlaceholder, valueMark);
        replaceAll(pattern, temporaryPlaceholder, temporaryMark);
        patterns_.push_back(std::move(pattern));
    }
}

StatementGuard::Match StatementGuard::match(std::string_view pattern, std::string_view shape) {
    std::size_t at = 0;
    for (const char element : pattern) {
        const std::size_t length = elementLength(element, shape.substr(at));
        if (length == 0) {
            return {false, at};
        }
        at += length;
    }
    return {at == shape.size(), at};
}

void StatementGuard::remember(const std::string& shape) {
    if (shape.size() > longestRemembered) {
        return;
    }
    if (passed_.size() >= rememberedShapes) {
        passed_.clear();
    }
    passed_.insert(shape);
}

void StatementGuard::check(std::string_view statement) {
    const tsql::Shape shape = shapeToJudge(statement);
    if (passed_.count(shape.key) != 0) {
        return;
    }
    std::size_t agreed = 0;
    for (const std::string& pattern : patterns_) {
        const Match result = match(pattern, shape.key);
        if (result.whole) {
            remember(shape.key);
            return;
        }
        agreed = std::max(agreed, result.agreed);
    }
    constexpr std::size_t shownCharacters = 60;
    const std::size_t place = placeInStatement(statement, shape, agreed);
    throw Error("Z7CashFlow",
                {Reason::statementRefused, {std::string(leftCharacters(statement.substr(place), shownCharacters))}});
}

} // namespace z7::cashflow::guard
