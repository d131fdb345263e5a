#include "z7cashflow/data/DataProvider.h"

#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/itemStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

// Cash-flow items, drafts and templates. These reads run on a session of their own, opened with the connection string
// of the host's connection: what the host has not committed is not seen.

namespace z7::cashflow {

namespace {

constexpr std::int32_t questionStyle = 32;
constexpr std::int32_t noticeStyle = 64;

std::shared_ptr<Recordset> openOnOwnSession(Connection& objCon, const std::string& statement, CursorType cursorType,
                                            LockType lockType) {
    auto result = objCon.createRecordset();
    result->CursorLocation(CursorLocation::client);
    result->Open(statement, objCon.ConnectionString(), cursorType, lockType);
    return result;
}

std::shared_ptr<Recordset> readOnOwnSession(Connection& objCon, const std::string& statement) {
    return openOnOwnSession(objCon, statement, CursorType::forwardOnly, LockType::readOnly);
}

} // namespace

std::string DataProvider::GetCFItemName(Connection& objCon, const std::string& cItemCode) {
    const auto result = readOnOwnSession(objCon, filled(statements::itemName, cItemCode));
    std::string name = result->atEnd() ? std::string() : toText(result->Fields().Item("citemname"));
    result->Close();
    return name;
}

bool DataProvider::GetCashFlowTemplate(Connection& objCon, const std::string& cDataSource, bool bDir, Date /*dDate*/,
                                       std::string& cItemCode, std::optional<Date>* dStartDate) {
    const auto result =
        readOnOwnSession(objCon, filled(statements::itemTemplate, modPublic::GetIYear(), cDataSource, bDir));
    const bool found = !result->atEnd();
    cItemCode = found ? toText(result->Fields().Item("cItemCode")) : std::string();
    if (dStartDate != nullptr) {
        const Variant start = found ? result->Fields().Item("dStartDate") : Variant();
        *dStartDate = start.isNull() ? std::nullopt : std::optional(toDate(start));
    }
    result->Close();
    return found;
}

bool DataProvider::GetCashFlowFromDraft(Connection& objCon, std::int16_t inid, std::string& cCashItem) {
    Z7Login& login = modPublic::requiredLogin();
    const auto result = readOnOwnSession(objCon, filled(statements::draftItem, login.userId(), inid));
    const bool found = !result->atEnd();
    cCashItem = found ? toTextOrEmpty(result->Fields().Item("cCashItem")) : std::string();
    result->Close();
    return found;
}

bool DataProvider::SaveCashFlowTemplate(Connection& objCon, const std::string& cDataSource, bool bDir,
                                        const std::string& cItemCode, Date dStartDate) {
    if (cItemCode.empty() || cDataSource.empty()) {
        return false;
    }
    const auto rows = openOnOwnSession(objCon, filled(statements::itemTemplatesNewestFirst, cDataSource, bDir),
                                       CursorType::dynamic, LockType::pessimistic);
    const auto tell = [this](const char* textKey, std::int32_t style) {
        bool bCancel = false;
        if (CashFlowTemplateSave) {
            CashFlowTemplateSave(modPublic::GetText(textKey), style, bCancel);
        }
        return bCancel;
    };
    const bool isNew = rows->atEnd();
    if (!isNew && tell("Z7.CW.GL.CashFlow.00065", questionStyle)) {
        rows->Close();
        return false;
    }
    if (isNew) {
        rows->AddNew();
    }
    FieldList& fields = rows->Fields();
    fields.Item("bDataStyle", std::int16_t{0});
    fields.Item("cDataSource", cDataSource);
    fields.Item("bDir", std::int16_t{bDir});
    fields.Item("cItemCode", cItemCode);
    if (isNew) {
        fields.Item("dStartDate", dStartDate);
    }
    rows->Update();
    tell("Z7.CW.GL.CashFlow.00064", noticeStyle);
    rows->Close();
    return false;
}

bool DataProvider::GetCashFlowItem(Connection& objCon, const std::string& cDataSource, bool bDir, Date dDate,
                                   std::string& cItemCode, std::string& cItemName) {
    const std::string day = dateText(dDate);
    const auto result = readOnOwnSession(objCon, filled(statements::itemTemplateOnDate, cDataSource, bDir, day, day));
    cItemCode = result->atEnd() ? std::string() : toText(result->Fields().Item("cItemcode"));
    result->Close();
    if (!cItemCode.empty()) {
        cItemName = GetCFItemName(objCon, cItemCode);
    }
    return false;
}

} // namespace z7::cashflow
