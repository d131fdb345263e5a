#pragma once

#include "com/DualObject.h"
#include "com/GlFace.h"
#include "com/OutFace.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/providers/VoucherProvider.h"

namespace z7::com {

/// The class VoucherProvider, with both contracts.
class ProviderObject final : public DualObject<_VoucherProvider> {
public:
    /// A new provider.
    ProviderObject();

    HRESULT STDMETHODCALLTYPE CreateCashFlowCollection(_CashFlowCollection** rows) noexcept override;
    HRESULT STDMETHODCALLTYPE put_IGlVoucherProvider_bFromDraft(VARIANT_BOOL value) noexcept override;

private:
    cashflow::VoucherProvider provider_;
    GlFace gl_;
    OutFace out_;
};

} // namespace z7::com
