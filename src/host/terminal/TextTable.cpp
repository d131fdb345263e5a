#include "host/terminal/TextTable.h"

#include "adapters/terminal/printable.h"

#include <algorithm>

namespace z7::cashflow::host {

namespace {

constexpr std::string_view ellipsis = "…";

constexpr std::size_t gapColumns = 2;    ///< between two columns
constexpr std::size_t leastColumns = 10; ///< least width of a column that is cut

std::string fitted(const std::string& cell, std::size_t columns) {
    if (terminal::displayWidth(cell) <= columns) {
        return cell;
    }
    std::string cut(terminal::fitToWidth(cell, columns - 1));
    cut += ellipsis;
    return cut;
}

std::string withoutTrailingBlanks(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace

TextTable::TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

void TextTable::add(std::vector<std::string> cells) {
    cells.resize(columns_.size());
    for (std::string& cell : cells) {
        cell = terminal::printable(cell);
    }
    records_.push_back(std::move(cells));
}

std::vector<std::size_t> TextTable::widths(std::size_t terminalColumns) const {
    std::vector<std::size_t> widths;
    std::size_t total = 0;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        std::size_t width = terminal::displayWidth(columns_[i].heading);
        for (const auto& record : records_) {
            width = std::max(width, terminal::displayWidth(record[i]));
        }
        widths.push_back(width);
        total += width + (i == 0 ? 0 : gapColumns);
    }
    while (terminalColumns > 0 && total > terminalColumns) {
        std::size_t widest = columns_.size();
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const std::size_t least = std::max(leastColumns, terminal::displayWidth(columns_[i].heading));
            if (columns_[i].shrinks && widths[i] > least && (widest == columns_.size() || widths[i] > widths[widest])) {
                widest = i;
            }
        }
        if (widest == columns_.size()) {
            break;
        }
        --widths[widest];
        --total;
    }
    return widths;
}

std::vector<std::string> TextTable::lines(std::size_t terminalColumns) const {
    const std::vector<std::size_t> widths = this->widths(terminalColumns);
    const auto joined = [&](const auto& cellOf) {
        std::string line;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const std::string cell = fitted(cellOf(i), widths[i]);
            const std::string gap(widths[i] - terminal::displayWidth(cell), ' ');
            line += i == 0 ? "" : "  ";
            line += columns_[i].align == Align::right ? gap + cell : cell + gap;
        }
        return withoutTrailingBlanks(std::move(line));
    };
    std::vector<std::string> result;
    result.push_back(joined([&](std::size_t i) -> const std::string& { return columns_[i].heading; }));
    std::string rule;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        rule += (i == 0 ? "" : "  ") + std::string(widths[i], '-');
    }
    result.push_back(rule);
    for (const auto& record : records_) {
        result.push_back(joined([&](std::size_t i) -> const std::string& { return record[i]; }));
    }
    return result;
}

} // namespace z7::cashflow::host
