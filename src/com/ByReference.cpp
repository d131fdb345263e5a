#include "com/ByReference.h"

#include "adapters/ado/automation/Bstr.h"

namespace z7::com {

std::shared_ptr<cashflow::CashFlowCollection> held(_CashFlowCollection* argument) {
    const auto* object = objectIfAny<CollectionObject>(argument);
    return object == nullptr ? nullptr : object->collection();
}

void replace(BSTR* argument, const std::string& text) {
    adapters::automation::Bstr fresh(text);
    SysFreeString(*argument);
    *argument = fresh.detach();
}

void replace(VARIANT_BOOL* argument, bool truth) noexcept { store(argument, truth); }

void replace(_CashFlowCollection** argument, const std::shared_ptr<cashflow::CashFlowCollection>& rows) {
    auto fresh = CollectionObject::of(rows);
    if (*argument != nullptr) {
        (*argument)->Release();
    }
    store(argument, std::move(fresh));
}

} // namespace z7::com
