#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/inputText.h"
#include "host/commands/AssignmentSheet.h"
#include "host/commands/ChangesOutput.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/work/runNote.h"
#include "z7cashflow/support/Error.h"

#include <CLI/CLI.hpp>

#include <array>
#include <charconv>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::Amount;
using workbench::Assignment;
using workbench::ItemPart;
using workbench::LineRest;
using workbench::LineWish;
using workbench::RunLog;
using workbench::VoucherResult;

namespace {

/// z7cf assign: assigns entry lines to cash-flow items, one on the command line or many by a spreadsheet.
class AssignCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("assign", hostText(language, HostText::helpAssign));
        voucher_.declare(*command, language);
        command->add_option("LINE", line_, hostText(language, HostText::helpAssignLine));
        command->add_option("ITEM", items_, hostText(language, HostText::helpAssignItems))->type_name("ITEM [AMOUNT]");
        command->add_option("--from", from_, hostText(language, HostText::helpAssignFrom));
        command->add_flag("--dry-run", dryRun_, hostText(language, HostText::helpShowChanges));
        report_.declare(*command, language);
        command->footer(hostText(language, HostText::examplesAssign));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        report_.requireNewFile();
        return from_.empty() ? assignLine(output, options, console) : assignSheet(output, options, console);
    }

private:
    int assignLine(Output& output, const GlobalOptions& options, const Console& console) {
        std::vector<std::string> words;
        for (const std::string* word : {&voucher_.text, &line_}) {
            if (!word->empty()) {
                words.push_back(*word);
            }
        }
        words.insert(words.end(), items_.begin(), items_.end());
        const AccountPlace place = voucher_.database.takeOpen(
            options, words, [](const std::string& word) { return workbench::readWrittenVoucherKey(word).has_value(); });
        constexpr std::array names{"VOUCHER", "LINE", "ITEM"};
        if (words.size() < names.size()) {
            throw Failure(exit_code::usage, HostText::argumentMissing, {names.at(words.size())});
        }
        voucher_.text = words[0];
        LineWish wish{readLine(words[1]), {}};
        Session session(place, voucher_.year(), options, console);
        const workbench::VoucherKey key = voucher_.find(session).key;
        const ItemLookup items(session.connection());
        for (std::size_t i = 2; i < words.size(); i += 2) {
            wish.items.push_back({items.required(words[i]),
                                  i + 1 < words.size() ? std::optional(readAmount(words[i + 1])) : std::nullopt});
        }
        RunLog log(session.connection(), runNote(options, "assign " + joined(words)));
        Allotment allotment(session.connection(), session.data(), session.provider().gl(), !dryRun_, &log);
        allotment.tellEveryRow();
        Assignment assignment(session.connection(), session.data(), session.provider().gl(), allotment);
        ChangesOutput shown(output, session.kinds(), dryRun_, report_);
        assignAndReport(output, session, items, shown, assignment, {key, {wish}});
        return shown.finish(log);
    }

    int assignSheet(Output& output, const GlobalOptions& options, const Console& console) {
        std::vector<std::string> words;
        if (!voucher_.text.empty()) {
            words.push_back(voucher_.text);
        }
        const AccountPlace place = voucher_.database.takeOpen(options, words, [](const std::string&) { return false; });
        if (!words.empty()) {
            throw Failure(exit_code::usage, HostText::argumentTooMany, {words.front()});
        }
        const AssignmentSheet sheet(inputText(from_, console), from_, options.language);
        Session session(place, sheet.year().value_or(std::int16_t{1}), options, console);
        const ItemLookup items(session.connection());
        const auto vouchers = sheet.check(session, items);
        RunLog log(session.connection(), runNote(options, "assign --from " + from_));
        Allotment allotment(session.connection(), session.data(), session.provider().gl(), !dryRun_, &log);
        allotment.tellEveryRow();
        Assignment assignment(session.connection(), session.data(), session.provider().gl(), allotment);
        ChangesOutput shown(output, session.kinds(), dryRun_, report_);
        for (const AssignedVoucher& voucher : vouchers) {
            assignAndReport(output, session, items, shown, assignment, voucher);
        }
        return shown.finish(log);
    }

    /// Assigns one voucher, shows it, and reports the amounts that remain on other items.
    static void assignAndReport(Output& output, Session& session, const ItemLookup& items, ChangesOutput& shown,
                                Assignment& assignment, const AssignedVoucher& voucher) {
        std::vector<LineRest> rests;
        const VoucherResult result = assignment.assign(voucher.key, voucher.lines, rests);
        shown.add(result);
        if (result.refusal) {
            return;
        }
        for (const LineRest& rest : rests) {
            for (const ItemPart& part : rest.parts) {
                shown.say(
                    output.text(HostText::restStays, {session.kinds().keyText(voucher.key), std::to_string(rest.line),
                                                      part.amount.text(), part.item, items.nameOf(part.item)}));
            }
        }
    }

    static std::int32_t readLine(const std::string& word) {
        std::int32_t line = 0;
        const char* const end = word.data() + word.size();
        const auto read = std::from_chars(word.data(), end, line);
        if (read.ec != std::errc() || read.ptr != end || line < 1 || line > 32767) {
            throw Failure(exit_code::usage, HostText::sheetBadLine, {word});
        }
        return line;
    }

    static Amount readAmount(const std::string& word) {
        try {
            return Amount::read(word);
        } catch (const Error&) {
            throw Failure(exit_code::usage, HostText::sheetBadAmount, {word});
        }
    }

    static std::string joined(const std::vector<std::string>& words) {
        std::string text;
        for (const std::string& word : words) {
            text += (text.empty() ? "" : " ") + word;
        }
        return text;
    }

    VoucherArgument voucher_;
    std::string line_;
    std::vector<std::string> items_;
    std::string from_;
    bool dryRun_ = false;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeAssignCommand() { return std::make_unique<AssignCommand>(); }

} // namespace z7::cashflow::host
