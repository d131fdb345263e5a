#pragma once

#include "z7cashflow/statements/LiteralPolicy.h"

#include <string>
#include <string_view>

namespace z7::cashflow::statements {

/// The values of a row in the order of its columns, joined by commas. Under wholeLiterals each must arrive as one
/// literal.
class RowValues {
public:
    /// No values yet, for a statement of that name.
    RowValues(LiteralPolicy policy, std::string_view statement) : policy_(policy), statement_(statement) {}

    void addNull();
    /// Adds a field's text, which goes between quotes as it is. Error 10020 where the policy does not allow it.
    void addText(std::string_view field, std::string_view value);
    /// Adds a field's number as the text that it is. Error 10020 where the policy does not allow it.
    void addNumber(std::string_view field, std::string_view value);

    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    void separate();

    LiteralPolicy policy_;
    std::string_view statement_;
    std::string text_;
    bool begun_ = false;
};

} // namespace z7::cashflow::statements
