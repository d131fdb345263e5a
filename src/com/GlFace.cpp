#include "com/GlFace.h"

#include "com/ByReference.h"
#include "com/CollectionObject.h"
#include "com/hostServices.h"

namespace z7::com {

GlFace::GlFace(Object& object, cashflow::IGlVoucherProvider& contract)
    : Face(object, L"IGlVoucherProvider"), contract_(contract) {}

HRESULT GlFace::get_VoucherTempTable(BSTR* value) noexcept {
    return answer(value, [this] { return contract_.VoucherTempTable(); });
}

HRESULT GlFace::put_VoucherTempTable(BSTR value) noexcept {
    return run([&] { contract_.VoucherTempTable(text(value)); });
}

HRESULT GlFace::putref_objLogin(IDispatch* value) noexcept {
    return run([&] { contract_.objLogin(loginOf(value)); });
}

HRESULT GlFace::SetOldVouchNoID(LONG* vdata, VARIANT* nothing) noexcept {
    return answer(nothing, [&] {
        if (vdata == nullptr) {
            raiseHostError(cashflow::errors::badArgument, "SetOldVouchNoID needs the former number");
        }
        contract_.SetOldVouchNoID(*vdata);
        return Empty();
    });
}

HRESULT GlFace::GetCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq,
                                     LONG iNo_id, DATE dbill_date, _CashFlowCollection** rows) noexcept {
    return answer(rows, [&] {
        return CollectionObject::of(contract_.GetCashFlowColFromDB(
            *lentConnection(objCon), text(strVoucherTable), iPeriod, isignseq, iNo_id, cashflow::Date(dbill_date)));
    });
}

HRESULT GlFace::CreateCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq,
                                        LONG iNo_id, DATE dbill_date, _CashFlowCollection** rows) noexcept {
    return answer(rows, [&] {
        return CollectionObject::of(contract_.CreateCashFlowColFromDB(
            *lentConnection(objCon), text(strVoucherTable), iPeriod, isignseq, iNo_id, cashflow::Date(dbill_date)));
    });
}

HRESULT GlFace::CheckKmFrom(IDispatch** objCon, _CashFlowCollection* objCFCol, BSTR* strInfo,
                            VARIANT_BOOL* fits) noexcept {
    return answer(fits, [&] {
        TextReference reason(strInfo);
        return storingBack(
            [&] { return contract_.CheckKmFrom(*lentConnection(objCon), held(objCFCol), reason.pointer()); }, reason);
    });
}

HRESULT GlFace::CheckCFColFromDB(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq, LONG iNo_id,
                                 _CashFlowCollection* objCFCol, BSTR* strInfo, VARIANT_BOOL* fits) noexcept {
    return answer(fits, [&] {
        TextReference reason(strInfo);
        return storingBack(
            [&] {
                return contract_.CheckCFColFromDB(*lentConnection(objCon), text(strVoucherTable), iPeriod, isignseq,
                                                  iNo_id, held(objCFCol), reason.pointer());
            },
            reason);
    });
}

HRESULT GlFace::SaveCashFlowCol(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq, LONG iNo_id,
                                _CashFlowCollection** objCFCol, VARIANT_BOOL* blnCheckCF,
                                VARIANT_BOOL* saved) noexcept {
    return answer(saved, [&] {
        RowsReference rows(objCFCol);
        TruthReference check(blnCheckCF);
        return storingBack(
            [&] {
                return contract_.SaveCashFlowCol(*lentConnection(objCon), text(strVoucherTable), iPeriod, isignseq,
                                                 iNo_id, rows.pointer(), check.pointer());
            },
            rows, check);
    });
}

HRESULT GlFace::SaveCashFlowColEx(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq, LONG iNo_id,
                                  DATE bill_date, _CashFlowCollection** objCFCol, VARIANT_BOOL* blnCheckCF,
                                  VARIANT_BOOL* saved) noexcept {
    return answer(saved, [&] {
        RowsReference rows(objCFCol);
        TruthReference check(blnCheckCF);
        return storingBack(
            [&] {
                return contract_.SaveCashFlowColEx(*lentConnection(objCon), text(strVoucherTable), iPeriod, isignseq,
                                                   iNo_id, cashflow::Date(bill_date), rows.pointer(), check.pointer());
            },
            rows, check);
    });
}

HRESULT GlFace::GetCashFlowColFromXml(IDispatch** objCon, BSTR strVoucherXml, VARIANT_BOOL blnCreateCF,
                                      BSTR* xml) noexcept {
    return answer(xml, [&] {
        return contract_.GetCashFlowColFromXml(*lentConnection(objCon), text(strVoucherXml), truth(blnCreateCF));
    });
}

HRESULT GlFace::SaveCashFlowColFromXml(IDispatch** objCon, BSTR strVoucherTable, BYTE iPeriod, SHORT isignseq,
                                       LONG iNo_id, BSTR* strCFColxml, VARIANT_BOOL* blnCheckCF,
                                       VARIANT_BOOL* saved) noexcept {
    return answer(saved, [&] {
        TextReference xml(strCFColxml);
        TruthReference check(blnCheckCF);
        return storingBack(
            [&] {
                return contract_.SaveCashFlowColFromXml(*lentConnection(objCon), text(strVoucherTable), iPeriod,
                                                        isignseq, iNo_id, xml.pointer(), check.pointer());
            },
            xml, check);
    });
}

HRESULT GlFace::put_bFromDraft(VARIANT_BOOL value) noexcept {
    return run([&] { contract_.bFromDraft(truth(value)); });
}

} // namespace z7::com
