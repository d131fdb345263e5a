#pragma once

#include <cstdint>
#include <string>

namespace z7::cashflow {

/// What a host sets on a provider, seen by both of its contracts. Nothing resets it between vouchers.
struct ProviderSettings {
    std::string VoucherTempTable;  ///< table that saves read the voucher from; empty for the one that is passed
    std::int32_t OldVouchNoID = 0; ///< former number of a voucher that has no cash-flow account; 0 for none
    bool bFromDraft = false;       ///< the voucher was made from a draft of the user
};

} // namespace z7::cashflow
