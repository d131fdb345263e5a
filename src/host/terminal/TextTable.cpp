#include "host/terminal/TextTable.h"

#include "adapters/terminal/printable.h"

#include <algorithm>

namespace z7::cashflow::host {

namespace {

constexpr std::string_view ellipsis = "…";

std::string shortened(const std::string& cell, std::size_t mostColumns) {
    std::string text = terminal::printable(cell);
    if (mostColumns == 0 || terminal::displayWidth(text) <= mostColumns) {
        return text;
    }
    std::string cut(terminal::fitToWidth(text, mostColumns - 1));
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
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = shortened(cells[i], columns_[i].mostColumns);
    }
    records_.push_back(std::move(cells));
}

std::vector<std::string> TextTable::lines() const {
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        std::size_t width = terminal::displayWidth(columns_[i].heading);
        for (const auto& record : records_) {
            width = std::max(width, terminal::displayWidth(record[i]));
        }
        widths.push_back(width);
    }
    const auto joined = [&](const auto& cellOf) {
        std::string line;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const std::string& cell = cellOf(i);
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
