#include "dialog/RecordingGrid.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace z7::cashflow::test {

namespace {

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

} // namespace

void RecordingGrid::call(const std::string& operation) const {
    ++calls_;
    if (beforeOperation) {
        beforeOperation(operation);
    }
}

void RecordingGrid::setting(const std::string& name, const std::string& value) {
    call(name);
    journal_.push_back(name + " " + value);
}

void RecordingGrid::needRow(std::int32_t row) const {
    if (row < 0 || row >= static_cast<std::int32_t>(rows_.size())) {
        throw Error(errors::badIndex, "RecordingGrid", "no row " + std::to_string(row));
    }
}

void RecordingGrid::needCol(std::int32_t col) const {
    if (col < 0 || col >= cols_) {
        throw Error(errors::badIndex, "RecordingGrid", "no column " + std::to_string(col));
    }
}

bool RecordingGrid::beginTyping(std::int32_t row, std::int32_t col, const std::string& text) {
    needRow(row);
    needCol(col);
    EXPECT_FALSE(editor_.open) << "an editor is open";
    EXPECT_GE(row, fixedRows_) << "nobody edits a header";
    if (readOnly_ || (row != row_ && !goToLine(row))) {
        return false;
    }
    col_ = col;
    bool cancel = false;
    events_.BeforeEdit(cancel, col);
    if (cancel) {
        return false;
    }
    editor_.open = true;
    editor_.text = text;
    return true;
}

bool RecordingGrid::leaveCell() {
    EXPECT_TRUE(editor_.open) << "no editor is open";
    std::string text = editor_.text;
    std::int32_t cancel = 0;
    events_.CellValidate(text, cancel, row_, col_);
    if (cancel == 1) {
        return false;
    }
    editor_.open = false;
    rows_.at(at(row_)).at(at(col_)) = text;
    touched_.insert(at(row_));
    return true;
}

bool RecordingGrid::type(std::int32_t row, std::int32_t col, const std::string& text) {
    if (!beginTyping(row, col, text)) {
        return false;
    }
    if (leaveCell()) {
        return true;
    }
    editor_.open = false; // the user gives up with Escape
    return false;
}

void RecordingGrid::reference(std::int32_t row, std::int32_t col) {
    if (!editor_.open && !beginTyping(row, col, rows_.at(at(row)).at(at(col)))) {
        return;
    }
    std::string text = editor_.text;
    const std::string before = std::exchange(rows_.at(at(row)).at(at(col)), text);
    events_.ReferenceClick(text, row, col);
    rows_.at(at(row)).at(at(col)) = before;
    editor_.open = true; // moving the cursor to the cell being edited does not end the edit
    editor_.text = text;
}

bool RecordingGrid::validateLine(std::int32_t row) {
    std::int32_t cancel = 0;
    std::int32_t col = col_;
    events_.RowValidate(cancel, row, col);
    if (cancel == 1) {
        col_ = col;
        return false;
    }
    touched_.erase(at(row));
    return true;
}

bool RecordingGrid::goToLine(std::int32_t row) {
    needRow(row);
    if (row != row_ && touched_.count(at(row_)) != 0 && !validateLine(row_)) {
        return false;
    }
    row_ = row;
    return true;
}

void RecordingGrid::goBeyondEnd() {
    EXPECT_EQ(row_, static_cast<std::int32_t>(rows_.size()) - 1) << "not in the last line";
    events_.AppendRow();
}

std::string RecordingGrid::line(std::int32_t row) const {
    needRow(row);
    std::string text;
    for (const std::string& cell : rows_.at(at(row))) {
        text += (text.empty() && &cell == &rows_.at(at(row)).front() ? "" : "|") + cell;
    }
    return text;
}

std::string RecordingGrid::text() const {
    std::string text;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        text += at(row_) == row ? "> " : "  ";
        for (std::size_t col = 0; col < rows_[row].size(); ++col) {
            text += (col == 0 ? "" : "|") + std::string(colours_[row][col] == 0 ? "" : "*") + rows_[row][col];
        }
        text += "\n";
    }
    return text + "at " + std::to_string(row_) + "," + std::to_string(col_) + (editor_.open ? " editing" : "");
}

std::int32_t RecordingGrid::Rows() const {
    call("Rows");
    return static_cast<std::int32_t>(rows_.size());
}

void RecordingGrid::Rows(std::int32_t value) {
    call("Rows=");
    EXPECT_GE(value, fixedRows_) << "the header cannot go";
    rows_.resize(at(value), Cells(at(cols_)));
    colours_.resize(at(value), std::vector<std::int32_t>(at(cols_)));
    touched_.clear();
    if (row_ < fixedRows_ && value > fixedRows_) {
        row_ = fixedRows_;
    }
    row_ = std::max(0, std::min(row_, value - 1));
}

std::int32_t RecordingGrid::Cols() const {
    call("Cols");
    return cols_;
}

void RecordingGrid::Cols(std::int32_t value) {
    call("Cols=");
    cols_ = value;
    widths_.resize(at(value), 960);
    for (Cells& cells : rows_) {
        cells.resize(at(value));
    }
    for (auto& colours : colours_) {
        colours.resize(at(value));
    }
}

std::int32_t RecordingGrid::FixedRows() const {
    call("FixedRows");
    return fixedRows_;
}

void RecordingGrid::FixedRows(std::int32_t value) {
    setting("FixedRows", std::to_string(value));
    fixedRows_ = value;
}

std::int32_t RecordingGrid::FixedCols() const {
    call("FixedCols");
    return fixedCols_;
}

void RecordingGrid::FixedCols(std::int32_t value) {
    setting("FixedCols", std::to_string(value));
    fixedCols_ = value;
}

std::int32_t RecordingGrid::Row() const {
    call("Row");
    return row_;
}

void RecordingGrid::Row(std::int32_t value) {
    call("Row=");
    needRow(value);
    row_ = value;
    editor_.open = false;
}

std::int32_t RecordingGrid::Col() const {
    call("Col");
    return col_;
}

void RecordingGrid::Col(std::int32_t value) {
    call("Col=");
    needCol(value);
    col_ = value;
    editor_.open = false;
}

void RecordingGrid::ColSel(std::int32_t value) {
    setting("ColSel", std::to_string(value));
    EXPECT_EQ(value, col_) << "the selection is one column";
}

std::string RecordingGrid::TextMatrix(std::int32_t row, std::int32_t col) const {
    call("TextMatrix");
    needRow(row);
    needCol(col);
    return rows_.at(at(row)).at(at(col));
}

void RecordingGrid::TextMatrix(std::int32_t row, std::int32_t col, const std::string& text) {
    call("TextMatrix=");
    needRow(row);
    needCol(col);
    rows_.at(at(row)).at(at(col)) = text;
}

std::int16_t RecordingGrid::ColWidth(std::int32_t col) const {
    call("ColWidth");
    needCol(col);
    return widths_.at(at(col));
}

void RecordingGrid::ColWidth(std::int32_t col, std::int16_t twips) {
    call("ColWidth=");
    needCol(col);
    EXPECT_GE(twips, 0);
    widths_.at(at(col)) = twips;
}

void RecordingGrid::ColAlignment(std::int32_t col, std::int16_t value) {
    needCol(col);
    setting("ColAlignment " + std::to_string(col), std::to_string(value));
    EXPECT_EQ(value, 1);
}

void RecordingGrid::GridReadOnly(bool value) {
    setting("GridReadOnly", value ? "true" : "false");
    readOnly_ = value;
}

void RecordingGrid::AddItem(const std::string& text, const std::array<std::int32_t, 8>& rowColors,
                            std::optional<std::int32_t> index) {
    setting("AddItem", index ? std::to_string(*index) : "end");
    EXPECT_EQ(rowColors, (std::array<std::int32_t, 8>{0xFFFFFF, 0, 0, 0, 0, 0, 0, 0}));
    const std::size_t before = index ? at(*index) : rows_.size();
    if (index) {
        needRow(*index);
    }
    Cells cells(at(cols_));
    cells.front() = text;
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(before), std::move(cells));
    colours_.insert(colours_.begin() + static_cast<std::ptrdiff_t>(before), std::vector<std::int32_t>(at(cols_)));
    std::set<std::size_t> moved;
    for (const std::size_t row : touched_) {
        moved.insert(row >= before ? row + 1 : row);
    }
    touched_ = std::move(moved);
    touched_.insert(before);
    row_ = std::max(row_, fixedRows_);
    editor_.open = false;
}

void RecordingGrid::RemoveItem(std::int32_t row) {
    setting("RemoveItem", std::to_string(row));
    needRow(row);
    EXPECT_GE(row, fixedRows_) << "the header cannot go";
    rows_.erase(rows_.begin() + row);
    colours_.erase(colours_.begin() + row);
    std::set<std::size_t> moved;
    for (const std::size_t other : touched_) {
        if (other != at(row)) {
            moved.insert(other > at(row) ? other - 1 : other);
        }
    }
    touched_ = std::move(moved);
    row_ = std::min(row_, static_cast<std::int32_t>(rows_.size()) - 1);
    editor_.open = false;
}

void RecordingGrid::SetColumnEdit(std::int32_t col, std::int16_t maxLength, std::int32_t kind, std::int32_t style,
                                  std::optional<std::int16_t> decimals) {
    needCol(col);
    setting("SetColumnEdit", std::to_string(col) + "," + std::to_string(maxLength) + "," + std::to_string(kind) + "," +
                                 std::to_string(style) + (decimals ? "," + std::to_string(*decimals) : ""));
}

void RecordingGrid::SetDefaultColor(std::int32_t color) {
    EXPECT_EQ(cols_, 0) << "the default colour comes before the columns";
    setting("SetDefaultColor", std::to_string(color));
}

void RecordingGrid::SetCellColor(std::int32_t row, std::int32_t col, std::int32_t color) {
    call("SetCellColor");
    needRow(row);
    needCol(col);
    EXPECT_EQ(color, 0xE8E8E8);
    colours_.at(at(row)).at(at(col)) = color;
}

std::int32_t RecordingGrid::FinishEdit() {
    setting("FinishEdit", "");
    constexpr std::int32_t refused = 1;
    constexpr std::int32_t settled = 2;
    if (finishEditAnswer) {
        return *finishEditAnswer;
    }
    const bool inLine = row_ >= fixedRows_ && row_ > 0;
    const auto& account = inLine && editor_.open && col_ == 1 ? editor_.text : inLine ? rows_.at(at(row_)).at(1) : "";
    if (inLine && account.empty() && at(row_) + 1 == rows_.size()) {
        RemoveItem(row_);
        return settled;
    }
    if (editor_.open && !leaveCell()) {
        return refused;
    }
    return inLine && touched_.count(at(row_)) != 0 && !account.empty() && !validateLine(row_) ? refused : settled;
}

void RecordingGrid::SetFocus() { setting("SetFocus", ""); }

} // namespace z7::cashflow::test
