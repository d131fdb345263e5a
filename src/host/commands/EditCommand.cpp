#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/PeriodArgument.h"
#include "host/commands/VoucherArgument.h"
#include "host/commands/savedVoucher.h"
#include "host/desktop/Desktop.h"
#include "host/work/runNote.h"
#include "workbench/vouchers/Allotment.h"
#include "workbench/vouchers/OutsideAllotment.h"
#include "z7cashflow/dialog/clsMain.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/names.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

using workbench::Allotment;
using workbench::RunLog;
using workbench::Voucher;
using workbench::VoucherKey;
using workbench::voucherTable;

namespace {

std::string quoted(const std::string& text) {
    std::string result = "N'";
    for (const char c : text) {
        result += c == '\'' ? std::string("''") : std::string(1, c);
    }
    return result + "'";
}

/// z7cf edit: acts as the voucher screen. Shows a voucher's rows in the dialog, outside any transaction, and saves
/// them after OK.
class EditCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("edit", hostText(language, HostText::helpEdit));
        voucher_.declare(*command, language);
        command->add_option("--outside", outside_, hostText(language, HostText::helpEditOutside))
            ->expected(2)
            ->type_name("TABLE OUTKEY");
        command->add_option("--year", year_.text, hostText(language, HostText::helpEditYear))->type_name("INT");
        command->add_flag("--read-only", readOnly_, hostText(language, HostText::helpReadOnly));
        command->add_flag("--regenerate", regenerate_, hostText(language, HostText::helpRegenerate));
        command->footer(hostText(language, HostText::examplesEdit));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        return outside_.empty() ? editVoucher(options, console, output) : editOutside(options, console, output);
    }

private:
    int editVoucher(const GlobalOptions& options, const Console& console, Output& output) {
        OpenVoucher voucher(voucher_, options, console);
        Session& session = voucher.session();
        voucher.requireDated(options.language);
        const Voucher& head = voucher.voucher();
        const VoucherKey& key = head.key;
        clsMain screen;
        prepare(screen, options, makerOf(session, key));
        if (regenerate_) {
            screen.CashFlowCol(session.provider().gl().CreateCashFlowColFromDB(
                session.connection(), voucherTable, key.period, key.kind, key.number, head.date));
        }
        {
            const Desktop desktop(options, console);
            const bool checkEmpty = true;
            screen.ShowCashFlow(voucherTable, key.period, key.kind, key.number, head.date, true, &checkEmpty,
                                &key.year);
        }
        std::shared_ptr<CashFlowCollection> rows = screen.CashFlowCol();
        if (!isToBeSaved(rows)) {
            return nothingSaved(output);
        }
        RunLog log(session.connection(), runNote(options, "edit " + voucher_.text));
        Allotment allotment(session.connection(), session.data(), session.provider().gl(), true, &log);
        const workbench::VoucherKinds& kinds = session.kinds();
        return reportSaved(output, allotment.allot(key, rows), kinds, log);
    }

    int editOutside(const GlobalOptions& options, const Console& console, Output& output) {
        if (!voucher_.text.empty()) {
            throw Failure(exit_code::usage, HostText::argumentTooMany, {voucher_.text});
        }
        const std::string& table = outside_[0];
        const std::string& key = outside_[1];
        const AccountPlace place = voucher_.database.take(options);
        if (table.empty() || tableNameLength(table) != table.size()) {
            throw Failure(exit_code::usage, HostText::badTable, {table});
        }
        Session session(place, yearOfOutside(place, options, console), options, console);
        modPublic::SetIYear(session.year());
        const Date date = dateOfOutside(session, table, key);
        IOutVoucherProvider& provider = session.provider().out();
        // The dialog can show an outside voucher only from rows that its host provides, because a document
        // of rows does not hold the table's name.
        const std::string document = regenerate_ ? provider.CreateCashFlowColFromDB(session.connection(), table, key)
                                                 : provider.GetCashFlowColFromDB(session.connection(), table, key);
        const auto handedIn = session.provider().CreateCashFlowCollection();
        if (!document.empty()) {
            handedIn->Load(XmlSource(document));
        }
        handedIn->coutNo_id(key);
        handedIn->VoucherTable(table);
        handedIn->dbill_date(date);
        clsMain screen;
        prepare(screen, options, {});
        screen.CashFlowCol(handedIn);
        {
            const Desktop desktop(options, console);
            screen.ShowCashFlowOutVoucher(table, key, date);
        }
        if (!isToBeSaved(screen.CashFlowCol())) {
            return nothingSaved(output);
        }
        // A document without rows means "no rows"; an empty text would have the rows generated.
        const std::string rows = static_cast<IXmlSerializable&>(*screen.CashFlowCol()).Save();
        RunLog log(session.connection(), runNote(options, "edit --outside " + table + " " + key));
        workbench::OutsideAllotment allotment(session.connection(), session.data(), session.provider(), &log);
        return reportSavedOutside(output, allotment.save(session.year(), table, key, rows), log);
    }

    void prepare(clsMain& screen, const GlobalOptions& options, const std::string& maker) const {
        screen.Login(modPublic::GetLogin());
        screen.ReadOnly(readOnly_);
        screen.SetCurUserName(options.operatorName);
        screen.SetVouchBillName(maker);
        screen.SetVouchEdit(true); // permission to edit is the business of the suite's voucher screens
        screen.SetVouchLockSucc(true);
        screen.SetVouchState(0);
    }

    /// Whether the user left with OK; Cancel and the close box mark the rows as unchanged.
    [[nodiscard]] bool isToBeSaved(const std::shared_ptr<CashFlowCollection>& rows) const {
        return !readOnly_ && rows && rows->Changed();
    }

    static int nothingSaved(Output& output) {
        if (output.json()) {
            output.raw(jsonLine({{"outcome", "not-saved"}}));
        } else {
            output.remark(output.text(HostText::editNothingSaved));
        }
        output.flush();
        return exit_code::done;
    }

    /// The user who entered the voucher; empty if the voucher does not name one.
    static std::string makerOf(Session& session, const VoucherKey& key) {
        const auto lines = session.connection().Execute(
            std::string("select top 1 cbill from ") + voucherTable + " where iyear=" + std::to_string(key.year) +
            " and iperiod=" + std::to_string(key.period) + " and isignseq=" + std::to_string(key.kind) +
            " and ino_id=" + std::to_string(key.number));
        std::string maker = lines->atEnd() ? std::string() : toTextOrEmpty(lines->Fields().Item(0));
        return maker;
    }

    /// The date of an outside voucher's first line. Failure (refused) if there is no such voucher.
    static Date dateOfOutside(Session& session, const std::string& table, const std::string& key) {
        const auto lines =
            session.connection().Execute("select top 1 dbill_date from " + table + " where coutno_id=" + quoted(key));
        if (lines->atEnd()) {
            throw Failure(exit_code::refused, HostText::noOutsideVoucher, {table, key});
        }
        const Variant date = lines->Fields().Item(0);
        return isNullOrEmpty(date) ? Date::none() : toDate(date);
    }

    /// The year given, otherwise that of the voucher's date.
    [[nodiscard]] std::int16_t yearOfOutside(const AccountPlace& place, const GlobalOptions& options,
                                             const Console& console) const {
        if (!year_.text.empty()) {
            return year_.year();
        }
        Session session(place, 1, options, console);
        const Date date = dateOfOutside(session, outside_[0], outside_[1]);
        if (date == Date::none()) {
            throw Failure(exit_code::usage, HostText::yearMissing, {outside_[0]});
        }
        return toInt16(Variant(dayText(date).substr(0, 4)));
    }

    VoucherArgument voucher_;
    std::vector<std::string> outside_;
    YearArgument year_; ///< its text is empty if --year is not given
    bool readOnly_ = false;
    bool regenerate_ = false;
};

} // namespace

std::unique_ptr<Command> makeEditCommand() { return std::make_unique<EditCommand>(); }

} // namespace z7::cashflow::host
