#pragma once

#include "z7cashflow/ports/DialogForm.h"
#include "z7cashflow/ports/PickList.h"
#include "z7cashflow/ports/ServerRefClient.h"
#include "z7cashflow/ports/ZQReferClient.h"
#include "z7cashflow/support/visibility.h"

#include <memory>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Creates the windows of the dialog. The host sets one beside the login in the thread's context.
class DialogFactory {
public:
    virtual ~DialogFactory() = default;

    /// A form with this design that raises its events to the listener, which outlives it. It is not shown yet.
    /// Error of the window system if there is no screen.
    [[nodiscard]] virtual std::unique_ptr<DialogForm> createForm(const FormDesign& design, FormEvents& listener) = 0;
    /// A pop-up to choose a row.
    [[nodiscard]] virtual std::unique_ptr<PickList> createPickList() = 0;

    /// The suite's reference clients, if the host has them. With a null pointer, the default, the library uses
    /// its own, which need a PickList.
    [[nodiscard]] virtual std::unique_ptr<ServerRefClient> createServerRefClient() { return nullptr; }
    /// The same for the pop-up over the items of a class.
    [[nodiscard]] virtual std::unique_ptr<ZQReferClient> createReferClient() { return nullptr; }
};

} // namespace z7::cashflow

Z7_PUBLIC_END
