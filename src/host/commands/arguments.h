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

/// Arguments that several commands take, with what is done to read them. "declare" adds them to a command, with their
/// help in a language; parsing then writes into the argument, which has to stay where it is until it is read.

/// A word of the command line that is no option, under the name that help gives it.
struct Word {
    const char* name;
    std::string* text;
};

/// Where the account's database is: the first word of a command, or --connect in its place.
struct DatabaseArgument {
    std::string file;
    /// Adds the word FILE.
    void declare(CLI::App& command, Language language);
    /// The account's place. With --connect the words after the file's place move up by one, since there is no file; so
    /// they do with a connection string of the environment if there is one word less. Failure (usage) if a word is
    /// missing or there is one too many.
    [[nodiscard]] AccountPlace take(const GlobalOptions& options, const std::vector<Word>& behind = {});
    /// The same for a command whose words after the file's place may be left out: they are checked by the command. A
    /// connection string of the environment counts if there is no word, or if the first one is such as comes after the
    /// file.
    [[nodiscard]] AccountPlace takeOpen(const GlobalOptions& options, std::vector<std::string>& behind,
                                        const std::function<bool(const std::string&)>& comesAfterFile);

private:
    void requireNoSecret() const;
};

/// The key that a word holds, before it is known whether there is a kind of its sign. Failure (usage) if it is not a
/// key.
[[nodiscard]] workbench::WrittenVoucherKey writtenKey(const std::string& text);

/// One voucher of an account.
struct VoucherArgument {
    DatabaseArgument database;
    std::string text;
    /// Adds the words FILE and VOUCHER.
    void declare(CLI::App& command, Language language);
    /// The accounting year of the key. Failure (usage) if the text is not a voucher key.
    [[nodiscard]] std::int16_t year() const;
    /// The key, with its kind looked up in the open session where it is written by its sign. Failure (usage) as above,
    /// and if no kind or several kinds have that sign.
    [[nodiscard]] workbench::VoucherKey key(Session& session) const;
    /// As DatabaseArgument::take, with the voucher and other words after it.
    [[nodiscard]] AccountPlace take(const GlobalOptions& options, const std::vector<Word>& behind = {});
    /// The voucher in an open session of its year. Failure (refused) if it is not there, (database) if the account has
    /// no accounting periods for the year.
    [[nodiscard]] workbench::Voucher find(Session& session) const;
};

/// A key that a user wrote, as VoucherArgument::key reads it.
[[nodiscard]] workbench::VoucherKey keyOf(const std::string& text, Session& session);

/// A voucher of the command line in its open account.
class OpenVoucher {
public:
    /// Failure (usage) if a word is wrong or missing, (refused) if the voucher is not there, (database) if the account
    /// cannot be opened or has no accounting periods for the voucher's year.
    OpenVoucher(VoucherArgument& argument, const GlobalOptions& options, const Console& console,
                const std::vector<Word>& behind = {});

    [[nodiscard]] Session& session() noexcept { return session_; }
    [[nodiscard]] const workbench::Voucher& voucher() const noexcept { return voucher_; }
    /// Failure (refused) if the voucher has no date or one outside its year, so that its rows cannot be looked for.
    void requireDated(Language language);

private:
    AccountPlace place_;
    Session session_;
    workbench::Voucher voucher_;
};

/// An accounting year.
struct YearArgument {
    std::string text;
    /// Adds the option --year, which has to be given.
    void declare(CLI::App& command, Language language);
    /// Failure (usage) if it is not a year from 1 to 9999.
    [[nodiscard]] std::int16_t year() const;
};

/// An accounting year or some of its periods.
struct PeriodArgument {
    DatabaseArgument database;
    YearArgument yearArgument;
    std::string periodText;
    /// Adds the word FILE and the options --year and --period.
    void declare(CLI::App& command, Language language);
    [[nodiscard]] std::int16_t year() const { return yearArgument.year(); }
    /// Failure (usage) if it is not a period from 0 to 255 or a range of them, such as "1-3".
    [[nodiscard]] std::optional<workbench::PeriodRange> periods() const;
    /// The vouchers of that year or those periods. Failure (usage) if the account has neither vouchers nor accounting
    /// periods there; (database) if it has vouchers and no accounting periods, so that no voucher could be worked with.
    [[nodiscard]] std::vector<workbench::VoucherHead> list(Session& session) const;
};

} // namespace z7::cashflow::host
