#pragma once

#include "host/account/AccountPlace.h"
#include "host/cli/GlobalOptions.h"
#include "host/terminal/Console.h"
#include "host/work/HostLogin.h"
#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/VoucherKinds.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/ports/MessageBox.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace z7::cashflow::host {

/// The environment of a command: the database opened in one accounting year, the user's login, the library's
/// context of this thread with the account's options, and the providers. At most one at a time on a thread; its
/// destructor closes the database and clears the context.
class Session {
public:
    /// Opens an account. The account options bCashCode and bAutoDisplay are read into the thread's context, so
    /// that every command generates rows by the same rules. Failure (database) if the file does not exist or
    /// cannot be opened; errors of the database pass through.
    Session(const AccountPlace& place, std::int16_t year, const GlobalOptions& options, const Console& console);
    /// The same with a message box in place of that of the terminal.
    Session(const AccountPlace& place, std::int16_t year, const GlobalOptions& options,
            std::shared_ptr<MessageBox> messageBox);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The open database, for calls of the library and for the host's own statements and transactions. Through
    /// its login, the library refuses values that could change a statement, unless the settings turn that off.
    [[nodiscard]] Connection& connection() noexcept { return *connection_; }
    [[nodiscard]] DataProvider& data() noexcept { return data_; }
    [[nodiscard]] VoucherProvider& provider() noexcept { return provider_; }
    [[nodiscard]] std::int16_t year() const noexcept { return year_; }

    /// Finds, compares and explains the rows of vouchers; shared by all commands.
    [[nodiscard]] workbench::Judge& judge() noexcept { return *judge_; }

    /// The account's voucher kinds, read on first use. Errors of the database pass through.
    [[nodiscard]] const workbench::VoucherKinds& kinds();

private:
    [[nodiscard]] bool accountOption(const char* name);

    std::int16_t year_;
    std::shared_ptr<MessageBox> messageBox_;
    std::shared_ptr<Connection> connection_;
    DataProvider data_;
    VoucherProvider provider_;
    std::optional<workbench::Judge> judge_;
    std::optional<workbench::VoucherKinds> kinds_;
};

} // namespace z7::cashflow::host
