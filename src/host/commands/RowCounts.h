#pragma once

#include "host/text/Language.h"
#include "workbench/vouchers/VoucherResult.h"

#include <array>
#include <cstdint>
#include <string>

namespace z7::cashflow::host {

/// The numbers of rows kept, new, changed and removed.
class RowCounts {
public:
    void add(const workbench::VoucherResult& result);
    /// The counts that are not 0: "kept 12, new 3"; empty if all are 0.
    [[nodiscard]] std::string text(Language language) const;

private:
    std::array<std::int64_t, 4> counts_{}; ///< by RowChange::Kind
};

} // namespace z7::cashflow::host
