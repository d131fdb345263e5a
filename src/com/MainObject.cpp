#include "com/MainObject.h"

#include "com/ByReference.h"
#include "com/CollectionObject.h"
#include "com/hostServices.h"

namespace z7::com {

adapters::automation::ComPtr<IUnknown> MainObject::kept() noexcept {
    return adapters::automation::ComPtr<IUnknown>(static_cast<_clsMain*>(this));
}

HRESULT MainObject::put_SetVouchLockSucc(VARIANT_BOOL value) noexcept {
    return run([&] { main_.SetVouchLockSucc(truth(value)); });
}

HRESULT MainObject::put_SetVouchEdit(VARIANT_BOOL value) noexcept {
    return run([&] { main_.SetVouchEdit(truth(value)); });
}

HRESULT MainObject::put_SetCurUserName(BSTR value) noexcept {
    return run([&] { main_.SetCurUserName(text(value)); });
}

HRESULT MainObject::put_SetVouchBillName(BSTR value) noexcept {
    return run([&] { main_.SetVouchBillName(text(value)); });
}

HRESULT MainObject::put_SetVouchState(SHORT value) noexcept {
    return run([&] { main_.SetVouchState(value); });
}

HRESULT MainObject::put_SetVouchIn(SHORT value) noexcept {
    return run([&] { main_.SetVouchIn(value); });
}

HRESULT MainObject::get_ReadOnly(VARIANT_BOOL* value) noexcept {
    return answer(value, [this] { return main_.ReadOnly(); });
}

HRESULT MainObject::put_ReadOnly(VARIANT_BOOL value) noexcept {
    return run([&] { main_.ReadOnly(truth(value)); });
}

HRESULT MainObject::putref_Login(IDispatch* value) noexcept {
    return run([&] { main_.Login(loginOf(value)); });
}

HRESULT MainObject::get_CashFlowCol(_CashFlowCollection** value) noexcept {
    return answer(value, [this] { return CollectionObject::of(main_.CashFlowCol()); });
}

HRESULT MainObject::putref_CashFlowCol(_CashFlowCollection* value) noexcept {
    return run([&] { main_.CashFlowCol(held(value)); });
}

HRESULT MainObject::ShowCashFlowOutVoucher(BSTR strVoucherTable, BSTR coutNo_id, DATE dbill_date,
                                           VARIANT_BOOL blnCreate, VARIANT_BOOL* blnCheckCF) noexcept {
    const auto self = kept();
    return run([&] {
        TruthReference check(blnCheckCF);
        main_.ShowCashFlowOutVoucher(text(strVoucherTable), text(coutNo_id), cashflow::Date(dbill_date),
                                     truth(blnCreate), check.pointer());
    });
}

HRESULT MainObject::ShowCashFlow(BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq, LONG iNo_id, DATE dbill_date,
                                 VARIANT_BOOL blnCreate, VARIANT_BOOL* blnCheckCF, SHORT* iyear) noexcept {
    const auto self = kept();
    return run([&] {
        TruthReference check(blnCheckCF);
        main_.ShowCashFlow(text(strVoucherTable), iPeriod, isignseq, iNo_id, cashflow::Date(dbill_date),
                           truth(blnCreate), check.pointer(), iyear);
    });
}

HRESULT MainObject::InitCashFlow(BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq, LONG iNo_id, DATE dbill_date,
                                 VARIANT_BOOL blnCreate, VARIANT_BOOL* blnCheckCF, VARIANT_BOOL* prepared) noexcept {
    return answer(prepared, [&] {
        TruthReference check(blnCheckCF);
        return main_.InitCashFlow(text(strVoucherTable), iPeriod, isignseq, iNo_id, cashflow::Date(dbill_date),
                                  truth(blnCreate), check.pointer());
    });
}

} // namespace z7::com
