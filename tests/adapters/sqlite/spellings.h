#pragma once

#include "z7cashflow/ports/Connection.h"

#include <filesystem>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {

/// Texts that are equal for an accountant, but not byte by byte: with trailing blanks, in both letter cases, and
/// with letters that fold to others of a different length.
extern const std::vector<std::string> spellings;

/// Whether two texts are equal for an accountant.
[[nodiscard]] bool equalTexts(const std::string& a, const std::string& b);
/// The spellings without those that equal an earlier one, as stored in a keyed table; of equal ones the longest or
/// the shortest.
[[nodiscard]] std::vector<std::string> distinctSpellings(bool longestFirst);

/// The planner's statistics of an account's tables.
enum class Statistics { shipped, none, gathered };
[[nodiscard]] inline std::string nameOf(Statistics statistics) {
    return statistics == Statistics::shipped ? "Shipped" : statistics == Statistics::none ? "None" : "Gathered";
}
void prepareStatistics(const std::filesystem::path& file, Statistics statistics);

/// The rows of a query, all columns joined, in order.
[[nodiscard]] std::vector<std::string> rowsOf(cashflow::Connection& connection, const std::string& query);

} // namespace z7::cashflow::sqlite
