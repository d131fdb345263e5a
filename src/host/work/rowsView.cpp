#include "host/work/rowsView.h"

#include "host/cli/jsonText.h"
#include "host/report/rowsByLine.h"
#include "host/text/amountText.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace z7::cashflow::host {

namespace {

/// The names of a year's accounts by code. Newly generated rows do not hold them.
std::map<std::string, std::string> accountNames(Session& session) {
    std::map<std::string, std::string> names;
    const auto accounts =
        session.connection().Execute("select ccode,ccode_name from code where iyear=" + std::to_string(session.year()));
    for (; !accounts->EndOfFile(); accounts->MoveNext()) {
        names.emplace(toTextOrEmpty(accounts->Fields().Item("ccode")),
                      toTextOrEmpty(accounts->Fields().Item("ccode_name")));
    }
    return names;
}

/// A field's text; empty for null and for a field that a document left out.
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

std::string sourceText(const Output& output, const ItemSource& source) {
    const std::string side = output.text(source.debit ? HostText::debit : HostText::credit);
    const std::string sideWord =
        output.language() == Language::english ? (source.debit ? std::string("debit") : std::string("credit")) : side;
    switch (source.kind) {
    case ItemSource::Kind::record:
        return output.text(HostText::fromStored);
    case ItemSource::Kind::draft:
        return output.text(HostText::fromDraft, {source.user});
    case ItemSource::Kind::line:
        return output.text(HostText::fromLine);
    case ItemSource::Kind::auxiliary:
        return output.text(HostText::fromAuxiliary);
    case ItemSource::Kind::itemTemplate:
        return source.start
                   ? output.text(HostText::fromTemplateSince, {source.account, sideWord, dayText(*source.start)})
                   : output.text(HostText::fromTemplate, {source.account, sideWord});
    case ItemSource::Kind::none:
        break;
    }
    return output.text(HostText::fromNowhere);
}

nlohmann::ordered_json sourceJson(const ItemSource& source) {
    constexpr std::array words{"stored", "draft", "line", "auxiliary-item", "template", "none"};
    nlohmann::ordered_json json = {{"from", words.at(static_cast<std::size_t>(source.kind))}};
    if (source.kind == ItemSource::Kind::draft) {
        json["user"] = source.user;
    }
    if (source.kind == ItemSource::Kind::itemTemplate) {
        json["account"] = source.account;
        json["side"] = source.debit ? "debit" : "credit";
        json["since"] = source.start ? nlohmann::ordered_json(dayText(*source.start)) : nlohmann::ordered_json();
    }
    return json;
}

/// The source of a row's item; rows without a note were not generated here.
ItemSource sourceOf(const ItemSources& sources, const CashFlow& row) {
    const auto found = sources.find(&row);
    return found == sources.end() ? ItemSource{} : found->second;
}

TextTable tableOf(const Output& output, Session& session, const CashFlowCollection& rows, const ItemSources* sources) {
    const auto names = accountNames(session);
    std::vector<TextTable::Column> columns({{output.text(HostText::line), TextTable::Align::right},
                                            {output.text(HostText::account)},
                                            {output.text(HostText::accountName), TextTable::Align::left, true},
                                            {output.text(HostText::debit), TextTable::Align::right},
                                            {output.text(HostText::credit), TextTable::Align::right},
                                            {output.text(HostText::item)},
                                            {output.text(HostText::itemName), TextTable::Align::left, true}});
    if (sources != nullptr) {
        columns.push_back({output.text(HostText::itemFrom)});
    }
    TextTable table(std::move(columns));
    for (const auto& row : rowsByLine(rows)) {
        const std::string account = fieldText(*row, "ccode");
        const auto name = names.find(account);
        table.add({fieldText(*row, "inid"), account, name == names.end() ? "" : name->second, sideText(*row, "md"),
                   sideText(*row, "mc"), fieldText(*row, "cCashItem"), fieldText(*row, "cCashItemName"),
                   sources != nullptr ? sourceText(output, sourceOf(*sources, *row)) : std::string()});
    }
    return table;
}

} // namespace

void showRows(Output& output, Session& session, const CashFlowCollection* rows, const ItemSources* sources) {
    if (output.json()) {
        nlohmann::ordered_json array = rows != nullptr ? rowsJson(*rows) : nlohmann::ordered_json::array();
        if (rows != nullptr && sources != nullptr) {
            const auto sorted = rowsByLine(*rows);
            for (std::size_t i = 0; i < sorted.size(); ++i) {
                array[i]["itemSource"] = sourceJson(sourceOf(*sources, *sorted[i]));
            }
        }
        output.line(jsonText(array));
    } else if (rows != nullptr && rows->Count() > 0) {
        output.table(tableOf(output, session, *rows, sources));
    } else {
        output.line(output.text(HostText::noRows));
    }
    output.flush();
}

} // namespace z7::cashflow::host
