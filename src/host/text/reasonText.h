#pragma once

#include "host/text/Language.h"
#include "z7cashflow/support/Error.h"

#include <string>

namespace z7::cashflow::host {

/// What the library's check says of rows, on one line for people: the entry line that it names is told in words, and
/// the column of the dialog is left out.
[[nodiscard]] std::string reasonText(Language language, const std::string& checkText);

/// An explanation in the user's language; the empty text for Reason::none.
[[nodiscard]] std::string reasonText(Language language, const Explanation& why);

/// An error on one line for people: its reason in the user's language, or its own description with the reason after it.
/// A description without a reason, such as a database's, stays as it is.
[[nodiscard]] std::string reasonText(Language language, const Error& error);

} // namespace z7::cashflow::host
