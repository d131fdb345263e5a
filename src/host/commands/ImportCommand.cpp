#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/inputText.h"
#include "host/commands/arguments.h"
#include "host/commands/savedVoucher.h"
#include "host/work/Allotment.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <CLI/CLI.hpp>

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
        OpenVoucher voucher(voucher_, options, console, {{"XML", &file_}});
        std::string document = inputText(file_, console);
        return tellSaved(output, save(voucher.session(), voucher.head().key, document));
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
