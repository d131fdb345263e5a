#include "host/cli/jsonText.h"

#include "host/report/rowsByLine.h"
#include "z7cashflow/support/conversions.h"

#include <nlohmann/json.hpp>

#include <set>

namespace z7::cashflow::host {

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

std::string jsonText(const Json& value) {
    const std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string safe;
    safe.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        // The writer escapes the controls below the blank; delete and the upper ones are left to do.
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

Json resultJson(const VoucherResult& result) {
    Json json = {
        {"voucher", voucherKeyText(result.key)}, {"outcome", outcomeWord(result.outcome)}, {"rows", result.rows}};
    if (result.refusal) {
        json["error"] = errorJson(*result.refusal);
    }
    return json;
}

Json errorJson(const Error& refusal) { return {{"number", refusal.number()}, {"description", refusal.description()}}; }

namespace {

/// A number that a document holds as text. A text that is none stays one.
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
            object[field] = isNumberText ? numberOf(toText(value)) : value.visit(JsonOfValue{});
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
