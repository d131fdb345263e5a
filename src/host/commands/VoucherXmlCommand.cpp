#include "host/cli/Command.h"
#include "host/cli/Failure.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/inputText.h"
#include "host/commands/DatabaseArgument.h"
#include "host/work/Session.h"
#include "host/work/rowsView.h"
#include "workbench/vouchers/rowsDocument.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/XmlDocument.h"
#include "z7cashflow/support/conversions.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <array>
#include <optional>

namespace z7::cashflow::host {

using workbench::rowsOfDocument;

namespace {

/// The year of the date in a voucher document; empty if it has none.
std::optional<std::int16_t> yearOfDocument(const std::string& text) {
    const auto document = XmlDocument::load(text);
    const auto date = document ? document->documentElement().attribute("dbill_date") : std::nullopt;
    const auto day = date ? readDate(*date) : std::nullopt;
    return day ? std::optional(toInt16(Variant(dayText(*day).substr(0, 4)))) : std::nullopt;
}

/// Records the first identifier that the library generates while this object lives: a temporary table is named
/// after it.
class FirstIdentifier {
public:
    FirstIdentifier() {
        auto& source = modPublic::context().guidSource;
        former_ = source;
        source = [this] {
            auto bytes = former_();
            if (bytes && !first_) {
                first_ = bytes;
            }
            return bytes;
        };
    }
    ~FirstIdentifier() { modPublic::context().guidSource = former_; }
    FirstIdentifier(const FirstIdentifier&) = delete;
    FirstIdentifier& operator=(const FirstIdentifier&) = delete;

    [[nodiscard]] std::optional<std::string> text() const {
        return first_ ? std::optional(guidText([this] { return first_; })) : std::nullopt;
    }

private:
    GuidSource former_;
    std::optional<std::array<std::uint8_t, 16>> first_;
};

/// z7cf voucher-xml: generates the rows of a voucher given as an XML document.
class VoucherXmlCommand final : public Command {
public:
    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand("voucher-xml", hostText(language, HostText::helpVoucherXml));
        database_.declare(*command, language);
        command->add_option("XML", file_, hostText(language, HostText::helpVoucherFile));
        command->add_option("--year", year_, hostText(language, HostText::helpXmlYear));
        command->add_flag("--create", create_, hostText(language, HostText::helpCreate));
        command->add_flag("--xml", asDocument_, hostText(language, HostText::helpAsXml));
        command->add_flag("--identities", identities_, hostText(language, HostText::helpIdentities));
        command->footer(hostText(language, HostText::examplesVoucherXml));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        const AccountPlace place = database_.take(options, {{"XML", &file_}});
        const std::string voucher = inputText(file_, console);
        const std::int16_t year = yearOf(voucher);
        Output output(console, options);
        Session session(place, year, options, console);
        const std::string document = rowsOfVoucher(output, session, voucher);
        if (asDocument_) {
            output.raw(document);
        } else {
            showRows(output, session, rowsOfDocument(document).get(), nlohmann::ordered_json::object(), identities_);
        }
        output.flush();
        return exit_code::done;
    }

private:
    [[nodiscard]] std::int16_t yearOf(const std::string& voucher) const {
        if (year_ && (*year_ < 1 || *year_ > 9999)) {
            throw Failure(exit_code::usage, HostText::badYear, {std::to_string(*year_)});
        }
        const auto year = year_ ? std::optional(static_cast<std::int16_t>(*year_)) : yearOfDocument(voucher);
        if (!year) {
            throw Failure(exit_code::usage, HostText::yearMissing, {file_});
        }
        return *year;
    }

    /// Uses the outside contract because it reads the account's options itself; the ledger contract does the
    /// same otherwise.
    [[nodiscard]] std::string rowsOfVoucher(Output& output, Session& session, const std::string& voucher) const {
        const FirstIdentifier identifier;
        try {
            return session.provider().out().GetCashFlowColFromXml(session.connection(), voucher, create_);
        } catch (const Error&) {
            dropLeftTable(output, session, identifier);
            throw;
        }
    }

    /// After a failure, drops the table into which the voucher was read.
    static void dropLeftTable(Output& output, Session& session, const FirstIdentifier& identifier) {
        const auto text = identifier.text();
        if (!text) {
            return;
        }
        bool dropped = false;
        ignoringErrors([&] { // the table may not exist, and the original error is the one to report
            session.connection().Execute("drop table tempdb..TempVoucher" + *text);
            dropped = true;
        });
        if (dropped) {
            output.remark(output.text(HostText::tableDropped));
        }
    }

    DatabaseArgument database_;
    std::string file_;
    std::optional<std::int64_t> year_;
    bool create_ = false;
    bool asDocument_ = false;
    bool identities_ = false;
};

} // namespace

std::unique_ptr<Command> makeVoucherXmlCommand() { return std::make_unique<VoucherXmlCommand>(); }

} // namespace z7::cashflow::host
