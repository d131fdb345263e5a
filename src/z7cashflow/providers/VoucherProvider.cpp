#include "z7cashflow/providers/VoucherProvider.h"

#include "z7cashflow/providers/GlVoucherContract.h"
#include "z7cashflow/providers/OutVoucherContract.h"
#include "z7cashflow/providers/ProviderSettings.h"

namespace z7::cashflow {

VoucherProvider::VoucherProvider()
    : settings_(std::make_unique<ProviderSettings>()), gl_(std::make_unique<GlVoucherContract>(*settings_)),
      out_(std::make_unique<OutVoucherContract>(*settings_, *gl_)) {}

VoucherProvider::~VoucherProvider() = default;

IGlVoucherProvider& VoucherProvider::gl() noexcept { return *gl_; }

IOutVoucherProvider& VoucherProvider::out() noexcept { return *out_; }

std::shared_ptr<CashFlowCollection> VoucherProvider::CreateCashFlowCollection() { return CashFlowCollection::Create(); }

void VoucherProvider::IGlVoucherProvider_bFromDraft(bool value) { settings_->bFromDraft = value; }

} // namespace z7::cashflow
