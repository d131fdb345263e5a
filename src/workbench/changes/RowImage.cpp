#include "workbench/changes/RowImage.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow::workbench {

namespace {

constexpr std::size_t identityColumn = 0;

std::size_t indexOf(std::string_view column) {
    return static_cast<std::size_t>(std::find(rowColumns.begin(), rowColumns.end(), column) - rowColumns.begin());
}

bool isDebit(const RowImage& row) { return !row["md"].isNull() && toDouble(row["md"]) != 0.0; }

bool samePlace(const RowImage& a, const RowImage& b) {
    return a.line() == b.line() && a["ccode"] == b["ccode"] && isDebit(a) == isDebit(b);
}

std::vector<std::size_t> differences(const RowImage& a, const RowImage& b) {
    std::vector<std::size_t> columns;
    for (std::size_t i = identityColumn + 1; i < rowColumns.size(); ++i) {
        if (a.at(i) != b.at(i)) {
            columns.push_back(i);
        }
    }
    return columns;
}

/// Removes the first row that satisfies a condition from a list and returns it.
template <class Condition> std::optional<RowImage> takeFirst(std::vector<RowImage>& rows, Condition&& condition) {
    const auto found = std::find_if(rows.begin(), rows.end(), condition);
    if (found == rows.end()) {
        return std::nullopt;
    }
    std::optional<RowImage> row = std::move(*found);
    rows.erase(found);
    return row;
}

std::int32_t lineOf(const RowChange& change) { return change.after ? change.after->line() : change.before->line(); }

} // namespace

const Variant& RowImage::operator[](std::string_view column) const { return values_.at(indexOf(column)); }

std::int32_t RowImage::line() const {
    const Variant& line = (*this)["inid"];
    return line.isNull() ? 0 : toInt32(line);
}

bool RowImage::equals(const RowImage& other, bool identity) const {
    const auto first = static_cast<std::ptrdiff_t>(identity ? identityColumn : identityColumn + 1);
    return std::equal(values_.begin() + first, values_.end(), other.values_.begin() + first, other.values_.end());
}

std::string rowsOfVoucher(const VoucherKey& key) {
    return "iYear=" + std::to_string(key.year) + " and iPeriod=" + std::to_string(key.period) +
           " and iSignSeq=" + std::to_string(key.kind) + " and iNo_id=" + std::to_string(key.number);
}

std::string rowColumnList() {
    std::string list;
    for (const std::string_view column : rowColumns) {
        list += list.empty() ? "" : ",";
        list += column;
    }
    return list;
}

std::vector<RowImage> readRowImages(Connection& connection, const VoucherKey& key) {
    return readRowImages(connection, "select " + rowColumnList() + " from gl_cashtable where " + rowsOfVoucher(key) +
                                         " order by inid,cCashItem,md,mc");
}

std::vector<RowImage> readRowImages(Connection& connection, const std::string& query) {
    const auto records = connection.Execute(query);
    std::vector<RowImage> rows;
    for (; !records->atEnd(); records->MoveNext()) {
        std::vector<Variant> values;
        values.reserve(rowColumns.size());
        for (std::size_t i = 0; i < rowColumns.size(); ++i) {
            values.push_back(records->Fields().Item(static_cast<int>(i)));
        }
        rows.emplace_back(std::move(values));
    }
    return rows;
}

bool sameRows(const std::vector<RowImage>& a, const std::vector<RowImage>& b, bool identity) {
    return a.size() == b.size() &&
           std::is_permutation(a.begin(), a.end(), b.begin(),
                               [identity](const RowImage& x, const RowImage& y) { return x.equals(y, identity); });
}

std::vector<RowChange> compareRows(const std::vector<RowImage>& before, const std::vector<RowImage>& after) {
    std::vector<RowChange> changes;
    std::vector<RowImage> gone = before;
    std::vector<RowImage> fresh;
    for (const RowImage& row : after) {
        if (auto same = takeFirst(gone, [&row](const RowImage& other) { return other.equals(row, false); })) {
            changes.push_back({RowChange::Kind::kept, std::move(same), row, {}});
        } else {
            fresh.push_back(row);
        }
    }
    for (RowImage& row : fresh) {
        if (auto old = takeFirst(gone, [&row](const RowImage& other) { return samePlace(other, row); })) {
            auto columns = differences(*old, row);
            changes.push_back({RowChange::Kind::changed, std::move(old), std::move(row), std::move(columns)});
        } else {
            changes.push_back({RowChange::Kind::added, std::nullopt, std::move(row), {}});
        }
    }
    for (RowImage& row : gone) {
        changes.push_back({RowChange::Kind::removed, std::move(row), std::nullopt, {}});
    }
    std::stable_sort(changes.begin(), changes.end(),
                     [](const RowChange& a, const RowChange& b) { return lineOf(a) < lineOf(b); });
    return changes;
}

} // namespace z7::cashflow::workbench
