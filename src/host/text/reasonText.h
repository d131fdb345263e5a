#pragma once

#include "host/text/Language.h"

#include <string>

namespace z7::cashflow::host {

/// A reason of the library on one line for people: where it names a line of the voucher, the line is told in words and the
/// column of the dialog is left out. What conversions and lists raise is told in words for an accountant, with the detail behind it,
/// and so is the guard's text in Chinese. Every other text stays as it is, such as that of a database or an adapter.
[[nodiscard]] std::string reasonText(Language language, const std::string& reason);

} // namespace z7::cashflow::host
