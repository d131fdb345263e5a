#pragma once

#include "z7cashflow/ports/PickList.h"
#include "z7cashflow/ports/Recordset.h"

#include <string>
#include <vector>

namespace z7::cashflow {

/// A column of a pick list and the record field that it shows.
struct PickField {
    std::string field;
    PickColumn column;
};

/// Lets the user pick one record of an open recordset. True if one was picked: the recordset is then positioned on
/// it.
[[nodiscard]] bool pickRecord(PickList& list, const std::string& title, const std::vector<PickField>& fields,
                              Recordset& records);

} // namespace z7::cashflow
