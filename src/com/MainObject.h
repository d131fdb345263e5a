#pragma once

#include "adapters/ado/automation/ComPtr.h"
#include "com/DualObject.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/dialog/clsMain.h"

namespace z7::com {

/// The class clsMain: the entry for voucher screens.
class MainObject final : public DualObject<_clsMain> {
public:
    HRESULT STDMETHODCALLTYPE put_SetVouchLockSucc(VARIANT_BOOL value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_SetVouchEdit(VARIANT_BOOL value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_SetCurUserName(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_SetVouchBillName(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_SetVouchState(SHORT value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_SetVouchIn(SHORT value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_ReadOnly(VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_ReadOnly(VARIANT_BOOL value) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_Login(IDispatch* value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_CashFlowCol(_CashFlowCollection** value) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_CashFlowCol(_CashFlowCollection* value) noexcept override;
    HRESULT STDMETHODCALLTYPE ShowCashFlowOutVoucher(BSTR strVoucherTable, BSTR coutNo_id, DATE dbill_date,
                                                     VARIANT_BOOL blnCreate,
                                                     VARIANT_BOOL* blnCheckCF) noexcept override;
    HRESULT STDMETHODCALLTYPE ShowCashFlow(BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq, LONG iNo_id,
                                           DATE dbill_date, VARIANT_BOOL blnCreate, VARIANT_BOOL* blnCheckCF,
                                           SHORT* iyear) noexcept override;
    HRESULT STDMETHODCALLTYPE InitCashFlow(BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq, LONG iNo_id,
                                           DATE dbill_date, VARIANT_BOOL blnCreate, VARIANT_BOOL* blnCheckCF,
                                           VARIANT_BOOL* prepared) noexcept override;

private:
    /// A reference to this object, for members in which hosts handle messages and may release it.
    [[nodiscard]] adapters::automation::ComPtr<IUnknown> kept() noexcept;

    cashflow::clsMain main_;
};

} // namespace z7::com
