#pragma once

#include "host/commands/DatabaseArgument.h"
#include "host/work/Session.h"

#include <cstdint>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Parses a key; a kind given by its sign is not looked up yet. Failure (usage) if the text is not a voucher key.
[[nodiscard]] workbench::WrittenVoucherKey writtenKey(const std::string& text);

/// One voucher of an account.
struct VoucherArgument {
    DatabaseArgument database;
    std::string text;
    /// Adds the arguments FILE and VOUCHER.
    void declare(CLI::App& command, Language language);
    /// The accounting year of the key. Failure (usage) if the text is not a voucher key.
    [[nodiscard]] std::int16_t year() const;
    /// The key; a kind given by its sign is looked up in the open session. Failure (usage) as for year(), and
    /// if no kind or several kinds have that sign.
    [[nodiscard]] workbench::VoucherKey key(Session& session) const;
    /// As DatabaseArgument::take, for the voucher and the arguments after it.
    [[nodiscard]] AccountPlace take(const GlobalOptions& options, const std::vector<Word>& following = {});
    /// Reads the voucher in an open session of its year. Failure (refused) if it does not exist, (database) if
    /// the account has no accounting periods for the year.
    [[nodiscard]] workbench::Voucher find(Session& session) const;
};

/// The key of a text, as by VoucherArgument::key.
[[nodiscard]] workbench::VoucherKey keyOf(const std::string& text, Session& session);

/// A voucher given on the command line, and its open account.
class OpenVoucher {
public:
    /// Failure (usage) if an argument is wrong or missing, (refused) if the voucher does not exist, (database)
    /// if the account cannot be opened or has no accounting periods for the voucher's year.
    OpenVoucher(VoucherArgument& argument, const GlobalOptions& options, const Console& console,
                const std::vector<Word>& following = {});

    [[nodiscard]] Session& session() noexcept { return session_; }
    [[nodiscard]] const workbench::Voucher& voucher() const noexcept { return voucher_; }
    /// Failure (refused) if the voucher has no date or a date outside its year, because its rows then cannot be
    /// found.
    void requireDated(Language language);

private:
    AccountPlace place_;
    Session session_;
    workbench::Voucher voucher_;
};

} // namespace z7::cashflow::host
