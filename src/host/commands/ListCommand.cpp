#include "host/cli/Command.h"
#include "host/cli/Output.h"
#include "host/cli/exitCode.h"
#include "host/cli/jsonText.h"
#include "host/commands/DatabaseArgument.h"
#include "host/commands/PeriodArgument.h"
#include "host/report/ReportOptions.h"
#include "workbench/lists/accountLists.h"
#include "z7cashflow/support/conversions.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <functional>
#include <optional>

namespace z7::cashflow::host {

namespace {

using nlohmann::ordered_json;

/// A list as a table and as JSON.
struct Listing {
    ReportTable table;
    std::vector<ordered_json> records;

    void add(std::vector<ReportTable::Cell> cells, ordered_json record) {
        table.add(std::move(cells));
        records.push_back(std::move(record));
    }
};

ReportTable::Column column(const Output& output, HostText heading, bool shrinks = false) {
    return {output.text(heading), false, shrinks};
}

std::string yesOrNothing(const Output& output, bool truth) { return truth ? output.text(HostText::yes) : ""; }

std::string dayOf(const std::optional<Date>& date) { return date ? dayText(*date) : std::string(); }

ordered_json dayOrNull(const std::optional<Date>& date) { return date ? ordered_json(dayText(*date)) : ordered_json(); }

Listing items(const Output& output, Session& session) {
    Listing list{ReportTable({column(output, HostText::item), column(output, HostText::itemName, true)}), {}};
    for (const workbench::ListedItem& item : workbench::listItems(session.connection())) {
        list.add({item.code, item.name}, {{"code", item.code}, {"name", item.name}});
    }
    return list;
}

Listing accounts(const Output& output, Session& session) {
    Listing list{ReportTable({column(output, HostText::account), column(output, HostText::accountName, true),
                              column(output, HostText::cash), column(output, HostText::endLevel),
                              column(output, HostText::closed), column(output, HostText::accountType, true)}),
                 {}};
    for (const workbench::ListedAccount& account : workbench::listAccounts(session.connection(), session.year())) {
        list.add({account.code, account.name, yesOrNothing(output, account.cash), yesOrNothing(output, account.end),
                  yesOrNothing(output, account.closed), account.type},
                 {{"code", account.code},
                  {"name", account.name},
                  {"cash", account.cash},
                  {"endLevel", account.end},
                  {"closed", account.closed},
                  {"class", account.type}});
    }
    return list;
}

Listing templates(const Output& output, Session& session) {
    Listing list{ReportTable({column(output, HostText::account), column(output, HostText::accountName, true),
                              column(output, HostText::side), column(output, HostText::item),
                              column(output, HostText::itemName, true), column(output, HostText::startDate),
                              column(output, HostText::endDate)}),
                 {}};
    for (const workbench::ListedTemplate& each : workbench::listTemplates(session.connection(), session.year())) {
        list.add({each.account, each.accountName, output.text(each.debit ? HostText::debit : HostText::credit),
                  each.item, each.itemName, dayOf(each.start), dayOf(each.end)},
                 {{"account", each.account},
                  {"accountName", each.accountName},
                  {"side", each.debit ? "debit" : "credit"},
                  {"item", each.item},
                  {"itemName", each.itemName},
                  {"from", dayOrNull(each.start)},
                  {"to", dayOrNull(each.end)}});
    }
    return list;
}

Listing kinds(const Output& output, Session& session) {
    Listing list{ReportTable({{output.text(HostText::kind), true}, {output.text(HostText::sign)}}), {}};
    for (const workbench::VoucherKinds::Kind& kind : session.kinds().all()) {
        list.add({std::to_string(kind.number), kind.sign}, {{"kind", kind.number}, {"sign", kind.sign}});
    }
    return list;
}

/// The list that a command shows.
struct ListedThing {
    const char* name;
    HostText help;
    HostText examples;
    bool ofYear; ///< each year has its own list
    Listing (*list)(const Output&, Session&);
};

/// z7cf items, accounts, templates, kinds: the lists that vouchers and rows refer to.
class ListCommand final : public Command {
public:
    explicit ListCommand(const ListedThing& thing) : thing_(thing) {}

    CLI::App& declare(CLI::App& program, Language language) override {
        CLI::App* command = program.add_subcommand(thing_.name, hostText(language, thing_.help));
        database_.declare(*command, language);
        if (thing_.ofYear) {
            year_.declare(*command, language);
        }
        report_.declare(*command, language);
        command->footer(hostText(language, thing_.examples));
        return *command;
    }

    int run(const GlobalOptions& options, const Console& console) override {
        Output output(console, options);
        const AccountPlace place = database_.take(options);
        const std::int16_t year = thing_.ofYear ? year_.year() : std::int16_t{1};
        report_.requireNewFile();
        Session session(place, year, options, console);
        const Listing list = thing_.list(output, session);
        std::string text;
        for (const ordered_json& record : list.records) {
            text += output.json() ? jsonLine(record) : "";
        }
        report_.write(output, output.json() ? text : report_.text(output, list.table));
        return exit_code::done;
    }

private:
    ListedThing thing_;
    DatabaseArgument database_;
    YearArgument year_;
    ReportOptions report_;
};

} // namespace

std::unique_ptr<Command> makeItemsCommand() {
    return std::make_unique<ListCommand>(
        ListedThing{"items", HostText::helpItems, HostText::examplesItems, false, items});
}

std::unique_ptr<Command> makeAccountsCommand() {
    return std::make_unique<ListCommand>(
        ListedThing{"accounts", HostText::helpAccounts, HostText::examplesAccounts, true, accounts});
}

std::unique_ptr<Command> makeTemplatesCommand() {
    return std::make_unique<ListCommand>(
        ListedThing{"templates", HostText::helpTemplates, HostText::examplesTemplates, true, templates});
}

std::unique_ptr<Command> makeKindsCommand() {
    return std::make_unique<ListCommand>(
        ListedThing{"kinds", HostText::helpKinds, HostText::examplesKinds, false, kinds});
}

} // namespace z7::cashflow::host
