#pragma once

#include "z7cashflow/support/visibility.h"

#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

class CashFlowStruct;

/// An object that can be written as SQL statements.
class ISQLSerializable {
public:
    virtual ~ISQLSerializable() = default;

    /// The statement text that stores this in a table. The schema decides which fields are written and how. Values are
    /// inserted unchanged: a quote in a value is not doubled. Does not access the database.
    [[nodiscard]] virtual std::string InsertSql(const std::string& tableName,
                                                const CashFlowStruct& structure) const = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
