#include "host/cli/failureJson.h"

#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace z7::cashflow::host {

namespace {

using Json = nlohmann::ordered_json;

/// Whether the text of a failure only introduces the text of its cause.
bool isCauseItself(HostText text) noexcept {
    return text == HostText::voucherFailed || text == HostText::databaseFailed;
}

} // namespace

Json failureJson(const Failure& failure, Language language) {
    if (failure.cause() && isCauseItself(failure.text())) {
        Json json = errorJson(*failure.cause(), language);
        json["exitCode"] = failure.exitCode();
        return json;
    }
    Json json = {{"code", failure.code()}, {"text", failure.message(language)}, {"exitCode", failure.exitCode()}};
    if (!failure.arguments().empty()) {
        json["arguments"] = failure.arguments();
    }
    if (!failure.faults().empty()) {
        Json& faults = json["faults"] = Json::array();
        for (const Failure::Fault& fault : failure.faults()) {
            faults.push_back({{"code", fault.code}, {"text", fault.line}});
        }
    }
    if (failure.cause()) {
        Json& cause = json["cause"] = errorJson(*failure.cause(), language);
        // An error without a reason of its own, such as that of a login, concerns no voucher here.
        if (failure.exitCode() == exit_code::database && cause["code"] == codeText(HostText::voucherFailed)) {
            cause["code"] = codeText(HostText::databaseFailed);
        }
    }
    return json;
}

} // namespace z7::cashflow::host
