#pragma once

#include "host/text/HostText.h"
#include "z7cashflow/support/Error.h"

#include <string>

namespace z7::cashflow::host {

/// The code of a text of the program in JSON, the same in every language: "file-missing" for HostText::fileMissing. A
/// failure whose text also makes a suggestion has the code of the one that does not.
[[nodiscard]] std::string codeText(HostText text);

/// The code of a reason of any room: "not-a-number". Empty for Reason::none and Reason::verbatim, and for a reason of a
/// room that the program does not know.
[[nodiscard]] std::string codeText(ReasonId reason);

/// The code of an error: that of its reason, otherwise "database-failed" or "voucher-failed", as the program's own
/// message begins.
[[nodiscard]] std::string codeText(const Error& error);

} // namespace z7::cashflow::host
