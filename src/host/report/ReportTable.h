#pragma once

#include "host/terminal/TextTable.h"
#include "workbench/Amount.h"

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace z7::cashflow::host {

/// A table that can be shown on a terminal and written as CSV. Cells are texts or amounts; amounts are
/// right-aligned with thousands separators on a terminal, and plain numbers in CSV.
class ReportTable {
public:
    using Cell = std::variant<std::string, workbench::Amount>;
    struct Column {
        std::string heading;
        bool amounts = false; ///< right-aligned cells: amounts, or numbers as text
        bool shrinks = false; ///< long texts may be cut on a narrow terminal
    };

    explicit ReportTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// Adds a record with one cell for each column.
    void add(std::vector<Cell> cells) { records_.push_back(std::move(cells)); }
    [[nodiscard]] bool empty() const noexcept { return records_.empty(); }

    [[nodiscard]] TextTable forTerminal() const;
    /// The lines of the table for a terminal of the given width, each with a line break; 0 for a file or a
    /// pipe.
    [[nodiscard]] std::string text(std::size_t terminalColumns) const;
    /// A line of headings and one line per record, separated by commas as spreadsheets read them (RFC 4180, but
    /// lines end in LF).
    [[nodiscard]] std::string csv() const;

private:
    std::vector<Column> columns_;
    std::vector<std::vector<Cell>> records_;
};

} // namespace z7::cashflow::host
