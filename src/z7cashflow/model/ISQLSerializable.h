#pragma once

#include <string>

namespace z7::cashflow {

class CashFlowStruct;

/// An object that can be written as SQL statements.
class ISQLSerializable {
public:
    virtual ~ISQLSerializable() = default;

    /// The statement text that stores this in a table. The schema decides which fields are written and how. Values are
    /// put in as they are: a quote in a value is not doubled. Touches no database.
    [[nodiscard]] virtual std::string InsertSql(const std::string& tableName,
                                                const CashFlowStruct& structure) const = 0;
};

} // namespace z7::cashflow
