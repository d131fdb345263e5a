#pragma once

#include <string>

namespace z7::cashflow {

/// The document that declares the fields of a cash-flow row, with its line breaks. It travels in the XML form of every
/// collection, so not a character of it may change.
[[nodiscard]] const std::string& schemaDocument();

} // namespace z7::cashflow
