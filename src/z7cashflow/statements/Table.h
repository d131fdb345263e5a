#pragma once

#include "z7cashflow/statements/LiteralPolicy.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>

// The values of a statement's places refer to the texts from which they are made, so they must not outlive the call
// that fills the statement.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// The name of a table or a view, such as "gl_accvouch" or "tempdb..[my voucher]".
class Table {
public:
    /// A name, unchecked until it is appended.
    Table(std::string_view name) : name_(name) {}
    /// As above.
    Table(const std::string& name) : name_(name) {}
    /// As above.
    Table(const char* name) : name_(name) {}

    /// Appends the name to a statement. Under wholeLiterals error 10020 if it is not the name of a table.
    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    std::string_view name_;
};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
