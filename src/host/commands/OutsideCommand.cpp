#include "adapters/sqlite/ConnectionOptions.h"
#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/inputText.h"
#include "host/cli/jsonText.h"
#include "host/cli/outputFile.h"
#include "host/commands/DatabaseArgument.h"
#include "host/commands/PeriodArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/work/rowsView.h"
#include "host/work/runNote.h"
#include "workbench/vouchers/OutsideAllotment.h"
#include "workbench/vouchers/rowsDocument.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/names.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::rowsOfDocument;

namespace {

std::string doubledQuotes(const std::string& text) {
    std::string result;
    for (const char c : text) {
        result += c == '\'' ? std::string("''") : std::string(1, c);
    }
    return result;
}

/// z7cf outside: the rows of a voucher of another subsystem, identified by its outside key.
class OutsideCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("outside", hostText(language, HostText::helpOutside));
        command->add_option("ACTION", action_, hostText(language, HostText::helpAction))->required();
        database_.declare(*command, language);
        command->add_option("TABLE", table_, hostText(language, HostText::helpTable));
        command->add_option("OUTKEY", key_, hostText(language, HostText::helpOutKey));
        year_.declare(*command, language);
        command->add_option("--xml", file_, hostText(language, HostText::helpOutsideXml));
        command->add_flag("--identities", identities_, hostText(language, HostText::helpIdentities));
        command->footer(hostText(language, HostText::examplesOutside));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        const bool writes = action_ == "rows" || action_ == "generate";
        const bool reads = action_ == "check" || action_ == "save";
        if (!writes && !reads) {
            throw Failure(exit_code::usage, HostText::badAction, {action_});
        }
        const AccountPlace place = database_.take(options, {{"TABLE", &table_}, {"OUTKEY", &key_}});
        if (table_.empty() || tableNameLength(table_) != table_.size()) {
            throw Failure(exit_code::usage, HostText::badTable, {table_});
        }
        const std::int16_t year = year_.year();
        const std::string document = action_ == "save" && !file_.empty() ? inputText(file_, console) : std::string();
        Output output(console, options);
        Session session(place, year, options, console);
        modPublic::SetIYear(year); // the outside contract expects its host to set the year
        requireVoucher(session);
        if (writes) {
            return show(output, session);
        }
        return action_ == "check" ? check(output, session) : save(output, session, document, options);
    }

private:
    void requireVoucher(Session& session) const {
        const auto count = session.connection().Execute("select count(*) from " + table_ + " where coutno_id=N'" +
                                                        doubledQuotes(key_) + "'");
        const bool there = toInt32(count->Fields().Item(0)) > 0;
        if (!there) {
            throw Failure(exit_code::refused, HostText::noOutsideVoucher, {table_, key_});
        }
    }

    int show(Output& output, Session& session) const {
        IOutVoucherProvider& provider = session.provider().out();
        const std::string document = action_ == "generate"
                                         ? provider.CreateCashFlowColFromDB(session.connection(), table_, key_)
                                         : provider.GetCashFlowColFromDB(session.connection(), table_, key_);
        if (file_.empty()) {
            showRows(output, session, rowsOfDocument(document).get(), {{"table", table_}, {"key", key_}}, identities_);
        } else if (file_ == "-") {
            output.raw(document);
        } else {
            writeNewFile(sqlite::pathOf(file_), document);
        }
        output.flush();
        return exit_code::done;
    }

    int check(Output& output, Session& session) const {
        if (!file_.empty()) {
            output.remark(output.text(HostText::outsideCheckIgnores));
        }
        const bool cash = session.data().HaveCashFlowCodeInVoucher2(session.connection(), table_, key_);
        const bool matched = !cash || session.provider().out().CheckCFColFromDB(session.connection(), table_, key_, "");
        if (output.json()) {
            output.raw(jsonLine({{"table", table_},
                                 {"key", key_},
                                 {"verdict", !cash     ? "no-cash"
                                             : matched ? "matched"
                                                       : "refused"}}));
        } else {
            output.line(output.text(!cash     ? HostText::verdictNoCash
                                    : matched ? HostText::outsideMatched
                                              : HostText::outsideRefused));
        }
        output.flush();
        return matched ? exit_code::done : exit_code::refused;
    }

    int save(Output& output, Session& session, const std::string& document, const GlobalOptions& options) const {
        workbench::RunLog log(session.connection(), runNote(options, "outside save " + table_ + " " + key_));
        workbench::OutsideAllotment allotment(session.connection(), session.data(), session.provider(), &log);
        return reportSavedOutside(output, allotment.save(session.year(), table_, key_, document), log);
    }

    std::string action_;
    DatabaseArgument database_;
    std::string table_;
    std::string key_;
    YearArgument year_;
    std::string file_;
    bool identities_ = false;
};

} // namespace

std::unique_ptr<Command> makeOutsideCommand() { return std::make_unique<OutsideCommand>(); }

} // namespace z7::cashflow::host
