#include "z7cashflow/statements/accountAnswers.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace z7::cashflow::statements {

namespace {

/// The words of a text, including those inside its values.
struct Words {
    bool mayDoAnything = false; ///< it does not begin like a statement of the library, or runs a procedure
    bool changes = false;       ///< one of them changes tables
    bool namesTable = false;    ///< one of them is a table of accountAnswers, or a view on it
};

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

template <std::size_t N> bool isOneOf(std::string_view word, const std::array<std::string_view, N>& list) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

bool isTable(std::string_view word) {
    constexpr std::array<std::string_view, 2> views{"gl_v_cashitemdatasource", "gl_v_code"};
    return isOneOf(word, views) || std::any_of(accountAnswers.begin(), accountAnswers.end(),
                                               [word](const AccountAnswer& each) { return each.table == word; });
}

Words wordsOf(std::string_view text) {
    constexpr std::array<std::string_view, 5> usual{"select", "insert", "update", "delete", "if"};
    constexpr std::array<std::string_view, 9> changing{"insert", "update", "delete", "merge", "truncate",
                                                       "drop",   "alter",  "create", "into"};
    constexpr std::array<std::string_view, 2> procedure{"exec", "execute"};
    Words words;
    bool first = true;
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size(); at = end + 1) {
        for (end = at; end < text.size() && isWordCharacter(text[end]);) {
            ++end;
        }
        if (end > at) {
            const std::string word = asciiLower(text.substr(at, end - at));
            words.mayDoAnything = words.mayDoAnything || isOneOf(word, procedure) || (first && !isOneOf(word, usual));
            words.changes = words.changes || isOneOf(word, changing);
            words.namesTable = words.namesTable || isTable(word);
            first = false;
        }
    }
    return words;
}

} // namespace

bool isAccountAnswer(std::string_view text) {
    return std::any_of(accountAnswers.begin(), accountAnswers.end(),
                       [text](const AccountAnswer& each) { return text.starts_with(each.beginning); }) &&
           !mayChangeAccountAnswers(text, false);
}

bool mayChangeAccountAnswers(std::string_view text, bool forWriting) {
    const Words words = wordsOf(text);
    return words.mayDoAnything || (words.namesTable && (words.changes || forWriting));
}

} // namespace z7::cashflow::statements
