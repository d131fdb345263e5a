#include "host/commands/arguments.h"

#include "host/ExitCode.h"
#include "host/Failure.h"

#include <CLI/CLI.hpp>

namespace z7::cashflow::host {

void DatabaseArgument::declare(CLI::App& command, Language language) {
    command.add_option("FILE", file, hostText(language, HostText::helpFile))->required();
}

void VoucherArgument::declare(CLI::App& command, Language language) {
    database.declare(command, language);
    command.add_option("VOUCHER", text, hostText(language, HostText::helpKey))->required();
}

VoucherKey VoucherArgument::key() const {
    const auto key = readVoucherKey(text);
    if (!key) {
        throw Failure(exitCode::usage, HostText::badKey, {text});
    }
    return *key;
}

VoucherHead VoucherArgument::find(Session& session) const {
    auto head = findVoucher(session.connection(), key());
    if (!head) {
        throw Failure(exitCode::refused, HostText::noVoucher, {voucherKeyText(key())});
    }
    return *head;
}

void PeriodArgument::declare(CLI::App& command, Language language) {
    database.declare(command, language);
    command.add_option("--year", yearNumber, hostText(language, HostText::helpYear))->required();
    command.add_option("--period", periodNumber, hostText(language, HostText::helpPeriod));
}

std::int16_t PeriodArgument::year() const {
    if (yearNumber < 1 || yearNumber > 9999) {
        throw Failure(exitCode::usage, HostText::badYear, {std::to_string(yearNumber)});
    }
    return static_cast<std::int16_t>(yearNumber);
}

std::optional<std::uint8_t> PeriodArgument::period() const {
    if (!periodNumber) {
        return std::nullopt;
    }
    if (*periodNumber < 0 || *periodNumber > 255) {
        throw Failure(exitCode::usage, HostText::badPeriod, {std::to_string(*periodNumber)});
    }
    return static_cast<std::uint8_t>(*periodNumber);
}

} // namespace z7::cashflow::host
