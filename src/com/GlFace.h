#pragma once

#include "com/Face.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/providers/IGlVoucherProvider.h"

namespace z7::com {

/// The contract for vouchers of the ledger, as an interface of a provider.
class GlFace final : public Face<_IGlVoucherProvider> {
public:
    /// The interface of an object over its contract, which the object owns.
    GlFace(Object& object, cashflow::IGlVoucherProvider& contract);

    HRESULT STDMETHODCALLTYPE get_VoucherTempTable(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_VoucherTempTable(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_objLogin(IDispatch* value) noexcept override;
    HRESULT STDMETHODCALLTYPE SetOldVouchNoID(LONG* vdata, VARIANT* nothing) noexcept override;
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod,
                                                   SHORT isignseq, LONG iNo_id, DATE dbill_date,
                                                   _CashFlowCollection** rows) noexcept override;
    HRESULT STDMETHODCALLTYPE CreateCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod,
                                                      SHORT isignseq, LONG iNo_id, DATE dbill_date,
                                                      _CashFlowCollection** rows) noexcept override;
    HRESULT STDMETHODCALLTYPE CheckKmFrom(IDispatch** objCon, _CashFlowCollection* objCFCol, BSTR* strInfo,
                                          VARIANT_BOOL* fits) noexcept override;
    HRESULT STDMETHODCALLTYPE CheckCFColFromDB(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq,
                                               LONG iNo_id, _CashFlowCollection* objCFCol, BSTR* strInfo,
                                               VARIANT_BOOL* fits) noexcept override;
    HRESULT STDMETHODCALLTYPE SaveCashFlowCol(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq,
                                              LONG iNo_id, _CashFlowCollection** objCFCol, VARIANT_BOOL* blnCheckCF,
                                              VARIANT_BOOL* saved) noexcept override;
    HRESULT STDMETHODCALLTYPE SaveCashFlowColEx(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq,
                                                LONG iNo_id, DATE bill_date, _CashFlowCollection** objCFCol,
                                                VARIANT_BOOL* blnCheckCF, VARIANT_BOOL* saved) noexcept override;
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromXml(IDispatch** objCon, BSTR strVoucherXml, VARIANT_BOOL blnCreateCF,
                                                    BSTR* xml) noexcept override;
    HRESULT STDMETHODCALLTYPE SaveCashFlowColFromXml(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod,
                                                     SHORT isignseq, LONG iNo_id, BSTR* strCFColxml,
                                                     VARIANT_BOOL* blnCheckCF, VARIANT_BOOL* saved) noexcept override;
    HRESULT STDMETHODCALLTYPE put_bFromDraft(VARIANT_BOOL value) noexcept override;

private:
    cashflow::IGlVoucherProvider& contract_;
};

} // namespace z7::com
