#include "host/report/ReportTable.h"

#include <string_view>

namespace z7::cashflow::host {

namespace {

using workbench::Amount;

/// A field of CSV. A text that a spreadsheet would evaluate as a formula is preceded by an apostrophe.
std::string csvField(std::string_view text) {
    std::string field(text);
    if (!text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos) {
        field.insert(0, "'");
    }
    if (field.find_first_of(",\"\n\r") == std::string::npos) {
        return field;
    }
    std::string quoted = "\"";
    for (const char c : field) {
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    }
    return quoted + "\"";
}

} // namespace

std::string ReportTable::text(std::size_t terminalColumns) const {
    std::string text;
    for (const std::string& line : forTerminal().lines(terminalColumns)) {
        text += line + "\n";
    }
    return text;
}

TextTable ReportTable::forTerminal() const {
    std::vector<TextTable::Column> columns;
    for (const Column& column : columns_) {
        columns.push_back(
            {column.heading, column.amounts ? TextTable::Align::right : TextTable::Align::left, column.shrinks});
    }
    TextTable table(std::move(columns));
    for (const auto& record : records_) {
        std::vector<std::string> cells;
        for (const Cell& cell : record) {
            const auto* amount = std::get_if<Amount>(&cell);
            cells.push_back(amount != nullptr ? amount->text() : std::get<std::string>(cell));
        }
        table.add(std::move(cells));
    }
    return table;
}

std::string ReportTable::csv() const {
    std::string text;
    for (const Column& column : columns_) {
        text += (&column == columns_.data() ? "" : ",") + csvField(column.heading);
    }
    text += "\n";
    for (const auto& record : records_) {
        for (const Cell& cell : record) {
            const auto* amount = std::get_if<Amount>(&cell);
            text += (&cell == record.data() ? "" : ",") +
                    (amount != nullptr ? amount->plainText() : csvField(std::get<std::string>(cell)));
        }
        text += "\n";
    }
    return text;
}

} // namespace z7::cashflow::host
