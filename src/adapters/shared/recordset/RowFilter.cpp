#include "adapters/shared/recordset/RowFilter.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <optional>
#include <string>
#include <system_error>

namespace z7::cashflow::shared {
namespace {

constexpr std::size_t mostIndexes = 8;

bool isBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }
bool isNameCharacter(char c) noexcept {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           (static_cast<unsigned char>(c) & 0x80U);
}

/// Parses the text of a filter; each function returns whether it found what it parses.
class FilterText {
public:
    explicit FilterText(std::string_view text) : rest_(text) {}

    void skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front())) {
            rest_.remove_prefix(1);
        }
    }
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    [[nodiscard]] bool atBlank() const { return !rest_.empty() && isBlank(rest_.front()); }

    std::string_view name() {
        if (!rest_.empty() && rest_.front() == '[') {
            const std::size_t end = rest_.find(']');
            return end == std::string_view::npos ? std::string_view() : take(end + 1).substr(1, end - 1);
        }
        std::size_t length = 0;
        while (length < rest_.size() && isNameCharacter(rest_[length])) {
            ++length;
        }
        return length > 0 && isDigit(rest_.front()) ? std::string_view() : take(length);
    }
    bool sign(char wanted) {
        if (rest_.empty() || rest_.front() != wanted) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }
    std::optional<double> number() {
        std::size_t length = 0;
        if (length < rest_.size() && (rest_[length] == '-' || rest_[length] == '+')) {
            ++length;
        }
        const std::size_t digits = length;
        while (length < rest_.size() && (isDigit(rest_[length]) || rest_[length] == '.')) {
            ++length;
        }
        const bool plus = digits > 0 && rest_.front() == '+';
        const char* first = rest_.data() + (plus ? 1 : 0);
        const char* last = rest_.data() + length;
        double value = 0.0;
        const auto [end, error] = std::from_chars(first, last, value, std::chars_format::fixed);
        if (length == digits || error != std::errc() || end != last) {
            return std::nullopt;
        }
        rest_.remove_prefix(length);
        return value;
    }
    bool joiningAnd() {
        constexpr std::string_view word = "and";
        if (rest_.size() <= word.size() || !isBlank(rest_[word.size()])) {
            return false;
        }
        for (std::size_t i = 0; i < word.size(); ++i) {
            if ((rest_[i] | 0x20) != word[i]) {
                return false;
            }
        }
        rest_.remove_prefix(word.size());
        return true;
    }

private:
    std::string_view take(std::size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    std::string_view rest_;
};

FilterCondition readCondition(FilterText& text, std::string_view criteria, const ColumnList& columns,
                              std::string& unknownColumn) {
    text.skipBlanks();
    const std::string_view name = text.name();
    text.skipBlanks();
    if (name.empty() || !text.sign('=')) {
        raisePlatformError(DatabaseReason::filterUnreadable, {shortened(criteria)});
    }
    text.skipBlanks();
    const auto number = text.number();
    if (!number) {
        raisePlatformError(DatabaseReason::filterWithoutNumber, {shortened(name), shortened(criteria)});
    }
    FilterCondition condition{columns.find(name), *number + 0.0}; // minus zero is zero
    if (condition.column < 0) {
        unknownColumn = unknownColumn.empty() ? std::string(name) : unknownColumn;
    } else if (columns[condition.column].type == ColumnType::boolean) {
        condition.number = condition.number != 0.0 ? 1.0 : 0.0;
    }
    return condition;
}

} // namespace

std::vector<FilterCondition> parseFilter(std::string_view criteria, const ColumnList& columns) {
    std::vector<FilterCondition> conditions;
    FilterText text(criteria);
    std::string unknownColumn;
    while (true) {
        conditions.push_back(readCondition(text, criteria, columns, unknownColumn));
        const bool blankFollows = text.atBlank();
        text.skipBlanks();
        if (text.atEnd()) {
            break;
        }
        if (!blankFollows || !text.joiningAnd()) {
            raisePlatformError(DatabaseReason::filterUnreadable, {shortened(criteria)});
        }
    }
    if (!unknownColumn.empty()) { // reported only if the text is a valid filter otherwise
        raisePlatformError(DatabaseReason::fieldUnknown, {unknownColumn});
    }
    std::stable_sort(conditions.begin(), conditions.end(),
                     [](const auto& a, const auto& b) { return a.column < b.column; });
    return conditions;
}

std::size_t RowFilter::KeyHash::operator()(const std::vector<double>& key) const noexcept {
    std::size_t hash = key.size();
    for (const double number : key) {
        hash = hash * 1099511628211U + std::hash<double>()(number);
        hash ^= hash >> 29U;
    }
    return hash;
}

const std::vector<std::uint32_t>& RowFilter::match(const RowSet& rows, const std::vector<FilterCondition>& conditions) {
    std::vector<int> columns;
    std::vector<double> key;
    for (const FilterCondition& condition : conditions) {
        if (columns.empty() || columns.back() != condition.column) {
            columns.push_back(condition.column);
            key.push_back(condition.number);
        } else if (key.back() != condition.number) {
            return nothing_; // one column cannot equal two numbers
        }
    }
    const Index& index = indexOf(rows, columns);
    const auto found = index.rows.find(key);
    return found == index.rows.end() ? nothing_ : found->second;
}

RowFilter::Index& RowFilter::indexOf(const RowSet& rows, const std::vector<int>& columns) {
    const auto known =
        std::find_if(indexes_.begin(), indexes_.end(), [&](const Index& index) { return index.columns == columns; });
    if (known != indexes_.end()) {
        return *known;
    }
    if (indexes_.size() >= mostIndexes) {
        indexes_.erase(indexes_.begin());
    }
    Index& index = indexes_.emplace_back();
    index.columns = columns;
    std::vector<double> key(columns.size());
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        bool complete = true;
        for (std::size_t i = 0; i < columns.size() && complete; ++i) {
            const auto number = rows.number(row, columns[i]);
            complete = number.has_value();
            key[i] = number.value_or(0.0) + 0.0;
        }
        if (complete) {
            index.rows[key].push_back(static_cast<std::uint32_t>(row));
        }
    }
    return index;
}

} // namespace z7::cashflow::shared
