#pragma once

#include <string>
#include <vector>

namespace z7::cashflow::guard {

/// A statement that the library builds, with sample literals in place of values. The name VOUCHERTABLE stands for the name of a
/// table or view that a caller may choose.
/// TEMPTABLE stands for a temporary table of the library's own making; in the list of an insert's values, VALUE stands for a literal
/// or Null.
[[nodiscard]] const std::vector<std::string>& libraryStatements();

/// The placeholders of libraryStatements.
inline constexpr const char* tablePlaceholder = "VOUCHERTABLE";
inline constexpr const char* temporaryPlaceholder = "TEMPTABLE";
inline constexpr const char* valuePlaceholder = "VALUE";

} // namespace z7::cashflow::guard
