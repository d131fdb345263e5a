#pragma once

#include "z7cashflow/support/Reason.h"

#include <filesystem>
#include <vector>

namespace z7::cashflow::sqlite {

/// Damage in one of an account's files.
struct Damage {
    std::filesystem::path file;
    Explanation reason; ///< with the message of the database library, if there is one
};

/// Reads every page of an account's files and compares the indexes with the tables, and the values with the
/// conditions of their columns. Returns at most 20 findings per file; empty if all files are sound. Changes
/// nothing.
[[nodiscard]] std::vector<Damage> findDamage(const std::filesystem::path& account);

} // namespace z7::cashflow::sqlite
