#include "host/commands/arguments.h"

#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"
#include "host/cli/connectOption.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <system_error>

namespace z7::cashflow::host {

void DatabaseArgument::declare(CLI::App& command, Language language) {
    command.add_option("FILE", file, hostText(language, HostText::helpFile));
}

AccountPlace DatabaseArgument::take(const GlobalOptions& options, const std::vector<Word>& behind) {
    // A connection string in the place of a file would stand in the message about it.
    if (file.find(';') != std::string::npos && holdsSecret(file)) {
        throw Failure(exitCode::usage, HostText::connectSecret);
    }
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

OpenVoucher::OpenVoucher(VoucherArgument& argument, const GlobalOptions& options, const Console& console,
                         const std::vector<Word>& behind)
    : place_(argument.take(options, behind)), session_(place_, argument.key().year, options, console),
      head_(argument.find(session_)) {
    session_.requireInYear(head_.date);
}

void PeriodArgument::declare(CLI::App& command, Language language) {
    database.declare(command, language);
    yearArgument.declare(command, language);
    command.add_option("--period", periodNumber, hostText(language, HostText::helpPeriod));
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
