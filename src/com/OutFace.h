#pragma once

#include "com/Face.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/providers/IOutVoucherProvider.h"

namespace z7::com {

/// The contract for vouchers of other subsystems, as an interface of a provider.
class OutFace final : public Face<_IOutVoucherProvider> {
public:
    /// The interface of an object over its contract, which the object owns.
    OutFace(Object& object, cashflow::IOutVoucherProvider& contract);

    HRESULT STDMETHODCALLTYPE get_VoucherTempTable(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_VoucherTempTable(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_objLogin(IDispatch* value) noexcept override;
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromXml(IDispatch** objCon, BSTR strVoucherXml, VARIANT_BOOL blnCreateCF,
                                                    BSTR* xml) noexcept override;
    HRESULT STDMETHODCALLTYPE GetCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id,
                                                   BSTR* xml) noexcept override;
    HRESULT STDMETHODCALLTYPE CreateCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id,
                                                      BSTR* xml) noexcept override;
    HRESULT STDMETHODCALLTYPE CheckCFColFromXml(IDispatch** objCon, BSTR strVoucherXml, BSTR strCFColxml, BSTR* strInfo,
                                                VARIANT_BOOL* fits) noexcept override;
    HRESULT STDMETHODCALLTYPE CheckCFColFromDB(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id,
                                               BSTR strCFColxml, BSTR* strInfo, VARIANT_BOOL* fits) noexcept override;
    HRESULT STDMETHODCALLTYPE SaveCashFlowCol(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id,
                                              BSTR* strCFColxml, VARIANT_BOOL* blnCheckCF,
                                              VARIANT_BOOL* saved) noexcept override;

private:
    cashflow::IOutVoucherProvider& contract_;
};

} // namespace z7::com
