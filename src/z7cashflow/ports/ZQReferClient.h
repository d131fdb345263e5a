#pragma once

#include "z7cashflow/ports/Recordset.h"
#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The suite's pop-up over the items of a class; class "98" are the cash-flow items. A new one is made for each use.
class ZQReferClient {
public:
    virtual ~ZQReferClient() = default;

    /// Rights of the user; called once, before ItemRefInit, with two empty texts and false.
    virtual void SetRWAuth(const std::string& first, const std::string& second, bool third) = 0;
    /// Prepares the pop-up for the items of a class under a filter, a condition over the columns citemcode and
    /// citemname. False if it cannot be shown. The flag is always false.
    virtual bool ItemRefInit(std::shared_ptr<Z7Login>& login, bool flag, const std::string& itemClass,
                             std::string& filter) = 0;
    /// Shows the pop-up until the user has picked or left it.
    virtual void Show() = 0;
    /// What was picked: open and standing on a record with at least the field citemcode, or at its end. A null pointer
    /// or a closed recordset if nothing was picked. The caller closes it.
    [[nodiscard]] virtual std::shared_ptr<Recordset> recmx() = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
