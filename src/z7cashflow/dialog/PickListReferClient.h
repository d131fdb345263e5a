#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/PickList.h"
#include "z7cashflow/ports/ZQReferClient.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// The item client for hosts without one of the suite: reads the cash-flow items that match the filter on its own
/// session and shows them in a pick list. Other classes of items cannot be shown.
class PickListReferClient final : public ZQReferClient {
public:
    explicit PickListReferClient(std::unique_ptr<PickList> list);
    ~PickListReferClient() override;

    void SetRWAuth(const std::string& /*first*/, const std::string& /*second*/, bool /*third*/) override {}
    bool ItemRefInit(std::shared_ptr<Z7Login>& login, bool flag, const std::string& itemClass,
                     std::string& filter) override;
    void Show() override;
    [[nodiscard]] std::shared_ptr<Recordset> recmx() override { return recmx_; }

private:
    std::unique_ptr<PickList> list_;
    std::string filter_;
    std::shared_ptr<Connection> connection_;
    std::shared_ptr<Recordset> recmx_;
};

} // namespace z7::cashflow
