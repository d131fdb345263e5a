#pragma once

#include "z7cashflow/ports/DialogForm.h"
#include "z7cashflow/support/Error.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::test {

/// A grid without a screen that obeys the port's rules, acts as the user, and can be written as one text. A call
/// that would make no sense on a real grid fails the test.
class RecordingGrid final : public SuperGrid {
public:
    RecordingGrid(FormEvents& events, std::vector<std::string>& journal) : events_(events), journal_(journal) {}

    // Actions of the user. An Error of an event reaches the test.
    /// Opens the editor of a cell, types a text over the old one and leaves the cell. True if the text was taken.
    bool type(std::int32_t row, std::int32_t col, const std::string& text);
    /// Opens the editor of a cell and types, without leaving it. False if the editor does not open.
    bool beginTyping(std::int32_t row, std::int32_t col, const std::string& text);
    /// Leaves the open editor. True if its text was taken.
    bool leaveCell();
    /// Presses the reference button in the editor, which is opened if necessary.
    void reference(std::int32_t row, std::int32_t col);
    /// Moves the cursor to another line. True if the current line may be left.
    bool goToLine(std::int32_t row);
    /// Moves on after the last cell of the last line.
    void goBeyondEnd();

    /// c" with ">" for the current row and "*" before a coloured cell, then "at row,col".
    [[nodiscard]] std::string text() const;
    /// The cells of a row, joined by "|".
    [[nodiscard]] std::string line(std::int32_t row) const;
    [[nodiscard]] const std::string& editorText() const { return editor_.text; }
    /// The number of operations called since the last count.
    std::size_t takeCalls() { return std::exchange(calls_, 0); }

    std::optional<std::int32_t> finishEditAnswer;            ///< overrides the port's rules
    std::function<void(const std::string&)> beforeOperation; ///< gets the name of each operation first, may raise
    std::string type_ = "SuperGrid";
    bool hasEditor = true; ///< whether the grid has created an in-place editor at all

    // The port.
    void fontName(const std::string& name) override { setting("font", name); }
    [[nodiscard]] std::string typeName() const override { return type_; }
    [[nodiscard]] std::int32_t Rows() const override;
    void Rows(std::int32_t value) override;
    [[nodiscard]] std::int32_t Cols() const override;
    void Cols(std::int32_t value) override;
    [[nodiscard]] std::int32_t FixedRows() const override;
    void FixedRows(std::int32_t value) override;
    [[nodiscard]] std::int32_t FixedCols() const override;
    void FixedCols(std::int32_t value) override;
    [[nodiscard]] std::int32_t Row() const override;
    void Row(std::int32_t value) override;
    [[nodiscard]] std::int32_t Col() const override;
    void Col(std::int32_t value) override;
    void ColSel(std::int32_t value) override;
    [[nodiscard]] std::string TextMatrix(std::int32_t row, std::int32_t col) const override;
    void TextMatrix(std::int32_t row, std::int32_t col, const std::string& text) override;
    [[nodiscard]] std::int16_t ColWidth(std::int32_t col) const override;
    void ColWidth(std::int32_t col, std::int16_t twips) override;
    void ColAlignment(std::int32_t col, std::int16_t value) override;
    void GridMode(std::int32_t value) override { setting("GridMode", std::to_string(value)); }
    void GridReadOnly(bool value) override;
    void AddItem(const std::string& text, const std::array<std::int32_t, 8>& rowColors,
                 std::optional<std::int32_t> index) override;
    void RemoveItem(std::int32_t row) override;
    void SetColumnEdit(std::int32_t col, std::int16_t maxLength, std::int32_t kind, std::int32_t style,
                       std::optional<std::int16_t> decimals) override;
    void SetDefaultColor(std::int32_t color) override;
    void SetCellColor(std::int32_t row, std::int32_t col, std::int32_t color) override;
    [[nodiscard]] std::int32_t FinishEdit() override;
    [[nodiscard]] cashflow::ActiveEditor* ActiveEditor() override { return hasEditor ? &editor_ : nullptr; }
    void SetFocus() override;
    void BackColorSel(std::int32_t color) override { setting("BackColorSel", std::to_string(color)); }
    void ForeColorSel(std::int32_t color) override { setting("ForeColorSel", std::to_string(color)); }
    void BackColorBkg(std::int32_t color) override { setting("BackColorBkg", std::to_string(color)); }
    void GridColor(std::int32_t color) override { setting("GridColor", std::to_string(color)); }
    void GridColorFixed(std::int32_t color) override { setting("GridColorFixed", std::to_string(color)); }

private:
    struct Editor final : cashflow::ActiveEditor {
        [[nodiscard]] bool Visible() const override { return open; }
        bool open = false;
        std::string text;
    };
    using Cells = std::vector<std::string>;

    void call(const std::string& operation) const;
    void setting(const std::string& name, const std::string& value);
    void needRow(std::int32_t row) const;
    void needCol(std::int32_t col) const;
    [[nodiscard]] bool validateLine(std::int32_t row);

    FormEvents& events_;
    std::vector<std::string>& journal_;
    std::vector<Cells> rows_;
    std::vector<std::vector<std::int32_t>> colours_;
    std::vector<std::int16_t> widths_;
    std::set<std::size_t> touched_; ///< rows changed or added since they became current
    std::int32_t cols_ = 0;
    std::int32_t fixedRows_ = 0;
    std::int32_t fixedCols_ = 0;
    std::int32_t row_ = 0;
    std::int32_t col_ = 0;
    bool readOnly_ = false;
    Editor editor_;
    mutable std::size_t calls_ = 0;
};

} // namespace z7::cashflow::test
