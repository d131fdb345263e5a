#include "z7cashflow/dialog/PickListReferClient.h"

#include "z7cashflow/dialog/loginConnection.h"
#include "z7cashflow/dialog/pickRecord.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/dialogStatements.h"

#include <utility>

namespace z7::cashflow {

PickListReferClient::PickListReferClient(std::unique_ptr<PickList> list) : list_(std::move(list)) {}

PickListReferClient::~PickListReferClient() = default;

bool PickListReferClient::ItemRefInit(std::shared_ptr<Z7Login>& /*login*/, bool /*flag*/, const std::string& itemClass,
                                      std::string& filter) {
    constexpr const char* cashItemClass = "98";
    filter_ = filter;
    return itemClass == cashItemClass;
}

void PickListReferClient::Show() {
    connection_ = createLoginConnection();
    openWithLogin(*connection_);
    auto items = connection_->createRecordset();
    items->CursorLocation(CursorLocation::client);
    items->Open(filled(statements::itemsUnder) + filter_ + filled(statements::itemOrder), connection_.get(),
                CursorType::snapshot, LockType::readOnly);
    const std::string code = modPublic::GetText("Z7.CW.GL.CashFlow.00035");
    const std::string name = modPublic::GetText("Z7.CW.GL.CashFlow.00036");
    if (pickRecord(*list_, name, {{"citemcode", {code, 1500, false}}, {"citemname", {name, 4500, false}}}, *items)) {
        recmx_ = items;
    } else {
        items->Close();
    }
}

} // namespace z7::cashflow
