#include "host/work/RowsView.h"

#include "host/cli/jsonText.h"
#include "host/report/rowsByLine.h"
#include "host/text/amountText.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <optional>

namespace z7::cashflow::host {

namespace {

/// Names of the accounts of a year. Freshly generated rows do not carry them.
std::map<std::string, std::string> accountNames(Session& session) {
    std::map<std::string, std::string> names;
    const auto accounts =
        session.connection().Execute("select ccode,ccode_name from code where iyear=" + std::to_string(session.year()));
    for (; !accounts->EndOfFile(); accounts->MoveNext()) {
        names.emplace(toTextOrEmpty(accounts->Fields().Item("ccode")),
                      toTextOrEmpty(accounts->Fields().Item("ccode_name")));
    }
    accounts->Close();
    return names;
}

/// A field's text; empty for a null and for a field that a document left out.
std::string fieldText(const CashFlow& row, const std::string& field) {
    const auto& fields = row.Fields();
    const bool there = std::find(fields.begin(), fields.end(), field) != fields.end();
    return there ? toTextOrEmpty(row.Item(field)) : std::string();
}

std::string sideText(const CashFlow& row, const std::string& field) {
    const std::string text = fieldText(row, field);
    const std::optional<double> amount = readNumber(text);
    return !amount ? text : *amount == 0.0 ? "" : amountText(*amount);
}

TextTable tableOf(const Output& output, Session& session, const CashFlowCollection& rows) {
    const auto names = accountNames(session);
    TextTable table({{output.text(HostText::line), TextTable::Align::right},
                     {output.text(HostText::account)},
                     {output.text(HostText::accountName), TextTable::Align::left, true},
                     {output.text(HostText::debit), TextTable::Align::right},
                     {output.text(HostText::credit), TextTable::Align::right},
                     {output.text(HostText::item)},
                     {output.text(HostText::itemName), TextTable::Align::left, true}});
    for (const auto& row : rowsByLine(rows)) {
        const std::string account = fieldText(*row, "ccode");
        const auto name = names.find(account);
        table.add({fieldText(*row, "inid"), account, name == names.end() ? "" : name->second, sideText(*row, "md"),
                   sideText(*row, "mc"), fieldText(*row, "cCashItem"), fieldText(*row, "cCashItemName")});
    }
    return table;
}

} // namespace

void showRows(Output& output, Session& session, const CashFlowCollection* rows) {
    if (output.json()) {
        output.line(rows != nullptr ? jsonText(rowsJson(*rows)) : "[]");
    } else if (rows != nullptr && rows->Count() > 0) {
        output.table(tableOf(output, session, *rows));
    } else {
        output.line(output.text(HostText::noRows));
    }
    output.flush();
}

} // namespace z7::cashflow::host
