#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/support/guid.h"

namespace z7::cashflow::host {

/// While this object lives, rows that the library creates on this thread get identities made from a voucher's key and
/// a count instead of random ones, so that reading the voucher twice yields the same document. They are unique among
/// all vouchers of an account. Create it after the session, and only to read.
class StableIdentities {
public:
    explicit StableIdentities(const workbench::VoucherKey& voucher);
    ~StableIdentities();
    StableIdentities(const StableIdentities&) = delete;
    StableIdentities& operator=(const StableIdentities&) = delete;

private:
    GuidSource former_;
};

} // namespace z7::cashflow::host
