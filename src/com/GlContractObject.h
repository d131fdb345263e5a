#pragma once

#include "com/DualObject.h"
#include "com/Z7CashFlow.h"

namespace z7::com {

/// The class IGlVoucherProvider, the contract alone. Hosts can create it, as they can create any class; its members
/// succeed, do nothing and return the zero of their type.
class GlContractObject final : public DualObject<_IGlVoucherProvider> {
public:
    HRESULT STDMETHODCALLTYPE get_VoucherTempTable(BSTR* value) noexcept override { return storeNothing(value); }
    HRESULT STDMETHODCALLTYPE put_VoucherTempTable(BSTR /*value*/) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE putref_objLogin(IDispatch* /*value*/) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetOldVouchNoID(LONG* /*vdata*/, VARIANT* nothing) noexcept override {
        return storeNothing(nothing);
    }
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromDB(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BYTE /*iPeriod*/,
                                                   SHORT /*isignseq*/, LONG /*iNo_id*/, DATE /*dbill_date*/,
                                                   _CashFlowCollection** rows) noexcept override {
        return storeNothing(rows);
    }
    HRESULT STDMETHODCALLTYPE CreateCashFlowColFromDB(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/,
                                                      BYTE /*iPeriod*/, SHORT /*isignseq*/, LONG /*iNo_id*/,
                                                      DATE /*dbill_date*/,
                                                      _CashFlowCollection** rows) noexcept override {
        return storeNothing(rows);
    }
    HRESULT STDMETHODCALLTYPE CheckKmFrom(IDispatch** /*objCon*/, _CashFlowCollection* /*objCFCol*/, BSTR* /*strInfo*/,
                                          VARIANT_BOOL* fits) noexcept override {
        return storeNothing(fits);
    }
    HRESULT STDMETHODCALLTYPE CheckCFColFromDB(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BYTE /*iPeriod*/,
                                               SHORT /*isignseq*/, LONG /*iNo_id*/, _CashFlowCollection* /*objCFCol*/,
                                               BSTR* /*strInfo*/, VARIANT_BOOL* fits) noexcept override {
        return storeNothing(fits);
    }
    HRESULT STDMETHODCALLTYPE SaveCashFlowCol(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BYTE /*iPeriod*/,
                                              SHORT /*isignseq*/, LONG /*iNo_id*/, _CashFlowCollection** /*objCFCol*/,
                                              VARIANT_BOOL* /*blnCheckCF*/, VARIANT_BOOL* saved) noexcept override {
        return storeNothing(saved);
    }
    HRESULT STDMETHODCALLTYPE SaveCashFlowColEx(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BYTE /*iPeriod*/,
                                                SHORT /*isignseq*/, LONG /*iNo_id*/, DATE /*bill_date*/,
                                                _CashFlowCollection** /*objCFCol*/, VARIANT_BOOL* /*blnCheckCF*/,
                                                VARIANT_BOOL* saved) noexcept override {
        return storeNothing(saved);
    }
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromXml(IDispatch** /*objCon*/, BSTR /*strVoucherXml*/,
                                                    VARIANT_BOOL /*blnCreateCF*/, BSTR* xml) noexcept override {
        return storeNothing(xml);
    }
    HRESULT STDMETHODCALLTYPE SaveCashFlowColFromXml(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BYTE /*iPeriod*/,
                                                     SHORT /*isignseq*/, LONG /*iNo_id*/, BSTR* /*strCFColxml*/,
                                                     VARIANT_BOOL* /*blnCheckCF*/,
                                                     VARIANT_BOOL* saved) noexcept override {
        return storeNothing(saved);
    }
    HRESULT STDMETHODCALLTYPE put_bFromDraft(VARIANT_BOOL /*value*/) noexcept override { return S_OK; }
};

} // namespace z7::com
