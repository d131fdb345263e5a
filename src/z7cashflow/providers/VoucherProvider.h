#pragma once

#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/providers/IOutVoucherProvider.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

struct ProviderSettings;

/// The class through which a host reaches the cash-flow rows of one voucher at a time, by either contract.
///
/// Its three settings (VoucherTempTable, SetOldVouchNoID, bFromDraft) stay from voucher to voucher until they are set
/// again. It keeps no connection, no voucher and no login: year and options live in the thread's context.
class VoucherProvider final {
public:
    VoucherProvider();
    ~VoucherProvider();
    VoucherProvider(const VoucherProvider&) = delete;
    VoucherProvider& operator=(const VoucherProvider&) = delete;

    /// The contract for vouchers of the ledger. Owned by this object; lives as long as it does.
    [[nodiscard]] IGlVoucherProvider& gl() noexcept;
    /// The contract for vouchers of other subsystems, over the same settings. Owned by this object.
    [[nodiscard]] IOutVoucherProvider& out() noexcept;

    /// A new, empty collection for rows that a host builds itself.
    [[nodiscard]] std::shared_ptr<CashFlowCollection> CreateCashFlowCollection();
    /// The setting bFromDraft of the ledger contract under its long name.
    void IGlVoucherProvider_bFromDraft(bool value);

private:
    std::unique_ptr<ProviderSettings> settings_;
    std::unique_ptr<IGlVoucherProvider> gl_;
    std::unique_ptr<IOutVoucherProvider> out_;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
