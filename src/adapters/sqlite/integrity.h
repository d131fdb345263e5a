#pragma once

#include "z7cashflow/support/Reason.h"

#include <filesystem>
#include <vector>

namespace z7::cashflow::sqlite {

/// Damage in one of an account's files.
struct Damage {
    std::filesystem::path file;
    Explanation reason; ///< in the words of the database library, as far as it has any
};

/// Reads every page of an account's files and compares the indexes with the tables, and the values with the conditions
/// of their columns. Reports what does not hold, at most 20 times a file; nothing if all is sound. Changes nothing.
[[nodiscard]] std::vector<Damage> findDamage(const std::filesystem::path& account);

} // namespace z7::cashflow::sqlite
