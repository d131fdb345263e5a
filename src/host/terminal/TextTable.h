#pragma once

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A table for people: a line of headings, a rule, and one line per record, aligned for a terminal on which wide
/// characters take two columns. Control characters in cells are replaced as they are added.
class TextTable {
public:
    /// Horizontal alignment of a column's cells.
    enum class Align { left, right };
    struct Column {
        std::string heading;
        Align align = Align::left;
        bool shrinks = false; ///< on a terminal that is too narrow, long cells are cut and end in an ellipsis
    };

    explicit TextTable(std::vector<Column> columns);

    /// Adds a record. Missing cells are empty; excess cells are ignored.
    void add(std::vector<std::string> cells);
    [[nodiscard]] bool empty() const noexcept { return records_.empty(); }

    /// The lines of the table without line breaks and trailing blanks, for a terminal of the given width; 0 for
    /// a file or a pipe, where no cell is cut. A table may remain wider than the terminal, which then wraps its
    /// lines.
    [[nodiscard]] std::vector<std::string> lines(std::size_t terminalColumns = 0) const;

private:
    [[nodiscard]] std::vector<std::size_t> widths(std::size_t terminalColumns) const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> records_;
};

} // namespace z7::cashflow::host
