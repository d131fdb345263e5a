#pragma once

#include "host/Language.h"

#include <string>

namespace z7::cashflow::host {

/// A reason of the library on one line for people: where it names a line of the voucher, the line is told in words and the
/// column of the dialog is left out. What conversions, lists and the guard say in English only is told in the language
/// given; a database's own text stays as it is.
[[nodiscard]] std::string reasonText(Language language, const std::string& reason);

} // namespace z7::cashflow::host
