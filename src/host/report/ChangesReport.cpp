#include "host/report/ChangesReport.h"

#include "host/cli/jsonText.h"
#include "host/text/HostText.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace z7::cashflow::host {

namespace {

using nlohmann::ordered_json;
using workbench::Amount;
using workbench::RowChange;
using workbench::RowImage;
using workbench::VoucherKey;
using workbench::VoucherKinds;
using Kind = RowChange::Kind;

const RowImage& shownRow(const RowChange& change) { return change.after ? *change.after : *change.before; }

HostText kindText(Kind kind) {
    return kind == Kind::kept      ? HostText::rowKept
           : kind == Kind::added   ? HostText::rowNew
           : kind == Kind::changed ? HostText::rowChanged
                                   : HostText::rowRemoved;
}

const char* kindWord(Kind kind) {
    return kind == Kind::kept ? "kept" : kind == Kind::added ? "new" : kind == Kind::changed ? "changed" : "removed";
}

/// The heading of a column that has another name for people than in the database.
std::optional<HostText> knownColumn(std::string_view column) {
    return column == "cCashItem" ? std::optional(HostText::item)
           : column == "md"      ? std::optional(HostText::debit)
           : column == "mc"      ? std::optional(HostText::credit)
                                 : std::nullopt;
}

ReportTable::Cell amountCell(const Variant& value) {
    const Amount amount = value.isNull() ? Amount() : Amount::of(value);
    return amount.isZero() ? ReportTable::Cell(std::string()) : ReportTable::Cell(amount);
}

std::string formerValues(const RowChange& change, Language language) {
    std::string text;
    for (const std::size_t column : change.columns) {
        const std::string_view name = workbench::rowColumns.at(column);
        const auto known = knownColumn(name);
        const Variant& value = change.before->at(column);
        text += (text.empty() ? "" : hostText(language, HostText::listSeparator)) +
                (known ? hostText(language, *known) : std::string(name)) + " " +
                (value.isNull() || toText(value).empty() ? "-" : toText(value));
    }
    return text;
}

} // namespace

ChangesReport::ChangesReport(const VoucherKinds& kinds, Language language)
    : kinds_(kinds), language_(language), table_({{hostText(language, HostText::voucher)},
                                                  {hostText(language, HostText::rowChange)},
                                                  {hostText(language, HostText::line)},
                                                  {hostText(language, HostText::account)},
                                                  {hostText(language, HostText::debit), true},
                                                  {hostText(language, HostText::credit), true},
                                                  {hostText(language, HostText::item)},
                                                  {hostText(language, HostText::formerValues), false, true}}) {}

void ChangesReport::add(const VoucherKey& key, const std::vector<RowChange>& changes) {
    for (const RowChange& change : changes) {
        const RowImage& row = shownRow(change);
        table_.add({kinds_.keyText(key), hostText(language_, kindText(change.kind)), std::to_string(row.line()),
                    toTextOrEmpty(row["ccode"]), amountCell(row["md"]), amountCell(row["mc"]),
                    toTextOrEmpty(row["cCashItem"]), formerValues(change, language_)});
    }
}

namespace {

/// An amount of a row; null stays null.
ordered_json amountOf(const Variant& value) {
    return value.get<double>() != nullptr ? amountJson(*value.get<double>()) : valueJson(value);
}

} // namespace

ordered_json changesJson(const std::vector<RowChange>& changes) {
    ordered_json rows = ordered_json::array();
    for (const RowChange& change : changes) {
        const RowImage& row = shownRow(change);
        ordered_json json = {{"change", kindWord(change.kind)},        {"line", row.line()},
                             {"account", toTextOrEmpty(row["ccode"])}, {"item", toTextOrEmpty(row["cCashItem"])},
                             {"debit", amountOf(row["md"])},           {"credit", amountOf(row["mc"])}};
        if (change.kind == Kind::changed) {
            ordered_json was = ordered_json::object();
            for (const std::size_t column : change.columns) {
                was[std::string(workbench::rowColumns.at(column))] = valueJson(change.before->at(column));
            }
            json["was"] = std::move(was);
        }
        rows.push_back(std::move(json));
    }
    return rows;
}

} // namespace z7::cashflow::host
