#pragma once

#include "com/DualObject.h"
#include "com/SqlFace.h"
#include "com/XmlFace.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/model/CashFlow.h"

#include <memory>

namespace z7::com {

/// The class CashFlow: a cash-flow row. It keeps the collection to which the row was added alive, so that a host that
/// holds nothing but a row can go back to its collection.
class RowObject final : public DualObject<_CashFlow> {
public:
    /// The object of a row, which has only one; null for a null pointer.
    [[nodiscard]] static adapters::automation::ComPtr<RowObject> of(const std::shared_ptr<cashflow::CashFlow>& row);
    ~RowObject() override;

    /// The row.
    [[nodiscard]] const std::shared_ptr<cashflow::CashFlow>& row() const noexcept { return row_; }
    /// Keeps the row's present collection alive; called when it has changed.
    void keepCollection() noexcept { collection_ = row_->objParent(); }

    HRESULT STDMETHODCALLTYPE get_objParent(_CashFlowCollection** value) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_objParent(_CashFlowCollection* value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_key(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_key(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Item(BSTR Field, VARIANT* value) noexcept override;
    HRESULT STDMETHODCALLTYPE SetValue(BSTR Field, VARIANT vdata) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Count(LONG* number) noexcept override;
    HRESULT STDMETHODCALLTYPE CheckCashFlow(BSTR* strInfo, VARIANT_BOOL* complete) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Fields(VARIANT* names) noexcept override;

private:
    explicit RowObject(std::shared_ptr<cashflow::CashFlow> row);

    std::shared_ptr<cashflow::CashFlow> row_;
    std::shared_ptr<cashflow::CashFlowCollection> collection_;
    SqlFace sql_;
    XmlFace xml_;
};

} // namespace z7::com
