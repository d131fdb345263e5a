#include "host/commands/arguments.h"

#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"
#include "host/cli/connectOption.h"
#include "host/commands/savedVoucher.h"
#include "host/text/joined.h"
#include "workbench/vouchers/AccountingPeriods.h"
#include "z7cashflow/model/modPublic.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

namespace z7::cashflow::host {

using workbench::AccountingPeriods;
using workbench::keyPartOutOfRange;
using workbench::listVouchers;
using workbench::PeriodRange;
using workbench::readWrittenVoucherKey;
using workbench::Voucher;
using workbench::VoucherHead;
using workbench::VoucherKey;
using workbench::VoucherKinds;
using workbench::WrittenVoucherKey;

namespace {

// Requires accounting periods for the year: without them the account identifier is wrong or the periods are missing,
// and no voucher can be processed.
void requireYear(const AccountingPeriods& periods, const std::string& account, std::int16_t year) {
    if (periods.empty()) {
        throw Failure(exitCode::database, HostText::accountWithoutPeriods, {account});
    }
    if (!periods.hasYear(year)) {
        throw Failure(exitCode::database, HostText::accountWithoutYear,
                      {account, std::to_string(year), periods.yearsText()});
    }
}

std::optional<std::uint8_t> periodOf(std::string_view text) {
    std::uint8_t period = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), period);
    const bool whole = failure == std::errc{} && end == text.data() + text.size();
    return whole ? std::optional(period) : std::nullopt;
}

} // namespace

void DatabaseArgument::declare(CLI::App& command, Language language) {
    command.add_option("FILE", file, hostText(language, HostText::helpFile));
}

void DatabaseArgument::requireNoSecret() const {
    // A connection string in place of a file name would appear in the error message.
    if (file.find(';') != std::string::npos && holdsSecret(file)) {
        throw Failure(exitCode::usage, HostText::connectSecret);
    }
}

AccountPlace DatabaseArgument::takeOpen(const GlobalOptions& options, std::vector<std::string>& behind,
                                        const std::function<bool(const std::string&)>& comesAfterFile) {
    requireNoSecret();
    const bool connected = !options.connect.empty() && (options.connectGiven || file.empty() || comesAfterFile(file));
    if (!connected) {
        if (file.empty()) {
            throw Failure(exitCode::usage, HostText::argumentMissing, {"FILE"});
        }
        return AccountPlace::ofFile(file);
    }
    if (!file.empty()) {
        behind.insert(behind.begin(), std::exchange(file, {}));
    }
    return AccountPlace::behind(options.connect, options.serverConnection);
}

AccountPlace DatabaseArgument::take(const GlobalOptions& options, const std::vector<Word>& behind) {
    requireNoSecret();
    const bool oneLess = behind.empty() ? file.empty() : behind.back().text->empty();
    const bool connected = !options.connect.empty() && (options.connectGiven || oneLess);
    if (connected) {
        std::string word = std::move(file);
        file.clear();
        for (const Word& place : behind) {
            std::swap(word, *place.text);
        }
        if (!word.empty()) {
            throw Failure(exitCode::usage, HostText::argumentTooMany, {word});
        }
    } else if (file.empty()) {
        throw Failure(exitCode::usage, HostText::argumentMissing, {"FILE"});
    }
    for (const Word& word : behind) {
        if (word.text->empty()) {
            throw Failure(exitCode::usage, HostText::argumentMissing, {word.name});
        }
    }
    return connected ? AccountPlace::behind(options.connect, options.serverConnection) : AccountPlace::ofFile(file);
}

void VoucherArgument::declare(CLI::App& command, Language language) {
    database.declare(command, language);
    command.add_option("VOUCHER", text, hostText(language, HostText::helpKey));
}

AccountPlace VoucherArgument::take(const GlobalOptions& options, const std::vector<Word>& behind) {
    std::vector<Word> words{{"VOUCHER", &text}};
    words.insert(words.end(), behind.begin(), behind.end());
    return database.take(options, words);
}

WrittenVoucherKey writtenKey(const std::string& text) {
    const auto key = readWrittenVoucherKey(text);
    if (key) {
        return *key;
    }
    const auto part = keyPartOutOfRange(text);
    if (!part) {
        throw Failure(exitCode::usage, HostText::badKey, {text});
    }
    constexpr std::array texts{HostText::badKeyYear, HostText::badKeyPeriod, HostText::badKeyKind,
                               HostText::badKeyNumber};
    throw Failure(exitCode::usage, texts.at(static_cast<std::size_t>(part->part)),
                  {text, std::to_string(part->least), std::to_string(part->most)});
}

std::int16_t VoucherArgument::year() const { return writtenKey(text).key.year; }

VoucherKey VoucherArgument::key(Session& session) const { return keyOf(text, session); }

VoucherKey keyOf(const std::string& text, Session& session) {
    const WrittenVoucherKey written = writtenKey(text);
    if (written.sign.empty()) {
        return written.key;
    }
    const VoucherKinds& kinds = session.kinds();
    if (const auto key = kinds.resolved(written)) {
        return *key;
    }
    std::vector<std::string> signs;
    for (const VoucherKinds::Kind& kind : kinds.all()) {
        if (!kind.sign.empty()) {
            signs.push_back(kind.sign + " (" + std::to_string(kind.number) + ")");
        }
    }
    const std::string known = signs.empty() ? std::string("-") : joined(signs, ", ");
    std::vector<std::string> numbers;
    for (const std::int16_t number : kinds.kindsOf(written.sign)) {
        numbers.push_back(std::to_string(number));
    }
    throw numbers.empty()
        ? Failure(exitCode::usage, HostText::kindUnknown, {written.sign, known})
        : Failure(exitCode::usage, HostText::kindAmbiguous, {written.sign, joined(numbers, ", "), known});
}

Voucher VoucherArgument::find(Session& session) const {
    Voucher voucher = session.judge().read(key(session));
    if (voucher.lines.empty()) {
        throw Failure(exitCode::refused, HostText::noVoucher, {text});
    }
    const std::string account = modPublic::requiredLogin().AccountId();
    requireYear(AccountingPeriods::read(session.connection(), account), account, voucher.key.year);
    return voucher;
}

OpenVoucher::OpenVoucher(VoucherArgument& argument, const GlobalOptions& options, const Console& console,
                         const std::vector<Word>& behind)
    : place_(argument.take(options, behind)), session_(place_, argument.year(), options, console),
      voucher_(argument.find(session_)) {}

void OpenVoucher::requireDated(Language language) {
    if (const auto refusal = session_.judge().outsideYear(voucher_)) {
        failAsRefused(language, *refusal);
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
        throw Failure(exitCode::usage, HostText::badYear, {text});
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
        throw Failure(exitCode::usage, HostText::badPeriod, {periodText});
    }
    return PeriodRange{*first, *last};
}

std::vector<VoucherHead> PeriodArgument::list(Session& session) const {
    const std::int16_t ofYear = year();
    const auto range = periods();
    auto vouchers = listVouchers(session.connection(), ofYear, range);
    const std::string account = modPublic::requiredLogin().AccountId();
    const AccountingPeriods known = AccountingPeriods::read(session.connection(), account);
    if (vouchers.empty() && !known.empty() && !known.hasYear(ofYear)) {
        throw Failure(exitCode::usage, HostText::yearUnknown, {account, std::to_string(ofYear), known.yearsText()});
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
                throw Failure(exitCode::usage, HostText::periodUnknown,
                              {std::to_string(end), std::to_string(ofYear), known.periodsText(ofYear)});
            }
        }
    }
    return vouchers;
}

} // namespace z7::cashflow::host
