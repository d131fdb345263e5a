#pragma once

#include "com/DualObject.h"
#include "com/SqlFace.h"
#include "com/StructObject.h"
#include "com/XmlFace.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/model/CashFlowCollection.h"

#include <memory>

namespace z7::com {

/// The class CashFlowCollection: the cash-flow rows of one voucher.
class CollectionObject final : public DualObject<_CashFlowCollection> {
public:
    /// The object of a collection, which has only one; null for a null pointer.
    [[nodiscard]] static adapters::automation::ComPtr<CollectionObject>
    of(const std::shared_ptr<cashflow::CashFlowCollection>& collection);
    ~CollectionObject() override;

    /// The collection.
    [[nodiscard]] const std::shared_ptr<cashflow::CashFlowCollection>& collection() const noexcept {
        return collection_;
    }

    HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE CreateCFObject(_CashFlow** row) noexcept override;
    HRESULT STDMETHODCALLTYPE UpdateCol(BYTE iPeriod, SHORT isignseq, LONG iNo_id, DATE dbill_date) noexcept override;
    HRESULT STDMETHODCALLTYPE get_CFStruct(_CashFlowStruct** structure) noexcept override;
    HRESULT STDMETHODCALLTYPE get_iPeriod(BYTE* value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_dbill_date(DATE* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_dbill_date(DATE value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_VoucherTable(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_VoucherTable(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_iPeriod(BYTE value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_isignseq(SHORT* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_isignseq(SHORT value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_iNo_id(SHORT* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_iNo_id(SHORT value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_ibackno_id(SHORT* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_ibackno_id(SHORT value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_coutNo_id(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_coutNo_id(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE Add(_CashFlow* objItem) noexcept override;
    HRESULT STDMETHODCALLTYPE Insert(_CashFlow* objItem, BSTR BeforeItem) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT vntIndexKey, _CashFlow** row) noexcept override;
    HRESULT STDMETHODCALLTYPE get_Count(LONG* number) noexcept override;
    HRESULT STDMETHODCALLTYPE Remove(VARIANT vntIndexKey) noexcept override;
    HRESULT STDMETHODCALLTYPE GetCashFlowSum(double* sum) noexcept override;
    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** rows) noexcept override;
    HRESULT STDMETHODCALLTYPE UpdateInid(BYTE iPeriod, SHORT isignseq, LONG iNo_id, SHORT CurInid,
                                         VARIANT_BOOL bInsert) noexcept override;

private:
    explicit CollectionObject(std::shared_ptr<cashflow::CashFlowCollection> collection);

    std::shared_ptr<cashflow::CashFlowCollection> collection_;
    adapters::automation::ComPtr<StructObject> struct_; ///< from the first use of CFStruct
    SqlFace sql_;
    XmlFace xml_;
};

} // namespace z7::com
