#include "host/cli/jsonText.h"

#include "host/report/rowsByLine.h"
#include "host/text/refusalText.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace z7::cashflow::host {

using workbench::Finding;
using workbench::ItemOrigin;
using workbench::Outcome;
using workbench::Refusal;
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
    Json operator()(Date date) const { return isValidDate(date) ? Json(dayText(date)) : Json(date.dayNumber()); }
    template <class Number> Json operator()(Number number) const { return number; }
};

constexpr const char* hexDigits = "0123456789abcdef";

} // namespace

Json valueJson(const Variant& value) { return value.visit(JsonOfValue{}); }

std::string jsonText(const Json& value) {
    const std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string safe;
    safe.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        // The JSON writer escapes the control characters below the blank, but not DEL and the C1 controls.
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

template <class Words, class Id> const char* wordOf(const Words& words, Id id) noexcept {
    return std::find_if(words.begin(), words.end(), [id](const auto& word) { return word.first == id; })->second;
}

Json findingJson(const Finding& finding) {
    Json json = {{"kind", wordOf(kindWords, finding.kind)}};
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
        json["amount"] = finding.amount;
    }
    if (finding.kind == Kind::itemUnknown) {
        json["item"] = finding.item;
        json["origin"] = wordOf(originWords, finding.origin);
    }
    if (finding.kind == Kind::sumsDiffer) {
        json["voucher"] = finding.voucherSum;
        json["rows"] = finding.rowsSum;
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

const char* findingWord(Finding::Kind kind) noexcept { return wordOf(kindWords, kind); }

Json errorJson(const Refusal& refusal, Language language) {
    const std::string& raised = refusal.error.description();
    Json json = {{"number", refusal.error.number()},
                 {"description", raised.empty() ? refusalText(language, refusal) : raised}};
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

/// A number that a document holds as text. A text that is not a number stays a text.
Json numberOf(const std::string& text) {
    const auto number = readNumber(text);
    const bool whole = number && text.find_first_not_of("-0123456789") == std::string::npos && text.size() <= 15;
    return !number ? Json(text) : whole ? Json(static_cast<std::int64_t>(*number)) : Json(*number);
}

} // namespace

Json rowsJson(const CashFlowCollection& rows) {
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
            const Variant& value = row->Item(field);
            const bool isNumberText = value.is<std::string>() && numbers.contains(field);
            object[field] = isNumberText ? numberOf(toText(value)) : valueJson(value);
        }
        array.push_back(std::move(object));
    }
    return array;
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
