#pragma once

#include "host/cli/Output.h"
#include "workbench/vouchers/VoucherResult.h"

#include <cstdint>
#include <optional>
#include <string>

namespace z7::cashflow::host {

/// What is written of a save that came to an outcome, with places for the voucher and the number of rows.
[[nodiscard]] HostText savedText(workbench::Outcome outcome) noexcept;

/// Ends a command with a refusal's number and reason. Failure (refused).
[[noreturn]] void failAsRefused(Language language, const workbench::Refusal& refusal);

/// Writes what became of one saved voucher and returns the command's exit code. Failure (refused) with the reason if it was
/// refused and people read the output; machines read the reason in the result.
[[nodiscard]] int tellSaved(Output& output, const workbench::VoucherResult& result);

/// What became of a voucher of another subsystem.
struct OutsideResult {
    std::string table; ///< its table
    std::string key;   ///< its outside key
    workbench::Outcome outcome = workbench::Outcome::refused;
    std::int32_t rows = 0; ///< the rows that were stored; 0 unless the outcome is stored
    std::optional<workbench::Refusal> refusal;
};

/// As tellSaved.
[[nodiscard]] int tellSavedOutside(Output& output, const OutsideResult& result);

} // namespace z7::cashflow::host
