#pragma once

#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// One field of a cash-flow row as the schema document declares it.
struct CashFlowStructItem {
    std::string FieldName;    ///< name of the field and of its database column, such as "iPeriod"; case counts
    std::string DataType;     ///< "string", "num" or "date"
    bool DataCanNull = false; ///< a null is written to the database as such, else DefaultValue takes its place
    Variant DefaultValue;     ///< always a text, such as "0" for an amount; empty for none
    bool isSave = false;      ///< the field is written to the database
};

} // namespace z7::cashflow

Z7_PUBLIC_END
