#include "host/report/rowsByLine.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <string>
#include <utility>

namespace z7::cashflow::host {

namespace {

/// The number of a row's entry line; 0 if its document left it out.
double lineOf(const CashFlow& row) {
    const auto& fields = row.Fields();
    const bool there = std::find(fields.begin(), fields.end(), "inid") != fields.end();
    return there ? readNumber(toTextOrEmpty(row.Item("inid"))).value_or(0.0) : 0.0;
}

} // namespace

std::vector<std::shared_ptr<CashFlow>> rowsByLine(const CashFlowCollection& rows) {
    std::vector<std::pair<double, std::shared_ptr<CashFlow>>> lines;
    for (const auto& row : rows) {
        lines.emplace_back(lineOf(*row), row);
    }
    std::stable_sort(lines.begin(), lines.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::shared_ptr<CashFlow>> sorted;
    sorted.reserve(lines.size());
    for (auto& line : lines) {
        sorted.push_back(std::move(line.second));
    }
    return sorted;
}

} // namespace z7::cashflow::host
