#pragma once

#include "com/DualObject.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/model/CashFlowStruct.h"

namespace z7::com {

/// The class CashFlowStruct: the fields of a collection's rows. It is a copy that belongs to the host, which may add
/// and change fields and pass it to InsertSql; the collection and its rows keep theirs.
class StructObject final : public DualObject<_CashFlowStruct> {
public:
    /// A copy of a schema, with fields of its own.
    explicit StructObject(const cashflow::CashFlowStruct& structure);

    /// The schema.
    [[nodiscard]] const cashflow::CashFlowStruct& structure() const noexcept { return structure_; }

    HRESULT STDMETHODCALLTYPE Add(_CashFlowStructItem* Item) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Item(BSTR vntIndexKey, _CashFlowStructItem** field) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Fields(VARIANT* names) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Count(VARIANT* number) noexcept override;

private:
    cashflow::CashFlowStruct structure_;
};

} // namespace z7::com
