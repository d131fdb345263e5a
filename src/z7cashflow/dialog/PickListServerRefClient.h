#pragma once

#include "z7cashflow/ports/PickList.h"
#include "z7cashflow/ports/ServerRefClient.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow {

/// The reference client for hosts without one of the suite: shows the rows in a pick list, with columns and title
/// from the provider's document. If the provider fails, by an error or a message, the result is a failure with that
/// text.
class PickListServerRefClient final : public ServerRefClient {
public:
    explicit PickListServerRefClient(std::unique_ptr<PickList> list);
    ~PickListServerRefClient() override;

    void RefName(const std::string& name) override { RefName_ = name; }
    void RefStyle(std::int32_t /*style*/) override {}
    bool ShowServerRef(std::shared_ptr<ReferenceProvider>& provider, std::shared_ptr<Recordset>& shown,
                       std::shared_ptr<Recordset>& picked, std::string& errorText) override;

private:
    std::unique_ptr<PickList> list_;
    std::string RefName_;
};

} // namespace z7::cashflow
