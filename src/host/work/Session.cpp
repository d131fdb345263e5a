#include "host/work/Session.h"

#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/terminal/TerminalMessageBox.h"
#include "host/account/accountCheck.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/text/reasonText.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <filesystem>
#include <utility>

namespace z7::cashflow::host {

Session::Session(const AccountPlace& place, std::int16_t year, const GlobalOptions& options, const Console& console)
    : Session(place, year, options,
              std::make_shared<terminal::TerminalMessageBox>(
                  console.in, console.err, terminal::MessageBoxOptions{console.interactive, options.quiet})) {}

Session::Session(const AccountPlace& place, std::int16_t year, const GlobalOptions& options,
                 std::shared_ptr<MessageBox> messageBox)
    : year_(year), messageBox_(std::move(messageBox)) {
    std::error_code ignored;
    const auto file = place.file();
    if (file && !std::filesystem::exists(*file, ignored)) {
        throw Failure(exit_code::database, HostText::fileMissing, {sqlite::utf8Of(*file)});
    }
    connection_ = place.makeConnection();
    const std::string connectionString = place.connectionString(year);
    try {
        connection_->Open(connectionString);
    } catch (const Error& error) {
        const std::string reason = reasonText(options.language, error);
        throw(file ? Failure(exit_code::database, HostText::notADatabase, {sqlite::utf8Of(*file), reason})
                   : Failure(exit_code::database, HostText::notConnected, {reason}))
            .because({error, {}});
    }
    modPublic::Context& context = modPublic::context();
    context = modPublic::Context{};
    context.createMessageBox = [box = messageBox_] { return box; };
    GlobalOptions own = options;
    if (!own.accountGiven) {
        own.account = onlyAccount(*connection_).value_or(own.account);
    }
    provider_.gl().objLogin(std::make_shared<HostLogin>(std::move(own), year, connectionString));
    judge_.emplace(*connection_, data_, provider_.gl());
    context.bCashCode = accountOption("bCashCode");
    context.bAutoDisplay = accountOption("bAutoDisplay");
}

Session::~Session() {
    if (auto* const terminal = dynamic_cast<terminal::TerminalMessageBox*>(messageBox_.get()); terminal != nullptr) {
        terminal->reportRepeats();
    }
    modPublic::context() = modPublic::Context{};
}

const workbench::VoucherKinds& Session::kinds() {
    if (!kinds_) {
        kinds_ = workbench::VoucherKinds::read(*connection_);
    }
    return *kinds_;
}

bool Session::accountOption(const char* name) {
    return asciiUpper(data_.GetAccInfo(*connection_, "GL", name)) == "TRUE";
}

} // namespace z7::cashflow::host
