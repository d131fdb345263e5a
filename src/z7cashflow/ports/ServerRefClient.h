#pragma once

#include "z7cashflow/ports/Recordset.h"
#include "z7cashflow/ports/ReferenceProvider.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The suite's pop-up for rows of a ReferenceProvider. A new one is created for each use.
class ServerRefClient {
public:
    virtual ~ServerRefClient() = default;

    /// The reference that is requested from the provider, such as "voucher".
    virtual void RefName(const std::string& name) = 0;
    /// The look of the pop-up. Only 5 is used: one line is chosen.
    virtual void RefStyle(std::int32_t style) = 0;
    /// Shows the pop-up until the user has chosen or cancelled. picked is returned positioned on the chosen
    /// record, with the fields of the provider's rows; closed if nothing was chosen. shown is not used. False
    /// is a failure, explained by errorText.
    virtual bool ShowServerRef(std::shared_ptr<ReferenceProvider>& provider, std::shared_ptr<Recordset>& shown,
                               std::shared_ptr<Recordset>& picked, std::string& errorText) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
