#include "z7cashflow/dialog/pickRecord.h"

#include "z7cashflow/dialog/dialogText.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow {

namespace {

// In these records only amounts are doubles.
std::string shownValue(const Variant& value) { return value.is<double>() ? amountInCell(value) : toTextOrEmpty(value); }

} // namespace

bool pickRecord(PickList& list, const std::string& title, const std::vector<PickField>& fields, Recordset& records) {
    std::vector<PickColumn> columns;
    columns.reserve(fields.size());
    for (const PickField& field : fields) {
        columns.push_back(field.column);
    }
    std::vector<std::vector<std::string>> rows;
    for (; !records.atEnd(); records.MoveNext()) {
        std::vector<std::string> row;
        row.reserve(fields.size());
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const Variant value = records.Fields().Item(fields[i].field);
            columns[i].alignRight = columns[i].alignRight || value.is<double>();
            row.push_back(shownValue(value));
        }
        rows.push_back(std::move(row));
    }
    const auto picked = list.pick(title, columns, rows);
    if (!picked || *picked >= rows.size()) {
        return false;
    }
    records.MoveFirst();
    for (std::size_t i = 0; i < *picked; ++i) {
        records.MoveNext();
    }
    return true;
}

} // namespace z7::cashflow
