#include "host/work/rowsView.h"

#include "host/cli/jsonText.h"
#include "host/report/ReportTable.h"
#include "host/report/rowsByLine.h"
#include "host/text/amountText.h"
#include "workbench/lists/accountLists.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

namespace z7::cashflow::host {

namespace {

/// The names of a year's accounts by code. Newly generated rows do not hold them.
std::map<std::string, std::string> accountNames(Session& session) {
    std::map<std::string, std::string> names;
    for (workbench::ListedAccount& account : workbench::listAccounts(session.connection(), session.year())) {
        names.emplace(std::move(account.code), std::move(account.name));
    }
    return names;
}

/// A field's text; empty for null and for a field that a document left out.
std::string fieldText(const CashFlow& row, const std::string& field) {
    const auto& fields = row.Fields();
    const bool there = std::find(fields.begin(), fields.end(), field) != fields.end();
    return there ? toTextOrEmpty(row.Item(field)) : std::string();
}

/// An amount of a row; empty if it is 0. Text that is not a number, and an amount too large for the sums of reports,
/// stay text.
ReportTable::Cell amountCell(const CashFlow& row, const std::string& field) {
    const std::string text = fieldText(row, field);
    const std::optional<double> amount = readNumber(text);
    if (!amount) {
        return text;
    }
    ReportTable::Cell cell = *amount == 0.0 ? std::string() : amountText(*amount);
    if (*amount != 0.0) {
        ignoringErrors([&] { cell = workbench::Amount::of(Variant(*amount)); });
    }
    return cell;
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

ReportTable tableOf(const Output& output, Session& session, const CashFlowCollection& rows,
                    const ItemSources* sources) {
    const auto names = accountNames(session);
    std::vector<ReportTable::Column> columns({{output.text(HostText::line), true},
                                              {output.text(HostText::account)},
                                              {output.text(HostText::accountName), false, true},
                                              {output.text(HostText::debit), true},
                                              {output.text(HostText::credit), true},
                                              {output.text(HostText::item)},
                                              {output.text(HostText::itemName), false, true}});
    if (sources != nullptr) {
        columns.push_back({output.text(HostText::itemFrom)});
    }
    ReportTable table(std::move(columns));
    for (const auto& row : rowsByLine(rows)) {
        const std::string account = fieldText(*row, "ccode");
        const auto name = names.find(account);
        std::vector<ReportTable::Cell> cells{fieldText(*row, "inid"),
                                             account,
                                             name == names.end() ? "" : name->second,
                                             amountCell(*row, "md"),
                                             amountCell(*row, "mc"),
                                             fieldText(*row, "cCashItem"),
                                             fieldText(*row, "cCashItemName")};
        if (sources != nullptr) {
            cells.emplace_back(sourceText(output, sourceOf(*sources, *row)));
        }
        table.add(std::move(cells));
    }
    return table;
}

} // namespace

std::string rowsText(const Output& output, Session& session, const CashFlowCollection* rows,
                     const ReportOptions& report, const ItemSources* sources) {
    if (!report.csv() && (rows == nullptr || rows->Count() == 0)) {
        return output.text(HostText::noRows) + "\n";
    }
    const auto none = CashFlowCollection::Create();
    return report.text(output, tableOf(output, session, rows != nullptr ? *rows : *none, sources));
}

nlohmann::ordered_json rowsArray(const CashFlowCollection* rows, bool identities, const ItemSources* sources) {
    if (rows == nullptr) {
        return nlohmann::ordered_json::array();
    }
    nlohmann::ordered_json array = rowsJson(*rows, identities);
    if (sources != nullptr) {
        const auto sorted = rowsByLine(*rows);
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            array[i]["itemSource"] = sourceJson(sourceOf(*sources, *sorted[i]));
        }
    }
    return array;
}

void showRows(Output& output, Session& session, const CashFlowCollection* rows, nlohmann::ordered_json record,
              bool identities) {
    if (output.json()) {
        record["rows"] = rowsArray(rows, identities);
        output.raw(jsonLine(std::move(record)));
    } else {
        output.raw(rowsText(output, session, rows));
    }
    output.flush();
}

} // namespace z7::cashflow::host
