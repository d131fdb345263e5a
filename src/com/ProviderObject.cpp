#include "com/ProviderObject.h"

#include "com/CollectionObject.h"

namespace z7::com {

ProviderObject::ProviderObject() : gl_(*this, provider_.gl()), out_(*this, provider_.out()) {}

HRESULT ProviderObject::CreateCashFlowCollection(_CashFlowCollection** rows) noexcept {
    return answer(rows, [this] { return CollectionObject::of(provider_.CreateCashFlowCollection()); });
}

HRESULT ProviderObject::put_IGlVoucherProvider_bFromDraft(VARIANT_BOOL value) noexcept {
    return run([&] { provider_.IGlVoucherProvider_bFromDraft(truth(value)); });
}

} // namespace z7::com
