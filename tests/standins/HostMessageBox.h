#pragma once

#include "standins/AutomationObject.h"
#include "z7cashflow/ports/MessageBox.h"

#include <memory>

namespace z7::cashflow::test {

/// The suite's message box as an automation object over a message box of the library, such as a recording one.
class HostMessageBox final : public AutomationObject {
public:
    HostMessageBox(std::shared_ptr<CallPlan> plan, std::shared_ptr<MessageBox> box);

private:
    ~HostMessageBox() override = default;
    std::shared_ptr<MessageBox> box_;
};

} // namespace z7::cashflow::test
