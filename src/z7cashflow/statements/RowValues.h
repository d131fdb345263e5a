#pragma once

#include "z7cashflow/statements/LiteralPolicy.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The values of a row in the order of its columns, joined by commas. Under wholeLiterals each must be one literal.
class RowValues {
public:
    /// An empty list for the statement with this name.
    RowValues(LiteralPolicy policy, std::string_view statement) : policy_(policy), statement_(statement) {}

    /// Adds a null.
    void addNull();
    /// Adds a field's text, which is put between quotes unchanged. Error 10020 if the policy does not allow it.
    void addText(std::string_view field, std::string_view value);
    /// Adds a field's number as text. Error 10020 if the policy does not allow it.
    void addNumber(std::string_view field, std::string_view value);

    /// Appends the values to a statement.
    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    void separate();

    LiteralPolicy policy_;
    std::string_view statement_;
    std::string text_;
    bool begun_ = false;
};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
