// Filters: a text is refused with a documented reason, or selects the same rows as a check of each row.

#include "adapters/shared/recordset/RowFilter.h"
#include "fuzz/target.h"
#include "z7cashflow/support/Error.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::fuzz {
namespace {

using shared::ColumnType;
using shared::FilterCondition;
using shared::RowSet;

RowSet voucherLines() {
    const std::vector<shared::Column> columns{{"iperiod", ColumnType::byte, 0},   {"isignseq", ColumnType::int16, 0},
                                              {"ino_id", ColumnType::int32, 0},   {"inid", ColumnType::int16, 0},
                                              {"bCashItem", ColumnType::boolean}, {"md", ColumnType::money, 0},
                                              {"cDefine1", ColumnType::text}};
    RowSet rows(std::make_shared<const shared::ColumnList>(columns));
    const auto addRow = [&](std::int16_t inid, double md, const Variant& text) {
        rows.addInteger(1);
        rows.addInteger(2);
        rows.addInteger(5);
        rows.addInteger(inid);
        rows.addInteger(inid % 2);
        rows.addReal(md);
        rows.add(text);
    };
    addRow(1, 100.0, "1");
    addRow(2, -0.0, " 2.50 ");
    addRow(2, 1e15, Null{});
    addRow(-3, 0.1, "no number");
    for (int column = 0; column < rows.columns().count(); ++column) {
        rows.addNull();
    }
    return rows;
}

bool meets(const RowSet& rows, std::size_t row, const std::vector<FilterCondition>& conditions) {
    return std::all_of(conditions.begin(), conditions.end(), [&](const FilterCondition& condition) {
        const auto number = rows.number(row, condition.column);
        return number && *number == condition.number;
    });
}

void run(std::string_view criteria) {
    const RowSet rows = voucherLines();
    std::vector<FilterCondition> conditions;
    try {
        conditions = shared::parseFilter(criteria, rows.columns());
    } catch (const Error& error) {
        require(error.number() == errors::invalidArgument || error.number() == errors::unknownField,
                "a filter is refused with error 3001, or with 3265 for a column that is not there");
        return;
    }
    require(!conditions.empty(), "a filter that is taken has a condition");
    for (const FilterCondition& condition : conditions) {
        require(condition.column >= 0 && condition.column < rows.columns().count(), "a condition names a column");
        require(std::isfinite(condition.number), "a condition's number is finite");
    }
    std::vector<std::uint32_t> expected;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        if (meets(rows, row, conditions)) {
            expected.push_back(static_cast<std::uint32_t>(row));
        }
    }
    shared::RowFilter filter;
    require(filter.match(rows, conditions) == expected, "the index finds what a look at each row finds");
    require(filter.match(rows, conditions) == expected, "and finds it again");
}

} // namespace
} // namespace z7::cashflow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    z7::cashflow::fuzz::run(z7::cashflow::fuzz::textOf(data, size));
    return 0;
}
