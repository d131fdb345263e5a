#pragma once

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A table for people: a line of headings, a rule, and a line per record, with columns aligned on a terminal that shows
/// wide characters on two columns. Cells are made safe for a terminal as they are added.
class TextTable {
public:
    /// How a column's cells stand in it.
    enum class Align { left, right };
    struct Column {
        std::string heading;
        Align align = Align::left;
        bool shrinks =
            false; ///< on a terminal too narrow for the table its longest cells are cut and end in an ellipsis
    };

    explicit TextTable(std::vector<Column> columns);

    /// Adds a record. Missing cells are empty; cells beyond the columns are left out.
    void add(std::vector<std::string> cells);
    [[nodiscard]] bool empty() const noexcept { return records_.empty(); }

    /// The lines of the table, each without a line break and without blanks at its end, for a terminal of so many
    /// columns; 0 stands for a file or a pipe, where every cell is whole. A table may stay wider than the terminal,
    /// which then breaks its lines.
    [[nodiscard]] std::vector<std::string> lines(std::size_t terminalColumns = 0) const;

private:
    [[nodiscard]] std::vector<std::size_t> widths(std::size_t terminalColumns) const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> records_;
};

} // namespace z7::cashflow::host
