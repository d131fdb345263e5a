// Statements: under the policy a value is refused with error 10020, or it becomes exactly the one literal or name
// for which the statement has a place.

#include "adapters/tsql/tokens.h"
#include "fuzz/target.h"
#include "z7cashflow/statements/itemStatements.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/temporaryTableStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::fuzz {
namespace {

using namespace statements;

/// The values of an input, from its lines of fields.
struct Values {
    std::string table = "t";
    std::string column = "c";
    std::array<std::string, 3> texts{"x0", "x1", "x2"};
    std::array<std::string, 2> numbers{"70", "71"};
};

constexpr VoucherKey key{3, 2, -15};

using Fill = std::function<std::string(LiteralPolicy, const Values&)>;

std::string insertOf(LiteralPolicy policy, const Values& in) {
    ColumnList columns(policy, insertRow.name());
    RowValues values(policy, insertRow.name());
    columns.add(in.column);
    values.addText(in.column, in.texts[0]);
    columns.add("md");
    values.addNumber("md", in.numbers[0]);
    columns.add("mc");
    values.addNull();
    columns.add("cdept_id");
    values.addText("cdept_id", in.texts[1]);
    columns.add("md_f");
    values.addNumber("md_f", in.numbers[1]);
    columns.add("csup_id");
    values.addText("csup_id", in.texts[2]);
    return insertRow.fill(policy, in.table, columns, values);
}

std::string linesOf(LiteralPolicy policy, const Values& in) {
    ColumnList columns(policy, outsideVoucherLines.name());
    columns.addOfAccount(in.column);
    columns.add("inid");
    return outsideVoucherLines.fill(policy, columns, in.table, in.numbers[0], in.texts[0]) +
           exceptBudgetAccounts.fill(policy);
}

const std::vector<Fill>& fills() {
    static const std::vector<Fill> list{
        insertOf,
        linesOf,
        [](LiteralPolicy policy, const Values& in) { return outsideCashSum.fill(policy, in.table, in.texts[0]); },
        [](LiteralPolicy policy, const Values& in) { return cashAccount.fill(policy, in.numbers[0], in.texts[0]); },
        [](LiteralPolicy policy, const Values& in) {
            return outsideCashLine.fill(policy, in.table, in.texts[0], in.numbers[0]);
        },
        [](LiteralPolicy policy, const Values& in) {
            return xmlVoucherLineInYear.fill(policy, in.table, in.numbers[0], key, in.numbers[1]);
        },
        [](LiteralPolicy policy, const Values& in) {
            return xmlVoucherLine.fill(policy, in.table, key, in.numbers[0]);
        },
        [](LiteralPolicy policy, const Values& in) { return accountOption.fill(policy, in.texts[0], in.texts[1]); },
        [](LiteralPolicy policy, const Values& in) {
            return accountingPeriod.fill(policy, in.texts[0], in.texts[1], in.texts[2]);
        },
        [](LiteralPolicy policy, const Values& in) { return draftItem.fill(policy, in.texts[0], in.numbers[0]); },
        [](LiteralPolicy policy, const Values& in) {
            return itemTemplateOnDate.fill(policy, in.texts[0], in.numbers[0], in.texts[1], in.texts[2]);
        },
        [](LiteralPolicy policy, const Values& in) { return createVoucherTable.fill(policy, in.table, in.numbers[0]); },
        [](LiteralPolicy policy, const Values& in) { return dropReadTable.fill(policy, in.table); },
    };
    return list;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

bool hasSign(const std::string& number) { return number.starts_with('-') || number.starts_with('+'); }

/// Harmless values of the same kinds; the sign of a number is a token of its own.
Values honest(const Values& in) {
    Values list;
    for (std::size_t at = 0; at < list.numbers.size(); ++at) {
        const std::string number = trimmed(in.numbers[at]);
        list.numbers[at] = (hasSign(number) ? number.substr(0, 1) : "") + list.numbers[at];
    }
    return list;
}

/// Passes the tokens of a text to use; a finding if it cannot be split into tokens.
void requireTokens(const std::string& text, const std::function<void(const tsql::Tokens&)>& use) {
    try {
        use(tsql::Tokens(text));
    } catch (const Error& error) {
        require(false, "a statement that was filled can be read: " + error.description() + "\n" + text);
    }
}

bool isName(const std::string& text, bool ofTable) {
    bool names = true;
    requireTokens(text, [&](const tsql::Tokens& all) {
        for (const tsql::Token& token : all.tokens) {
            const bool name =
                token.kind == tsql::Token::Kind::identifier || token.kind == tsql::Token::Kind::quotedIdentifier;
            names = names && (name || token.kind == tsql::Token::Kind::end || (ofTable && token.text.starts_with('.')));
        }
    });
    return names;
}

/// The value to which a harmless literal corresponds; empty for a literal of the statement itself.
std::optional<std::string> valueAt(const tsql::Literal& literal, const Values& marks, const Values& in) {
    for (std::size_t at = 0; at < marks.texts.size(); ++at) {
        if (literal.kind == tsql::Literal::Kind::text && literal.body == marks.texts[at]) {
            return in.texts[at];
        }
    }
    for (std::size_t at = 0; at < marks.numbers.size(); ++at) {
        if (literal.kind == tsql::Literal::Kind::number && literal.body == marks.numbers[at]) {
            const std::string number = trimmed(in.numbers[at]);
            return number.substr(hasSign(number) ? 1 : 0);
        }
    }
    return std::nullopt;
}

void requireSameLiterals(const tsql::Tokens& honestTokens, const tsql::Tokens& tokens, const Values& in) {
    require(tokens.literals.size() == honestTokens.literals.size(), "each value makes one literal");
    const Values marks;
    for (std::size_t at = 0; at < tokens.literals.size(); ++at) {
        const tsql::Literal& literal = tokens.literals[at];
        const auto value = valueAt(honestTokens.literals[at], marks, in);
        require(literal.kind == honestTokens.literals[at].kind, "a text stays a text and a number a number");
        require(literal.body == (value ? std::string_view(*value) : honestTokens.literals[at].body),
                "a value arrives whole");
        require(!literal.doubledQuotes, "no quote of a value is taken for a doubled one");
    }
}

/// The tokens without the values of literals.
std::vector<std::string_view> structure(const tsql::Tokens& tokens) {
    std::vector<std::string_view> list;
    for (const tsql::Token& token : tokens.tokens) {
        list.push_back(token.kind == tsql::Token::Kind::literal ? "literal" : token.text);
    }
    return list;
}

void run(const Fill& fill, const Values& in) {
    std::string filled;
    try {
        filled = fill(LiteralPolicy::wholeLiterals, in);
    } catch (const Error& error) {
        require(error.number() == errors::statementRefused, "a refusal is error 10020");
        require(!error.description().empty() && error.description().size() < 2000, "which says briefly why");
        return;
    }
    require(filled == fill(LiteralPolicy::asGiven, in), "the policy changes no statement");
    Values sameNames = honest(in);
    sameNames.table = in.table;
    sameNames.column = in.column;
    const std::string text = fill(LiteralPolicy::wholeLiterals, sameNames);
    requireTokens(text, [&](const tsql::Tokens& honestTokens) {
        requireTokens(filled, [&](const tsql::Tokens& tokens) {
            require(structure(tokens) == structure(honestTokens), "a value changes no other part");
            requireSameLiterals(honestTokens, tokens, in);
        });
    });
    // A name for which the statement has no place does not matter.
    Values otherNames = honest(in);
    otherNames.column = in.column;
    require(fill(LiteralPolicy::asGiven, otherNames) == text || isName(in.table, true), "a table has a table's name");
    otherNames = honest(in);
    otherNames.table = in.table;
    require(fill(LiteralPolicy::asGiven, otherNames) == text || isName(in.column, false), "a column has one name");
}

Values valuesOf(std::string_view input) {
    Values in;
    const std::array<std::string*, 7> fields{&in.texts[0], &in.numbers[0], &in.table, &in.texts[1],
                                             &in.texts[2], &in.numbers[1], &in.column};
    for (std::string* field : fields) {
        const std::size_t end = std::min(input.find('\x1F'), input.size());
        if (end != 0) {
            *field = input.substr(0, end);
        }
        input.remove_prefix(std::min(end + 1, input.size()));
        if (input.empty()) {
            break;
        }
    }
    return in;
}

} // namespace
} // namespace z7::cashflow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto in = z7::cashflow::fuzz::valuesOf(z7::cashflow::fuzz::textOf(data, size));
    for (const auto& fill : z7::cashflow::fuzz::fills()) {
        z7::cashflow::fuzz::run(fill, in);
    }
    return 0;
}
