#include "host/Allotment.h"
#include "host/Command.h"
#include "host/ExitCode.h"
#include "host/Failure.h"
#include "host/Output.h"
#include "host/Verdict.h"
#include "host/commands/arguments.h"
#include "host/inputText.h"
#include "host/jsonText.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

/// z7cf import: stores the rows of an XML document in place of a voucher's own.
class ImportCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("import", hostText(language, HostText::helpImport));
        voucher_.declare(*command, language);
        command->add_option("XML", file_, hostText(language, HostText::helpRowsXml));
        command->footer(hostText(language, HostText::examplesImport));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = voucher_.take(options, {{"XML", &file_}});
        const VoucherKey key = voucher_.key();
        std::string document = inputText(file_, console);
        Session session(place, key.year, options, console);
        static_cast<void>(voucher_.find(session));
        const VoucherResult result = save(session, key, document);
        if (output.json()) {
            output.line(jsonText(resultJson(result)));
        } else if (result.refusal) {
            throw Failure(
                exitCode::refused, HostText::voucherFailed,
                {std::to_string(result.refusal->number), reasonText(options.language, result.refusal->description)});
        } else {
            output.line(output.text(savedText(result.outcome), {voucherKeyText(key), std::to_string(result.rows)}));
        }
        output.flush();
        return result.refusal ? exitCode::refused : exitCode::done;
    }

private:
    static VoucherResult save(Session& session, const VoucherKey& key, std::string& document) {
        VoucherResult result{key, Outcome::refused, 0, std::nullopt};
        modPublic::SetIYear(key.year);
        bool cash = false;
        bool checkSum = true; // the account option bXJLL takes its place
        result.refusal = saveInTransaction(session.connection(), true, [&] {
            cash = session.data().HaveCashFlowCodeInVoucher(session.guarded(), voucherTable, key.period, key.kind,
                                                            key.number);
            session.provider().Gl().SaveCashFlowColFromXml(session.guarded(), voucherTable, key.period, key.kind,
                                                           key.number, &document, &checkSum);
        });
        if (!result.refusal) {
            result.rows = storedCount(session, key);
            result.outcome = !cash ? Outcome::noCash : result.rows == 0 ? Outcome::nothing : Outcome::stored;
        }
        return result;
    }

    static std::int32_t storedCount(Session& session, const VoucherKey& key) {
        const auto count = session.connection().Execute(
            "select count(*) from gl_cashtable where iYear=" + std::to_string(key.year) +
            " and iPeriod=" + std::to_string(key.period) + " and iSignSeq=" + std::to_string(key.kind) +
            " and iNo_id=" + std::to_string(key.number));
        const std::int32_t rows = toInt32(count->Fields().Item(0));
        count->Close();
        return rows;
    }

    VoucherArgument voucher_;
    std::string file_;
};

} // namespace

std::unique_ptr<Command> makeImportCommand() { return std::make_unique<ImportCommand>(); }

} // namespace z7::cashflow::host
