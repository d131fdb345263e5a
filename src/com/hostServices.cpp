#include "com/hostServices.h"

#include "adapters/ado/Connection.h"
#include "adapters/ado/ConnectionFactory.h"
#include "adapters/ado/Login.h"
#include "adapters/ado/MessageBox.h"
#include "adapters/ado/automation/Bstr.h"

#ifdef Z7_HAS_WINDOW
#include "adapters/wx/windowsOnDemand.h"
#else
#include "com/guarded.h"
#include "z7cashflow/support/errorNumbers.h"
#endif

namespace z7::com {

namespace {

using adapters::automation::Dispatch;

#ifndef Z7_HAS_WINDOW

// Stands where the windows of the dialog are made.
class MissingWindows final : public cashflow::DialogFactory {
public:
    std::unique_ptr<cashflow::DialogForm> createForm(const cashflow::FormDesign& /*design*/,
                                                     cashflow::FormEvents& /*listener*/) override {
        refuse();
    }
    std::unique_ptr<cashflow::PickList> createPickList() override { refuse(); }

private:
    [[noreturn]] static void refuse() {
        raiseHostError(cashflow::errors::memberUnknown,
                       "This build of Z7CashFlow.dll has no window: use InitCashFlow, edit the rows in CashFlowCol and "
                       "save them with VoucherProvider");
    }
};

#endif

void writeDebugText(const std::string& text) { OutputDebugStringW(adapters::automation::wide(text).c_str()); }

} // namespace

std::unique_ptr<cashflow::Connection> lentConnection(IDispatch** objCon) {
    return std::make_unique<cashflow::ado::Connection>(Dispatch(objCon == nullptr ? nullptr : *objCon));
}

std::shared_ptr<cashflow::Z7Login> loginOf(IDispatch* login) {
    return login == nullptr ? nullptr : std::make_shared<cashflow::ado::Login>(Dispatch(login));
}

void equip(cashflow::modPublic::Context& context) {
    context.createMessageBox = [] { return std::make_shared<cashflow::ado::MessageBox>(); };
    context.connectionFactory = std::make_shared<cashflow::ado::ConnectionFactory>();
#ifdef Z7_HAS_WINDOW
    context.dialogFactory = cashflow::wx::windowsOnDemand();
#else
    context.dialogFactory = std::make_shared<MissingWindows>();
#endif
    context.debugSink = writeDebugText;
}

} // namespace z7::com
