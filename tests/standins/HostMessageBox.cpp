#include "standins/HostMessageBox.h"

#include "adapters/ado/hostNames.h"

#include <utility>

namespace z7::cashflow::test {

namespace {

namespace names = ado::names;

constexpr IID messageBoxKind{0x5a370009, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};

} // namespace

HostMessageBox::HostMessageBox(std::shared_ptr<CallPlan> plan, std::shared_ptr<MessageBox> box)
    : AutomationObject(std::move(plan), messageBoxKind), box_(std::move(box)) {
    property(
        names::locale, [](const Call&) { return OwnedVariant(); },
        [this](const Call& call) {
            box_->locale(call.text(0));
            return OwnedVariant();
        });
    method(names::show, [this](const Call& call) {
        return OwnedVariant(box_->Show(call.text(0), call.number(1), call.text(2), call.text(3), call.number(4)));
    });
}

} // namespace z7::cashflow::test
