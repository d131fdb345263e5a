#pragma once

#include "z7cashflow/statements/LiteralPolicy.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The columns of a statement in their order, joined by commas. Under wholeLiterals each must be the name of a column.
class ColumnList {
public:
    /// An empty list for the statement with this name.
    ColumnList(LiteralPolicy policy, std::string_view statement) : policy_(policy), statement_(statement) {}

    /// Adds a column by name. Error 10020 if the policy does not allow the name.
    void add(std::string_view name);
    /// Adds a column of the chart of accounts, the table "code" of a join. Error as for add.
    void addOfAccount(std::string_view name);

    /// Whether no column was added.
    [[nodiscard]] bool empty() const noexcept { return !begun_; }

    /// Appends the list to a statement.
    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    void append(std::string_view qualifier, std::string_view name);

    LiteralPolicy policy_;
    std::string_view statement_;
    std::string text_;
    bool begun_ = false;
};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
