#pragma once

#include "z7cashflow/statements/LiteralPolicy.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/visibility.h"

#include <string>
#include <string_view>

// The values of a statement's places refer to the texts from which they are made, so they must not outlive the call
// that fills the statement.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

/// A text between the quotes of a statement.
class Text {
public:
    /// A text, unchecked until it is appended.
    Text(std::string_view text) : text_(text) {}
    /// As above.
    Text(const std::string& text) : text_(text) {}
    /// As above.
    Text(const char* text) : text_(text) {}
    /// The text of an outside key.
    Text(const OutsideKey& key) : text_(key.text) {}

    /// Appends the text to a statement. Under wholeLiterals error 10020 if it contains a quote.
    void appendTo(std::string& out, LiteralPolicy policy, const Place& place) const;

private:
    std::string_view text_;
};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
