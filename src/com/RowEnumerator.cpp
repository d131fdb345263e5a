#include "com/RowEnumerator.h"

#include "adapters/ado/automation/OwnedVariant.h"
#include "com/RowObject.h"
#include "com/guarded.h"

#include <algorithm>
#include <utility>

namespace z7::com {

RowEnumerator::RowEnumerator(std::shared_ptr<cashflow::CashFlowCollection> collection)
    : collection_(std::move(collection)), rows_(collection_->begin(), collection_->end()) {}

HRESULT RowEnumerator::QueryInterface(REFIID id, void** out) noexcept {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = nullptr;
    if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IEnumVARIANT)) {
        return E_NOINTERFACE;
    }
    *out = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
}

ULONG RowEnumerator::AddRef() noexcept { return ++references_; }

ULONG RowEnumerator::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

std::shared_ptr<cashflow::CashFlow> RowEnumerator::nextRow() {
    while (next_ < rows_.size()) {
        const auto& row = rows_[next_++];
        if (std::find(collection_->begin(), collection_->end(), row) != collection_->end()) {
            return row;
        }
    }
    return nullptr;
}

HRESULT RowEnumerator::Next(ULONG count, VARIANT* rows, ULONG* fetched) noexcept {
    if (rows == nullptr || (fetched == nullptr && count != 1)) {
        return E_POINTER;
    }
    ULONG found = 0;
    const HRESULT result = guarded(IID_IEnumVARIANT, [&]() -> HRESULT {
        for (; found < count; ++found) {
            const auto row = nextRow();
            if (!row) {
                return S_FALSE;
            }
            const auto object = RowObject::of(row);
            rows[found] = adapters::automation::OwnedVariant(static_cast<IDispatch*>(object.get())).detach();
        }
        return S_OK;
    });
    if (FAILED(result)) {
        std::for_each(rows, rows + found, [](VARIANT& row) { VariantClear(&row); });
        found = 0;
    }
    if (fetched != nullptr) {
        *fetched = found;
    }
    return result;
}

HRESULT RowEnumerator::Skip(ULONG count) noexcept {
    return guarded(IID_IEnumVARIANT, [&]() -> HRESULT {
        for (ULONG i = 0; i < count; ++i) {
            if (!nextRow()) {
                return S_FALSE;
            }
        }
        return S_OK;
    });
}

HRESULT RowEnumerator::Reset() noexcept {
    return guarded(IID_IEnumVARIANT, [this] {
        rows_.assign(collection_->begin(), collection_->end());
        next_ = 0;
    });
}

HRESULT RowEnumerator::Clone(IEnumVARIANT** out) noexcept {
    if (out == nullptr) {
        return E_POINTER;
    }
    *out = nullptr;
    return guarded(IID_IEnumVARIANT, [&] {
        adapters::automation::ComPtr<RowEnumerator> copy(new RowEnumerator(collection_));
        copy->rows_ = rows_;
        copy->next_ = next_;
        *out = copy.detach();
    });
}

} // namespace z7::com
