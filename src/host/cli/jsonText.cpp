#include "host/cli/jsonText.h"

#include "host/report/rowsByLine.h"
#include "host/text/codeText.h"
#include "host/text/refusalText.h"
#include "workbench/Amount.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <set>
#include <string_view>
#include <utility>

namespace z7::cashflow::host {

using workbench::Finding;
using workbench::ItemOrigin;
using workbench::Outcome;
using workbench::Refusal;
using workbench::Verdict;
using workbench::VoucherKey;
using workbench::voucherKeyText;
using workbench::VoucherKinds;
using workbench::VoucherResult;

using Json = nlohmann::ordered_json;

namespace {

struct JsonOfValue {
    Json operator()(Null /*value*/) const { return nullptr; }
    Json operator()(const std::string& text) const { return text; }
    Json operator()(bool truth) const { return truth; }
    Json operator()(Date date) const { return isValidDate(date) ? Json(dateText(date)) : Json(date.dayNumber()); }
    template <class Number> Json operator()(Number number) const { return number; }
};

constexpr const char* hexDigits = "0123456789abcdef";

} // namespace

Json valueJson(const Variant& value) { return value.visit(JsonOfValue{}); }

namespace {

/// Escapes the control characters that the JSON library writes as they are: DEL and the C1 controls.
std::string withoutControls(const std::string& text) {
    std::string safe;
    safe.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        const bool upperControl = byte == 0xC2 && next >= 0x80 && next <= 0x9F;
        if (byte == 0x7F || upperControl) {
            const unsigned code = upperControl ? next : byte;
            safe += "\\u00";
            safe += hexDigits[code >> 4U];
            safe += hexDigits[code & 15U];
            i += upperControl ? 1 : 0;
        } else {
            safe += text[i];
        }
    }
    return safe;
}

constexpr double decimalUnit = 10000.0;
constexpr double largestAmount = 9e11; ///< up to here a double holds four decimals

std::string decimalText(double number) {
    const bool amount = std::fabs(number) <= largestAmount && std::round(number * decimalUnit) / decimalUnit == number;
    if (amount) {
        return workbench::Amount::of(number).plainText();
    }
    constexpr std::size_t longest = 32;
    std::array<char, longest> digits{};
    const bool readable = std::fabs(number) >= 1e-6 && std::fabs(number) < 1e15; // others have an exponent
    const auto format = readable ? std::chars_format::fixed : std::chars_format::scientific;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, format).ptr;
    return {digits.data(), end};
}

std::string scalarText(const Json& value) {
    return value.is_number_float() ? decimalText(value.get<double>())
                                   : value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void write(const Json& value, std::string& text) {
    if (!value.is_structured()) {
        text += scalarText(value);
        return;
    }
    text += value.is_object() ? '{' : '[';
    const char* separator = "";
    for (const auto& member : value.items()) {
        text += separator;
        if (value.is_object()) {
            text += scalarText(member.key()) + ":";
        }
        write(member.value(), text);
        separator = ",";
    }
    text += value.is_object() ? '}' : ']';
}

} // namespace

std::string jsonText(const Json& value) {
    std::string text;
    write(value, text);
    return withoutControls(text);
}

std::string jsonLine(Json record) {
    Json line = {{"form", jsonForm}};
    for (const auto& member : record.items()) {
        line[member.key()] = std::move(member.value());
    }
    return jsonText(line) + "\n";
}

Json amountJson(double amount) {
    return std::fabs(amount) <= largestAmount ? std::round(amount * decimalUnit) / decimalUnit : amount;
}

Json keyJson(const VoucherKey& key, const VoucherKinds& kinds) {
    return {{"voucher", voucherKeyText(key)}, {"sign", kinds.sign(key.kind)}};
}

Json resultJson(const VoucherResult& result, const VoucherKinds& kinds, Language language) {
    Json json = keyJson(result.key, kinds);
    json["outcome"] = outcomeWord(result.outcome);
    json["rows"] = result.rows;
    if (result.rows == 0 && result.removed > 0) {
        json["removed"] = result.removed;
    }
    if (result.refusal) {
        json["error"] = errorJson(*result.refusal, language);
    }
    if (result.mismatch) {
        json["mismatch"] = errorJson(*result.mismatch, language);
    }
    return json;
}

namespace {

using Kind = Finding::Kind;

// Part of the JSON form, so that renaming an enumerator does not change what programs read.
constexpr std::array kindWords{
    std::pair{Kind::voucherGone, "voucher-gone"},
    std::pair{Kind::dateMissing, "date-missing"},
    std::pair{Kind::dateOutside, "date-outside"},
    std::pair{Kind::amountMissing, "amount-missing"},
    std::pair{Kind::itemUnknown, "item-unknown"},
    std::pair{Kind::accountUnknown, "account-unknown"},
    std::pair{Kind::rowsNotFound, "rows-not-found"},
    std::pair{Kind::sumsDiffer, "sums-differ"},
    std::pair{Kind::noTemplate, "no-template"},
    std::pair{Kind::lineWithoutRow, "line-without-row"},
    std::pair{Kind::accountNotInYear, "account-not-in-year"},
    std::pair{Kind::accountClosed, "account-closed"},
    std::pair{Kind::accountNotEnd, "account-not-end"},
    std::pair{Kind::rowWithoutLine, "row-without-line"},
    std::pair{Kind::rowOnOther, "row-on-other-account"},
    std::pair{Kind::rowsDoubled, "rows-doubled"},
    std::pair{Kind::notStoredYet, "not-stored-yet"},
    std::pair{Kind::newRowsMatch, "new-rows-match"},
    std::pair{Kind::heldElsewhere, "held-elsewhere"},
    std::pair{Kind::noRowsDocument, "no-rows-document"},
    std::pair{Kind::otherVoucher, "other-voucher"},
    std::pair{Kind::changedSince, "changed-since"},
    std::pair{Kind::lineMissing, "line-missing"},
    std::pair{Kind::amountExceedsLine, "amount-exceeds-line"},
    std::pair{Kind::restWithoutItem, "rest-without-item"},
    std::pair{Kind::noLedgerVoucher, "no-ledger-voucher"},
};

constexpr std::array originWords{
    std::pair{ItemOrigin::storedRow, "stored-row"},
    std::pair{ItemOrigin::auxiliaryItem, "auxiliary-item"},
    std::pair{ItemOrigin::line, "line"},
    std::pair{ItemOrigin::templateOfAccount, "template"},
    std::pair{ItemOrigin::document, "document"},
};

template <class Words, class Id> const char* listedWord(const Words& words, Id id) noexcept {
    return std::find_if(words.begin(), words.end(), [id](const auto& word) { return word.first == id; })->second;
}

Json findingJson(const Finding& finding) {
    Json json = {{"kind", listedWord(kindWords, finding.kind)}};
    const auto addText = [&json](const char* name, const std::string& text) {
        if (!text.empty()) {
            json[name] = text;
        }
    };
    if (finding.line != 0) {
        json["line"] = finding.line;
    }
    addText("account", finding.account);
    addText("otherAccount", finding.otherAccount);
    if (finding.amount != 0.0 || finding.kind == Kind::amountMissing) {
        json["side"] = finding.debit ? "debit" : "credit";
    }
    if (finding.amount != 0.0) {
        json["amount"] = amountJson(finding.amount);
    }
    if (finding.kind == Kind::itemUnknown) {
        json["item"] = finding.item;
        json["origin"] = listedWord(originWords, finding.origin);
    }
    if (finding.kind == Kind::sumsDiffer) {
        json["voucher"] = amountJson(finding.voucherSum);
        json["rows"] = amountJson(finding.rowsSum);
    }
    if (finding.kind == Kind::rowsDoubled || finding.kind == Kind::rowsNotFound) {
        json["rows"] = finding.rows;
    }
    if (finding.kind == Kind::dateOutside) {
        json["date"] = dayText(finding.date);
    }
    addText("voucher", finding.voucher);
    if (finding.run != 0) {
        json["run"] = finding.run;
    }
    return json;
}

} // namespace

const char* findingWord(Finding::Kind kind) noexcept { return listedWord(kindWords, kind); }

Json errorJson(const Refusal& refusal, Language language) {
    const std::string& raised = refusal.error.description();
    const std::string text = refusalText(language, refusal);
    Json json = {
        {"code", refusal.findings.empty() ? codeText(refusal.error) : findingWord(refusal.findings.front().kind)},
        {"number", refusal.error.number()},
        {"text", text},
        {"description", raised.empty() ? text : raised}};
    if (!refusal.findings.empty()) {
        Json findings = Json::array();
        for (const Finding& finding : refusal.findings) {
            findings.push_back(findingJson(finding));
        }
        json["findings"] = std::move(findings);
    }
    return json;
}

namespace {

const char* verdictWord(Verdict::Kind kind) noexcept {
    switch (kind) {
    case Verdict::Kind::matched:
        return "matched";
    case Verdict::Kind::nothing:
        return "nothing";
    case Verdict::Kind::noCash:
        return "no-cash";
    case Verdict::Kind::unmatched:
    case Verdict::Kind::unworkable:
        break;
    }
    return "refused";
}

/// The fields of a row that are amounts: of the ledger's currency, and of a foreign one.
constexpr std::array<std::string_view, 4> amountFields{"md", "mc", "md_f", "mc_f"};

/// A number that a document holds as text. A text that is not a number stays a text.
Json numberOf(const std::string& text) {
    const auto number = readNumber(text);
    const bool whole = number && text.find_first_not_of("-0123456789") == std::string::npos && text.size() <= 15;
    return !number ? Json(text) : whole ? Json(static_cast<std::int64_t>(*number)) : Json(*number);
}

} // namespace

Json rowsJson(const CashFlowCollection& rows, bool identities) {
    Json array = Json::array();
    std::set<std::string> numbers;
    for (const std::string& field : rows.CFStruct().Fields()) {
        if (rows.CFStruct().Item(field)->DataType == "num") {
            numbers.insert(field);
        }
    }
    for (const auto& row : rowsByLine(rows)) {
        Json object = Json::object();
        for (const std::string& field : row->Fields()) {
            if (!identities && (field == "key" || field == "RowGuid")) {
                continue;
            }
            const Variant& value = row->Item(field);
            const bool isNumberText = value.is<std::string>() && numbers.contains(field);
            const Json json = isNumberText ? numberOf(toText(value)) : valueJson(value);
            const bool isAmount = std::find(amountFields.begin(), amountFields.end(), field) != amountFields.end();
            object[field] = isAmount && json.is_number() ? amountJson(json.get<double>()) : json;
        }
        array.push_back(std::move(object));
    }
    return array;
}

void addVerdictJson(Json& json, const Verdict& verdict, Language language) {
    json["verdict"] = verdictWord(verdict.kind);
    if (verdict.refusal) {
        json["error"] = errorJson(*verdict.refusal, language);
    }
}

const char* outcomeWord(Outcome outcome) noexcept {
    switch (outcome) {
    case Outcome::stored:
        return "stored";
    case Outcome::noCash:
        return "no-cash";
    case Outcome::nothing:
        return "nothing";
    case Outcome::refused:
        break;
    }
    return "refused";
}

} // namespace z7::cashflow::host
