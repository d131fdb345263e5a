#pragma once

#include "com/DualObject.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/model/CashFlowStructItem.h"

#include <memory>

namespace z7::com {

/// The class CashFlowStructItem: a field of a schema, or one that the host creates.
class StructItemObject final : public DualObject<_CashFlowStructItem> {
public:
    /// The object of a field; null for a null pointer.
    [[nodiscard]] static adapters::automation::ComPtr<StructItemObject>
    of(const std::shared_ptr<cashflow::CashFlowStructItem>& item);
    ~StructItemObject() override;

    /// The field, shared with the schemas to which it was added.
    [[nodiscard]] const std::shared_ptr<cashflow::CashFlowStructItem>& item() const noexcept { return item_; }

    HRESULT STDMETHODCALLTYPE get_FieldName(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_FieldName(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_DataType(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_DataType(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_DataCanNull(VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_DataCanNull(VARIANT_BOOL value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_DefaultValue(VARIANT* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_DefaultValue(VARIANT value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_isSave(VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_isSave(VARIANT_BOOL value) noexcept override;

private:
    explicit StructItemObject(std::shared_ptr<cashflow::CashFlowStructItem> item);

    std::shared_ptr<cashflow::CashFlowStructItem> item_;
};

} // namespace z7::com
