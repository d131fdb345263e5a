#include "host/report/statementReport.h"

#include "host/text/HostText.h"

#include <nlohmann/json.hpp>

namespace z7::cashflow::host {

namespace {

using namespace workbench;
using nlohmann::ordered_json;
using Cells = std::vector<ReportTable::Cell>;

/// Whether the statement has columns besides its total.
bool hasColumns(const CashFlowStatement& statement) { return statement.columns.size() > 1; }

Cells flowCells(const Flow& flow) { return {flow.receipts, flow.payments, flow.net()}; }

void append(Cells& cells, const Cells& more) { cells.insert(cells.end(), more.begin(), more.end()); }

void appendColumns(Cells& cells, const CashFlowStatement& statement, const std::vector<Flow>& flows) {
    if (hasColumns(statement)) {
        for (const Flow& flow : flows) {
            cells.emplace_back(flow.net());
        }
    }
}

Cells itemCells(const CashFlowStatement& statement, const StatementLine& line, std::string code, std::string name) {
    Cells cells{std::move(code), std::move(name)};
    appendColumns(cells, statement, line.columns);
    append(cells, flowCells(line.total));
    return cells;
}

void addColumnHeadings(std::vector<ReportTable::Column>& columns, const CashFlowStatement& statement) {
    if (hasColumns(statement)) {
        for (const StatementColumn& column : statement.columns) {
            columns.push_back({columnName(column), true});
        }
    }
}

ordered_json flowJson(const Flow& flow) {
    return {{"receipts", flow.receipts.value()}, {"payments", flow.payments.value()}, {"net", flow.net().value()}};
}

ordered_json lineJson(const CashFlowStatement& statement, const StatementLine& line, bool named) {
    ordered_json object = ordered_json::object();
    if (named) {
        object["code"] = line.code;
        object["name"] = line.name;
    }
    object.update(flowJson(line.total));
    if (hasColumns(statement)) {
        auto& periods = object["periods"] = ordered_json::array();
        for (std::size_t i = 0; i < line.columns.size(); ++i) {
            ordered_json period = {{"period", statement.columns[i].first}, {"to", statement.columns[i].last}};
            period.update(flowJson(line.columns[i]));
            periods.push_back(std::move(period));
        }
    }
    if (!line.currencies.empty()) {
        auto& currencies = object["currencies"] = ordered_json::array();
        for (const CurrencyFlow& each : line.currencies) {
            ordered_json currency = {{"currency", each.currency}};
            currency.update(flowJson(each.flow));
            currencies.push_back(std::move(currency));
        }
    }
    return object;
}

const char* gapWord(Gap gap) noexcept {
    switch (gap) {
    case Gap::unallocated:
        return "unallocated";
    case Gap::hiddenRows:
        return "hidden-rows";
    case Gap::voucherMissing:
        return "voucher-missing";
    case Gap::sumsDiffer:
        break;
    }
    return "sums-differ";
}

ordered_json accountJson(const CashAccount& account) {
    return {{"opening", account.opening.value()},
            {"receipts", account.flow.receipts.value()},
            {"payments", account.flow.payments.value()},
            {"net", account.flow.net().value()},
            {"closing", account.closing().value()}};
}

} // namespace

std::string columnName(const StatementColumn& column) {
    const std::string first = std::to_string(column.first);
    return column.first == column.last ? first : first + "-" + std::to_string(column.last);
}

std::string gapText(Gap gap, Language language) {
    switch (gap) {
    case Gap::unallocated:
        return hostText(language, HostText::gapUnallocated);
    case Gap::hiddenRows:
        return hostText(language, HostText::gapHiddenRows);
    case Gap::voucherMissing:
        return hostText(language, HostText::gapVoucherMissing);
    case Gap::sumsDiffer:
        break;
    }
    return hostText(language, HostText::gapSumsDiffer);
}

ReportTable itemTable(const CashFlowStatement& statement, Language language) {
    std::vector<ReportTable::Column> columns{{hostText(language, HostText::item)},
                                             {hostText(language, HostText::itemName), false, true}};
    addColumnHeadings(columns, statement);
    for (const HostText heading : {HostText::receipts, HostText::payments, HostText::net}) {
        columns.push_back({hostText(language, heading), true});
    }
    ReportTable table(std::move(columns));
    for (const StatementLine& group : statement.groups) {
        table.add(itemCells(statement, group, group.code, group.name));
        for (const StatementLine& item : statement.items) {
            if (item.group == group.code && item.code != group.code) {
                table.add(itemCells(statement, item, "  " + item.code, "  " + item.name));
            }
        }
    }
    table.add(itemCells(statement, statement.total, hostText(language, HostText::total), ""));
    return table;
}

ReportTable currencyTable(const CashFlowStatement& statement, Language language) {
    ReportTable table({{hostText(language, HostText::item)},
                       {hostText(language, HostText::itemName), false, true},
                       {hostText(language, HostText::currency)},
                       {hostText(language, HostText::receipts), true},
                       {hostText(language, HostText::payments), true},
                       {hostText(language, HostText::net), true}});
    for (const StatementLine& item : statement.items) {
        for (const CurrencyFlow& each : item.currencies) {
            Cells cells{item.code, item.name,
                        each.currency.empty() ? hostText(language, HostText::ledgerCurrency) : each.currency};
            append(cells, flowCells(each.flow));
            table.add(std::move(cells));
        }
    }
    return table;
}

ReportTable accountTable(const CashFlowStatement& statement, Language language) {
    ReportTable table({{hostText(language, HostText::account)},
                       {hostText(language, HostText::accountName), false, true},
                       {hostText(language, HostText::opening), true},
                       {hostText(language, HostText::receipts), true},
                       {hostText(language, HostText::payments), true},
                       {hostText(language, HostText::closing), true}});
    const auto add = [&table](const CashAccount& account, const std::string& code) {
        table.add(
            {code, account.name, account.opening, account.flow.receipts, account.flow.payments, account.closing()});
    };
    for (const CashAccount& account : statement.accounts) {
        add(account, account.code);
    }
    add(statement.cash, hostText(language, HostText::total));
    return table;
}

ReportTable gapTable(const CashFlowStatement& statement, const VoucherKinds& kinds, Language language) {
    ReportTable table({{hostText(language, HostText::voucher)},
                       {hostText(language, HostText::cashSum), true},
                       {hostText(language, HostText::allocated), true},
                       {hostText(language, HostText::difference), true},
                       {hostText(language, HostText::message)}});
    for (const VoucherGap& gap : statement.gaps) {
        table.add(
            {kinds.keyText(keyIn(statement, gap)), gap.cash, gap.rows, gap.difference(), gapText(gap.gap, language)});
    }
    return table;
}

ReportTable wholeTable(const CashFlowStatement& statement, const VoucherKinds& kinds, Language language) {
    std::vector<ReportTable::Column> columns{{"section"},  {"code"},     {"name"}, {"opening"},
                                             {"receipts"}, {"payments"}, {"net"},  {"closing"}};
    addColumnHeadings(columns, statement);
    const std::size_t width = columns.size();
    ReportTable table(std::move(columns));
    const auto addLine = [&](const char* section, const StatementLine& line) {
        Cells cells{section, line.code, line.name, ""};
        append(cells, flowCells(line.total));
        cells.emplace_back("");
        appendColumns(cells, statement, line.columns);
        table.add(std::move(cells));
    };
    const auto addAccount = [&](const char* section, const CashAccount& account, const std::vector<Flow>& flows) {
        Cells cells{section, account.code, account.name, account.opening};
        append(cells, flowCells(account.flow));
        cells.emplace_back(account.closing());
        appendColumns(cells, statement, flows);
        cells.resize(width);
        table.add(std::move(cells));
    };
    for (const StatementLine& item : statement.items) {
        addLine("item", item);
    }
    addLine("total", statement.total);
    for (const CashAccount& account : statement.accounts) {
        addAccount("account", account, {});
    }
    addAccount("cash", statement.cash, statement.cashColumns);
    for (const VoucherGap& gap : statement.gaps) {
        Cells cells{"difference",    kinds.keyText(keyIn(statement, gap)), gapText(gap.gap, language), "", "", "",
                    gap.difference()};
        cells.resize(width);
        table.add(std::move(cells));
    }
    return table;
}

ordered_json statementJson(const CashFlowStatement& statement, const VoucherKinds& kinds, Language language) {
    ordered_json object = {{"year", statement.year}, {"from", statement.firstPeriod}, {"to", statement.lastPeriod}};
    auto& items = object["items"] = ordered_json::array();
    for (const StatementLine& item : statement.items) {
        items.push_back(lineJson(statement, item, true));
    }
    auto& groups = object["groups"] = ordered_json::array();
    for (const StatementLine& group : statement.groups) {
        groups.push_back(lineJson(statement, group, true));
    }
    object["total"] = lineJson(statement, statement.total, false);
    auto& accounts = object["accounts"] = ordered_json::array();
    for (const CashAccount& account : statement.accounts) {
        ordered_json each = {{"code", account.code}, {"name", account.name}};
        each.update(accountJson(account));
        accounts.push_back(std::move(each));
    }
    object["cash"] = accountJson(statement.cash);
    object["difference"] = statement.difference().value();
    auto& vouchers = object["vouchers"] = ordered_json::array();
    for (const VoucherGap& gap : statement.gaps) {
        vouchers.push_back({{"voucher", voucherKeyText(keyIn(statement, gap))},
                            {"sign", kinds.sign(gap.kind)},
                            {"cash", gap.cash.value()},
                            {"rows", gap.rows.value()},
                            {"difference", gap.difference().value()},
                            {"code", gapWord(gap.gap)},
                            {"reason", gapText(gap.gap, language)}});
    }
    return object;
}

} // namespace z7::cashflow::host
