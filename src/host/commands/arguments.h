#pragma once

#include "host/account/AccountPlace.h"
#include "host/cli/GlobalOptions.h"
#include "host/text/Language.h"
#include "host/work/Session.h"
#include "workbench/vouchers/voucherList.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace z7::cashflow::host {

/// Arguments shared by several commands, with the reading of their values. declare() adds an argument to a command,
/// with help in the given language; the parser then writes into the argument, which must not move until it is read.

/// A positional argument, with its name in the help.
struct Word {
    const char* name;
    std::string* text;
};

/// Where the account's database is: the first positional argument of a command, or --connect in its place.
struct DatabaseArgument {
    std::string file;
    /// Adds the argument FILE.
    void declare(CLI::App& command, Language language);
    /// The account's place. With --connect there is no file, so the arguments after it move up by one; they
    /// also do with a connection string of the environment if exactly the last argument is missing. Failure
    /// (usage) if an argument is missing or there is one too many.
    [[nodiscard]] AccountPlace take(const GlobalOptions& options, const std::vector<Word>& behind = {});
    /// The same for a command whose arguments after the file are optional and are checked by the command. A
    /// connection string of the environment is used if there is no argument, or if comesAfterFile is true for
    /// the first one.
    [[nodiscard]] AccountPlace takeOpen(const GlobalOptions& options, std::vector<std::string>& behind,
                                        const std::function<bool(const std::string&)>& comesAfterFile);

private:
    void requireNoSecret() const;
};

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
    [[nodiscard]] AccountPlace take(const GlobalOptions& options, const std::vector<Word>& behind = {});
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
                const std::vector<Word>& behind = {});

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

/// An accounting year.
struct YearArgument {
    std::string text;
    /// Adds the required option --year.
    void declare(CLI::App& command, Language language);
    /// The year. Failure (usage) if it is not a number from 1 to 9999.
    [[nodiscard]] std::int16_t year() const;
};

/// An accounting year or some of its periods.
struct PeriodArgument {
    DatabaseArgument database;
    YearArgument yearArgument;
    std::string periodText;
    /// Adds the argument FILE and the options --year and --period.
    void declare(CLI::App& command, Language language);
    [[nodiscard]] std::int16_t year() const { return yearArgument.year(); }
    /// The periods; empty for the whole year. Failure (usage) if the text is not a period from 0 to 255 or a
    /// range such as "1-3".
    [[nodiscard]] std::optional<workbench::PeriodRange> periods() const;
    /// The vouchers of the year or of the periods. Failure (usage) if the account has neither vouchers nor
    /// accounting periods there; (database) if it has vouchers but no accounting periods, so that none could be
    /// processed.
    [[nodiscard]] std::vector<workbench::VoucherHead> list(Session& session) const;
};

} // namespace z7::cashflow::host
