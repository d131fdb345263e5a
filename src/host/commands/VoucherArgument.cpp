#include "host/commands/VoucherArgument.h"

#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/commands/PeriodArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/text/joined.h"
#include "workbench/vouchers/AccountingPeriods.h"
#include "z7cashflow/model/modPublic.h"

#include <CLI/CLI.hpp>

#include <array>

namespace z7::cashflow::host {

using workbench::AccountingPeriods;
using workbench::keyPartOutOfRange;
using workbench::readWrittenVoucherKey;
using workbench::Voucher;
using workbench::VoucherKey;
using workbench::VoucherKinds;
using workbench::WrittenVoucherKey;

void VoucherArgument::declare(CLI::App& command, Language language) {
    database.declare(command, language);
    command.add_option("VOUCHER", text, hostText(language, HostText::helpKey));
}

AccountPlace VoucherArgument::take(const GlobalOptions& options, const std::vector<Word>& following) {
    std::vector<Word> words{{"VOUCHER", &text}};
    words.insert(words.end(), following.begin(), following.end());
    return database.take(options, words);
}

WrittenVoucherKey writtenKey(const std::string& text) {
    const auto key = readWrittenVoucherKey(text);
    if (key) {
        return *key;
    }
    const auto part = keyPartOutOfRange(text);
    if (!part) {
        throw Failure(exit_code::usage, HostText::badKey, {text});
    }
    constexpr std::array texts{HostText::badKeyYear, HostText::badKeyPeriod, HostText::badKeyKind,
                               HostText::badKeyNumber};
    throw Failure(exit_code::usage, texts.at(static_cast<std::size_t>(part->part)),
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
        ? Failure(exit_code::usage, HostText::kindUnknown, {written.sign, known})
        : Failure(exit_code::usage, HostText::kindAmbiguous, {written.sign, joined(numbers, ", "), known});
}

Voucher VoucherArgument::find(Session& session) const {
    Voucher voucher = session.judge().read(key(session));
    if (voucher.lines.empty()) {
        throw Failure(exit_code::refused, HostText::noVoucher, {text});
    }
    const std::string account = modPublic::requiredLogin().accountId();
    requireYear(AccountingPeriods::read(session.connection(), account), account, voucher.key.year);
    return voucher;
}

OpenVoucher::OpenVoucher(VoucherArgument& argument, const GlobalOptions& options, const Console& console,
                         const std::vector<Word>& following)
    : place_(argument.take(options, following)), session_(place_, argument.year(), options, console),
      voucher_(argument.find(session_)) {}

void OpenVoucher::requireDated(Language language) {
    if (const auto refusal = session_.judge().outsideYear(voucher_)) {
        failAsRefused(language, *refusal);
    }
}

} // namespace z7::cashflow::host
