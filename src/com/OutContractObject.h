#pragma once

#include "com/DualObject.h"
#include "com/Z7CashFlow.h"

namespace z7::com {

/// The class IOutVoucherProvider, the contract alone. Hosts can create it, as they can create any class; its members
/// succeed, do nothing and return the zero of their type.
class OutContractObject final : public DualObject<_IOutVoucherProvider> {
public:
    HRESULT STDMETHODCALLTYPE get_VoucherTempTable(BSTR* value) noexcept override { return storeNothing(value); }
    HRESULT STDMETHODCALLTYPE put_VoucherTempTable(BSTR /*value*/) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE putref_objLogin(IDispatch* /*value*/) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromXml(IDispatch** /*objCon*/, BSTR /*strVoucherXml*/,
                                                    VARIANT_BOOL /*blnCreateCF*/, BSTR* xml) noexcept override {
        return storeNothing(xml);
    }
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromDB(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BSTR /*coutNo_id*/,
                                                   BSTR* xml) noexcept override {
        return storeNothing(xml);
    }
    HRESULT STDMETHODCALLTYPE CreateCashFlowColFromDB(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/,
                                                      BSTR /*coutNo_id*/, BSTR* xml) noexcept override {
        return storeNothing(xml);
    }
    HRESULT STDMETHODCALLTYPE CheckCFColFromXml(IDispatch** /*objCon*/, BSTR /*strVoucherXml*/, BSTR /*strCFColxml*/,
                                                BSTR* /*strInfo*/, VARIANT_BOOL* fits) noexcept override {
        return storeNothing(fits);
    }
    HRESULT STDMETHODCALLTYPE CheckCFColFromDB(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BSTR /*coutNo_id*/,
                                               BSTR /*strCFColxml*/, BSTR* /*strInfo*/,
                                               VARIANT_BOOL* fits) noexcept override {
        return storeNothing(fits);
    }
    HRESULT STDMETHODCALLTYPE SaveCashFlowCol(IDispatch** /*objCon*/, BSTR /*strVoucherTable*/, BSTR /*coutNo_id*/,
                                              BSTR* /*strCFColxml*/, VARIANT_BOOL* /*blnCheckCF*/,
                                              VARIANT_BOOL* saved) noexcept override {
        return storeNothing(saved);
    }
};

} // namespace z7::com
