#include "host/commands/PeriodArgument.h"

#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "z7cashflow/model/modPublic.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

namespace z7::cashflow::host {

using workbench::AccountingPeriods;
using workbench::listVouchers;
using workbench::PeriodRange;
using workbench::VoucherHead;

namespace {

std::optional<std::uint8_t> periodOf(std::string_view text) {
    std::uint8_t period = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), period);
    const bool whole = failure == std::errc{} && end == text.data() + text.size();
    return whole ? std::optional(period) : std::nullopt;
}

} // namespace

void requireYear(const AccountingPeriods& periods, const std::string& account, std::int16_t year) {
    if (periods.empty()) {
        throw Failure(exit_code::database, HostText::accountWithoutPeriods, {account});
    }
    if (!periods.hasYear(year)) {
        throw Failure(exit_code::database, HostText::accountWithoutYear,
                      {account, std::to_string(year), periods.yearsText()});
    }
}

void PeriodArgument::declare(CLI::App& command, Language language) {
    database.declare(command, language);
    yearArgument.declare(command, language);
    command.add_option("--period", periodText, hostText(language, HostText::helpPeriod));
}

void YearArgument::declare(CLI::App& command, Language language) {
    command.add_option("--year", text, hostText(language, HostText::helpYear))->required()->type_name("INT");
}

std::int16_t YearArgument::year() const {
    std::int16_t year = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), year);
    if (failure != std::errc() || end != text.data() + text.size() || year < 1 || year > 9999) {
        throw Failure(exit_code::usage, HostText::badYear, {text});
    }
    return year;
}

std::optional<PeriodRange> PeriodArgument::periods() const {
    if (periodText.empty()) {
        return std::nullopt;
    }
    const std::string_view text = periodText;
    const std::size_t dash = text.find('-');
    const auto first = periodOf(text.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : periodOf(text.substr(dash + 1));
    if (!first || !last || *first > *last) {
        throw Failure(exit_code::usage, HostText::badPeriod, {periodText});
    }
    return PeriodRange{*first, *last};
}

std::vector<VoucherHead> PeriodArgument::list(Session& session) const {
    const std::int16_t ofYear = year();
    const auto range = periods();
    auto vouchers = listVouchers(session.connection(), ofYear, range);
    const std::string account = modPublic::requiredLogin().accountId();
    const AccountingPeriods known = AccountingPeriods::read(session.connection(), account);
    if (vouchers.empty() && !known.empty() && !known.hasYear(ofYear)) {
        throw Failure(exit_code::usage, HostText::yearUnknown, {account, std::to_string(ofYear), known.yearsText()});
    }
    requireYear(known, account, ofYear);
    const auto isThere = [&](std::uint8_t period) {
        return known.hasPeriod(ofYear, period) ||
               std::any_of(vouchers.begin(), vouchers.end(),
                           [period](const VoucherHead& voucher) { return voucher.key.period == period; });
    };
    if (range) {
        for (const std::uint8_t end : {range->first, range->last}) {
            if (!isThere(end)) {
                throw Failure(exit_code::usage, HostText::periodUnknown,
                              {std::to_string(end), std::to_string(ofYear), known.periodsText(ofYear)});
            }
        }
    }
    return vouchers;
}

} // namespace z7::cashflow::host
