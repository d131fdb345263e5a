#pragma once

#include "host/text/Language.h"
#include "z7cashflow/support/Error.h"

#include <string>

namespace z7::cashflow::host {

/// The answer of the library's check on one line for people: the entry line is named in words, and the dialog's
/// column is left out.
[[nodiscard]] std::string reasonText(Language language, const std::string& checkText);

/// An explanation in the user's language; empty for Reason::none.
[[nodiscard]] std::string reasonText(Language language, const Explanation& why);

/// An error on one line for people: its reason in the user's language, or its own description followed by the
/// reason. A description without a reason, such as that of a database, is kept.
[[nodiscard]] std::string reasonText(Language language, const Error& error);

} // namespace z7::cashflow::host
