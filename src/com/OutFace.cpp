#include "com/OutFace.h"

#include "com/ByReference.h"
#include "com/CollectionObject.h"
#include "com/hostServices.h"

namespace z7::com {

OutFace::OutFace(Object& object, cashflow::IOutVoucherProvider& contract)
    : Face(object, L"IOutVoucherProvider"), contract_(contract) {}

HRESULT OutFace::get_VoucherTempTable(BSTR* value) noexcept {
    return answer(value, [this] { return contract_.VoucherTempTable(); });
}

HRESULT OutFace::put_VoucherTempTable(BSTR value) noexcept {
    return run([&] { contract_.VoucherTempTable(text(value)); });
}

HRESULT OutFace::putref_objLogin(IDispatch* value) noexcept {
    return run([&] { contract_.objLogin(loginOf(value)); });
}

HRESULT OutFace::GetCashFlowColFromXml(IDispatch** objCon, BSTR strVoucherXml, VARIANT_BOOL blnCreateCF,
                                       BSTR* xml) noexcept {
    return answer(xml, [&] {
        return contract_.GetCashFlowColFromXml(*lentConnection(objCon), text(strVoucherXml), truth(blnCreateCF));
    });
}

HRESULT OutFace::GetCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id, BSTR* xml) noexcept {
    return answer(xml, [&] {
        return contract_.GetCashFlowColFromDB(*lentConnection(objCon), text(strVoucherTable), text(coutNo_id));
    });
}

HRESULT OutFace::CreateCashFlowColFromDB(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id, BSTR* xml) noexcept {
    return answer(xml, [&] {
        return contract_.CreateCashFlowColFromDB(*lentConnection(objCon), text(strVoucherTable), text(coutNo_id));
    });
}

HRESULT OutFace::CheckCFColFromXml(IDispatch** objCon, BSTR strVoucherXml, BSTR strCFColxml, BSTR* strInfo,
                                   VARIANT_BOOL* fits) noexcept {
    return answer(fits, [&] {
        TextReference reason(strInfo);
        return storingBack(
            [&] {
                return contract_.CheckCFColFromXml(*lentConnection(objCon), text(strVoucherXml), text(strCFColxml),
                                                   reason.pointer());
            },
            reason);
    });
}

HRESULT OutFace::CheckCFColFromDB(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id, BSTR strCFColxml,
                                  BSTR* strInfo, VARIANT_BOOL* fits) noexcept {
    return answer(fits, [&] {
        TextReference reason(strInfo);
        return storingBack(
            [&] {
                return contract_.CheckCFColFromDB(*lentConnection(objCon), text(strVoucherTable), text(coutNo_id),
                                                  text(strCFColxml), reason.pointer());
            },
            reason);
    });
}

HRESULT OutFace::SaveCashFlowCol(IDispatch** objCon, BSTR strVoucherTable, BSTR coutNo_id, BSTR* strCFColxml,
                                 VARIANT_BOOL* blnCheckCF, VARIANT_BOOL* saved) noexcept {
    return answer(saved, [&] {
        TextReference xml(strCFColxml);
        TruthReference check(blnCheckCF);
        return storingBack(
            [&] {
                return contract_.SaveCashFlowCol(*lentConnection(objCon), text(strVoucherTable), text(coutNo_id),
                                                 xml.pointer(), check.pointer());
            },
            xml, check);
    });
}

} // namespace z7::com
