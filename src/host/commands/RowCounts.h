#pragma once

#include "host/text/Language.h"
#include "workbench/vouchers/VoucherResult.h"

#include <array>
#include <cstdint>
#include <string>

namespace z7::cashflow::host {

/// How many rows of vouchers were kept, are new, were changed and were removed.
class RowCounts {
public:
    void add(const workbench::VoucherResult& result);
    /// "kept 12, new 3": what is not 0; empty if there is nothing.
    [[nodiscard]] std::string text(Language language) const;

private:
    std::array<std::int64_t, 4> counts_{}; ///< by RowChange::Kind
};

} // namespace z7::cashflow::host
