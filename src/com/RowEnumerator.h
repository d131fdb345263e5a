#pragma once

#include "adapters/ado/automation/system.h"
#include "com/ModuleUse.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

namespace z7::com {

/// Goes through the rows that a collection has when it is created, in their order. Rows may be removed and added on the
/// way: removed ones are left out, added ones are not visited. It keeps the collection alive.
class RowEnumerator final : public IEnumVARIANT {
public:
    /// An enumerator at the first row, without references.
    explicit RowEnumerator(std::shared_ptr<cashflow::CashFlowCollection> collection);
    RowEnumerator(const RowEnumerator&) = delete;
    RowEnumerator& operator=(const RowEnumerator&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* rows, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) noexcept override;

private:
    ~RowEnumerator() = default;
    [[nodiscard]] std::shared_ptr<cashflow::CashFlow> nextRow();

    ModuleUse use_;
    std::atomic<ULONG> references_ = 0;
    std::shared_ptr<cashflow::CashFlowCollection> collection_;
    std::vector<std::shared_ptr<cashflow::CashFlow>> rows_;
    std::size_t next_ = 0;
};

} // namespace z7::com
