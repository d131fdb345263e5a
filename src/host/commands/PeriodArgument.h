#pragma once

#include "host/commands/DatabaseArgument.h"
#include "host/work/Session.h"
#include "workbench/vouchers/AccountingPeriods.h"
#include "workbench/vouchers/voucherList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// Requires accounting periods of an account for a year: without them the account identifier is wrong or the
/// periods are missing, and no voucher can be processed. Failure (database) if there are none.
void requireYear(const workbench::AccountingPeriods& periods, const std::string& account, std::int16_t year);

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
