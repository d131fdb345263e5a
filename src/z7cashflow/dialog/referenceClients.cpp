#include "z7cashflow/dialog/referenceClients.h"

#include "z7cashflow/dialog/PickListReferClient.h"
#include "z7cashflow/dialog/PickListServerRefClient.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"

namespace z7::cashflow {

namespace {

DialogFactory& requiredFactory() {
    const auto& factory = modPublic::context().dialogFactory;
    if (!factory) {
        raisePlatformError(Reason::dialogFactoryMissing);
    }
    return *factory;
}

} // namespace

std::unique_ptr<ServerRefClient> createServerRefClient() {
    DialogFactory& factory = requiredFactory();
    auto client = factory.createServerRefClient();
    return client ? std::move(client) : std::make_unique<PickListServerRefClient>(factory.createPickList());
}

std::unique_ptr<ZQReferClient> createReferClient() {
    DialogFactory& factory = requiredFactory();
    auto client = factory.createReferClient();
    return client ? std::move(client) : std::make_unique<PickListReferClient>(factory.createPickList());
}

} // namespace z7::cashflow
