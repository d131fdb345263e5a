#include "host/desktop/Desktop.h"

#include "host/account/AccountConnections.h"
#include "host/cli/Failure.h"
#include "host/cli/environment.h"
#include "host/cli/exitCode.h"
#include "z7cashflow/model/modPublic.h"

#ifdef Z7_HAS_WINDOW
#include "adapters/wx/WindowSystem.h"
#endif

namespace z7::cashflow::host {

#ifdef Z7_HAS_WINDOW

Desktop::Desktop(const GlobalOptions& options, const Console& console) {
    const bool watched = environmentVariable("Z7CF_WINDOW_STATES").has_value();
    windows_ = wx::WindowSystem::start(watched ? &console.out : nullptr);
    if (!windows_) {
        throw Failure(exit_code::usage, HostText::noScreen);
    }
    modPublic::Context& context = modPublic::context();
    context.dialogFactory = windows_->dialogFactory();
    context.connectionFactory = std::make_shared<AccountConnections>(options.serverConnection);
    context.messageBoxObject = nullptr; // the terminal's message box may already have been used
    context.createMessageBox = [box = windows_->messageBox()] { return box; };
}

Desktop::~Desktop() {
    modPublic::Context& context = modPublic::context();
    context.dialogFactory = nullptr;
    context.connectionFactory = nullptr;
    context.messageBoxObject = nullptr;
    context.createMessageBox = nullptr;
}

#else

Desktop::Desktop(const GlobalOptions& /*options*/, const Console& /*console*/) {
    throw Failure(exit_code::usage, HostText::noWindowBuilt);
}

Desktop::~Desktop() = default;

#endif

} // namespace z7::cashflow::host
