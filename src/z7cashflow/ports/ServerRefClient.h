#pragma once

#include "z7cashflow/ports/Recordset.h"
#include "z7cashflow/ports/ReferenceProvider.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow {

/// The suite's pop-up over rows that a ReferenceProvider serves. A new one is made for each use.
class ServerRefClient {
public:
    virtual ~ServerRefClient() = default;

    /// The reference that the provider is asked for, such as "voucher".
    virtual void RefName(const std::string& name) = 0;
    /// The look of the pop-up. 5 is the only value in use: one line is picked.
    virtual void RefStyle(std::int32_t style) = 0;
    /// Shows the pop-up until the user has picked or left it. picked comes back standing on the picked record, with the
    /// fields of the provider's rows; closed if nothing was picked. Nobody reads shown. False is a failure, which
    /// errorText explains.
    virtual bool ShowServerRef(std::shared_ptr<ReferenceProvider>& provider, std::shared_ptr<Recordset>& shown,
                               std::shared_ptr<Recordset>& picked, std::string& errorText) = 0;
};

} // namespace z7::cashflow
