#pragma once

#include "z7cashflow/ports/Control.h"
#include "z7cashflow/support/visibility.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The editor that a grid opens in its current cell. Owned by the grid.
class ActiveEditor {
public:
    virtual ~ActiveEditor() = default;
    /// Whether the editor is open on the screen and takes the keys.
    [[nodiscard]] virtual bool Visible() const = 0;
};

/// What a grid asks of its form. Each event runs inside the grid's own work with the user's key or click, and may
/// use every operation of the grid. Only what the user does raises events; of the grid's operations FinishEdit alone
/// raises some.
///
/// An event may raise an Error. The grid then refuses what it asked about (no edit, no leaving of the cell or line, no
/// new text), passes the Error to FormEvents::eventFailed and goes on.
class SuperGridEvents {
public:
    /// The editor of the current cell is about to open. cancel starts false; true keeps it closed. A grid that is
    /// read-only, and a column without an editor, raise no such event. The argument column is not used by anybody.
    virtual void BeforeEdit(bool& cancel, std::int32_t column) = 0;
    /// The edited cell is about to be left with this text; the cell itself still holds the text from before the edit.
    /// cancel starts 0; 1 refuses the text: the editor stays open, keeps the text and the focus. With 0 the grid puts
    /// text, which the event may have changed, into the cell.
    virtual void CellValidate(std::string& text, std::int32_t& cancel, std::int32_t row, std::int32_t col) = 0;
    /// A line that the user changed, or that was added, is about to be left for another line. cancel starts 0; 1 keeps
    /// the cursor in the line, in the column that col names then.
    virtual void RowValidate(std::int32_t& cancel, std::int32_t row, std::int32_t& col) = 0;
    /// The reference button of a cell was pressed. text is the editor's text, which the cell also holds during the
    /// event; afterwards the cell has its former text again, and the editor shows text as the event has left it, still
    /// open and not validated.
    virtual void ReferenceClick(std::string& text, std::int32_t row, std::int32_t col) = 0;
    /// The user wants to go on after the last cell of the last line, which is valid. The event adds a line if there may
    /// be one.
    virtual void AppendRow() = 0;

protected:
    ~SuperGridEvents() = default;
};

/// The grid of the suite. A cell is a text, which the grid neither reads nor converts. Rows and columns count from 0,
/// and the first FixedRows rows are the header. The current cell is at Row and Col; both are 0 at first. When the first
/// data row comes, Row becomes FixedRows; when the current row goes, Row keeps its number as long as there is such a
/// row, else it names the last row.
///
/// Error 9 for a row or column that the grid does not have. Colours are red + 256 * green + 65536 * blue.
class SuperGrid : public Control {
public:
    /// Name of the class in the suite: "SuperGrid".
    [[nodiscard]] virtual std::string typeName() const = 0;

    /// The number of rows and columns, the fixed ones included. Rows that are added this way are empty, with no cell
    /// coloured; rows and columns beyond the number go with their texts.
    [[nodiscard]] virtual std::int32_t Rows() const = 0;
    /// Sets the number of rows.
    virtual void Rows(std::int32_t value) = 0;
    /// The number of columns, the fixed ones included.
    [[nodiscard]] virtual std::int32_t Cols() const = 0;
    /// Sets the number of columns.
    virtual void Cols(std::int32_t value) = 0;
    /// The number of header rows and columns.
    [[nodiscard]] virtual std::int32_t FixedRows() const = 0;
    /// Sets the number of header rows.
    virtual void FixedRows(std::int32_t value) = 0;
    /// The number of header columns.
    [[nodiscard]] virtual std::int32_t FixedCols() const = 0;
    /// Sets the number of header columns.
    virtual void FixedCols(std::int32_t value) = 0;

    /// The current cell. Setting it moves the cursor, closes an open editor without taking its text over and raises no
    /// event.
    [[nodiscard]] virtual std::int32_t Row() const = 0;
    /// Moves to a row.
    virtual void Row(std::int32_t value) = 0;
    /// The column of the current cell.
    [[nodiscard]] virtual std::int32_t Col() const = 0;
    /// Moves to a column.
    virtual void Col(std::int32_t value) = 0;
    /// The end of the column selection, which begins at Col. It is always set right after Col, to the same value.
    virtual void ColSel(std::int32_t value) = 0;

    /// The text of a cell, also of one in the header.
    [[nodiscard]] virtual std::string TextMatrix(std::int32_t row, std::int32_t col) const = 0;
    /// Sets the text of a cell.
    virtual void TextMatrix(std::int32_t row, std::int32_t col, const std::string& text) = 0;

    /// Width of a column in twips; 0 hides it. The user may drag every column that is not hidden.
    [[nodiscard]] virtual std::int16_t ColWidth(std::int32_t col) const = 0;
    /// Sets the width of a column.
    virtual void ColWidth(std::int32_t col, std::int16_t twips) = 0;
    /// Alignment of a column. 1, the only value in use, is to the left; a column that was never set aligns as the grid
    /// likes.
    virtual void ColAlignment(std::int32_t col, std::int16_t value) = 0;
    /// The grid's mode of work. 1, the only value in use: cells can be edited in place, one cell is current.
    virtual void GridMode(std::int32_t value) = 0;
    /// True keeps every editor closed. The cursor still moves and columns can be dragged.
    virtual void GridReadOnly(bool value) = 0;

    /// Adds a row before the row index, or at the end without an index. text goes into its first cell. rowColors are
    /// the colours of its cells from the left, where 0 means the grid's own. Row and Col keep their numbers, so with
    /// the index of the current row Row names the new row. The grid counts the row as changed by the user.
    virtual void AddItem(const std::string& text, const std::array<std::int32_t, 8>& rowColors,
                         std::optional<std::int32_t> index) = 0;
    /// Removes a row. An open editor in it goes without a question.
    virtual void RemoveItem(std::int32_t row) = 0;

    /// Defines the editor of a column: the longest text in characters, the kind of editor (0 plain text, 1 text with a
    /// reference button, 2 numbers), a style value (1 a text; 4 an amount) and, for numbers, the decimals. A column
    /// that was never defined takes plain text of any length. A cell in the default colour is filled by the system and
    /// not edited by the user.
    virtual void SetColumnEdit(std::int32_t col, std::int16_t maxLength, std::int32_t kind, std::int32_t style,
                               std::optional<std::int16_t> decimals) = 0;
    /// Sets the colour that marks cells filled by the system. Called once, before the columns are defined.
    virtual void SetDefaultColor(std::int32_t color) = 0;
    /// Colours one cell.
    virtual void SetCellColor(std::int32_t row, std::int32_t col, std::int32_t color) = 0;

    /// Settles an edit in progress before a command does its work, in these steps:
    /// 1. An unfinished last line, that is one whose column 1 is empty (in an editor that is open there too), is
    ///    dropped if it is the current line, with whatever an editor in it holds; the answer is 2.
    /// 2. An open editor raises CellValidate. A refused text leaves it open; the answer is 1.
    /// 3. The current line, if it was changed or added since it became current and its column 1 is not empty, raises
    ///    RowValidate. A refusal puts the cursor where RowValidate says; the answer is 1.
    /// 4. The answer is 2: the current cell is settled and the command may go on.
    [[nodiscard]] virtual std::int32_t FinishEdit() = 0;
    /// The in-place editor, or a null pointer where the grid has made none yet. Owned by the grid.
    [[nodiscard]] virtual cashflow::ActiveEditor* ActiveEditor() = 0;
    /// Gives the grid the keyboard focus; an open editor gets it back.
    virtual void SetFocus() = 0;

    /// Background and text of the selected cell, the space beside the cells, the lines between the cells and those of
    /// the header.
    virtual void BackColorSel(std::int32_t color) = 0;
    /// Colour of the text of the selected cell.
    virtual void ForeColorSel(std::int32_t color) = 0;
    /// Colour of the space beside the cells.
    virtual void BackColorBkg(std::int32_t color) = 0;
    /// Colour of the lines between the cells.
    virtual void GridColor(std::int32_t color) = 0;
    /// Colour of the lines between the cells of the header.
    virtual void GridColorFixed(std::int32_t color) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
