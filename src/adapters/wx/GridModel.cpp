#include "adapters/wx/GridModel.h"

#include "z7cashflow/support/Error.h"

#include <algorithm>

namespace z7::cashflow::wx {

namespace {

std::size_t index(std::int32_t number) { return static_cast<std::size_t>(number); }

void requireCount(std::int32_t value) {
    if (value < 0) {
        raisePlatformError(Reason::indexOutOfRange, {std::to_string(value)});
    }
}

} // namespace

void GridModel::rows(std::int32_t value) {
    requireCount(value);
    const std::int32_t before = rows();
    rows_.resize(index(value), Row{std::vector<Cell>(columns_.size()), false});
    afterRowCount(before);
}

void GridModel::cols(std::int32_t value) {
    requireCount(value);
    columns_.resize(index(value));
    for (Row& row : rows_) {
        row.cells.resize(columns_.size());
    }
    current_.col = std::clamp(current_.col, 0, std::max(0, value - 1));
}

void GridModel::fixedRows(std::int32_t value) {
    requireCount(value);
    fixedRows_ = value;
}

void GridModel::fixedCols(std::int32_t value) {
    requireCount(value);
    fixedCols_ = value;
}

void GridModel::currentRow(std::int32_t value) {
    requireRow(value);
    current_.row = value;
}

void GridModel::currentCol(std::int32_t value) {
    requireCol(value);
    current_.col = value;
}

const GridColumn& GridModel::column(std::int32_t col) const {
    requireCol(col);
    return columns_[index(col)];
}

GridColumn& GridModel::column(std::int32_t col) {
    requireCol(col);
    return columns_[index(col)];
}

void GridModel::addRow(const std::string& firstText, const std::array<std::int32_t, 8>& colors,
                       std::optional<std::int32_t> index) {
    const std::int32_t before = rows();
    const std::int32_t at = index.value_or(before);
    if (at < fixedRows_ || at > before) {
        raisePlatformError(Reason::indexOutOfRange, {std::to_string(at)});
    }
    Row row{std::vector<Cell>(columns_.size()), true};
    if (!row.cells.empty()) {
        row.cells.front().text = firstText;
    }
    for (std::size_t i = 0; i < std::min(colors.size(), row.cells.size()); ++i) {
        if (colors[i] != 0) {
            row.cells[i].color = colors[i];
        }
    }
    rows_.insert(rows_.begin() + at, std::move(row));
    afterRowCount(before);
}

void GridModel::removeRow(std::int32_t row) {
    requireRow(row);
    const std::int32_t before = rows();
    rows_.erase(rows_.begin() + row);
    afterRowCount(before);
}

bool GridModel::changed(std::int32_t row) const {
    requireRow(row);
    return rows_[index(row)].changed;
}

void GridModel::changed(std::int32_t row, bool value) {
    requireRow(row);
    rows_[index(row)].changed = value;
}

bool GridModel::editable(const CellPlace& place) const {
    const bool there = place.row >= fixedRows_ && place.row < rows() && place.col >= fixedCols_ && place.col < cols();
    return there && columns_[index(place.col)].width > 0 && (!systemColor_ || cell(place).color != systemColor_);
}

std::optional<CellPlace> GridModel::nextEditable(CellPlace from) const {
    for (std::int32_t row = std::max(from.row, fixedRows_); row < rows(); ++row) {
        for (std::int32_t col = row == from.row ? from.col + 1 : fixedCols_; col < cols(); ++col) {
            if (editable({row, col})) {
                return CellPlace{row, col};
            }
        }
        if (row > from.row) {
            break; // a lower row without an editable cell ends the search, so that no key iterates over all rows
        }
    }
    return std::nullopt;
}

std::optional<CellPlace> GridModel::previousEditable(CellPlace from) const {
    for (std::int32_t row = std::min(from.row, rows() - 1); row >= fixedRows_; --row) {
        for (std::int32_t col = row == from.row ? from.col - 1 : cols() - 1; col >= fixedCols_; --col) {
            if (editable({row, col})) {
                return CellPlace{row, col};
            }
        }
        if (row < from.row) {
            break;
        }
    }
    return std::nullopt;
}

const GridModel::Cell& GridModel::cell(const CellPlace& place) const {
    requireRow(place.row);
    requireCol(place.col);
    return rows_[index(place.row)].cells[index(place.col)];
}

GridModel::Cell& GridModel::cell(const CellPlace& place) {
    requireRow(place.row);
    requireCol(place.col);
    return rows_[index(place.row)].cells[index(place.col)];
}

void GridModel::requireRow(std::int32_t row) const {
    if (row < 0 || row >= rows()) {
        raisePlatformError(Reason::indexOutOfRange, {std::to_string(row)});
    }
}

void GridModel::requireCol(std::int32_t col) const {
    if (col < 0 || col >= cols()) {
        raisePlatformError(Reason::indexOutOfRange, {std::to_string(col)});
    }
}

void GridModel::afterRowCount(std::int32_t before) {
    if (before <= fixedRows_ && rows() > fixedRows_) {
        current_.row = fixedRows_;
    }
    current_.row = std::clamp(current_.row, 0, std::max(0, rows() - 1));
}

} // namespace z7::cashflow::wx
