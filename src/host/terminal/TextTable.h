#pragma once

#include <string>
#include <vector>

namespace z7::cashflow::host {

/// A table for people: a line of headings, a rule, and a line per record, with columns aligned on a terminal that shows wide
/// characters on two columns. Cells are made safe for a terminal as they are added.
class TextTable {
public:
    /// How a column's cells stand in it.
    enum class Align { left, right };
    struct Column {
        std::string heading;
        Align align = Align::left;
        std::size_t mostColumns = 0; ///< longer cells are cut and end in an ellipsis; 0 for no limit
    };

    explicit TextTable(std::vector<Column> columns);

    /// Adds a record. Missing cells are empty; cells beyond the columns are left out.
    void add(std::vector<std::string> cells);
    [[nodiscard]] bool empty() const noexcept { return records_.empty(); }

    /// The lines of the table, each without a line break and without blanks at its end.
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> records_;
};

} // namespace z7::cashflow::host
