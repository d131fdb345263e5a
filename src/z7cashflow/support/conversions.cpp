#include "z7cashflow/support/conversions.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/decimalDigits.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

namespace z7::cashflow {

namespace {

template <class... Cases> struct Overloaded : Cases... { using Cases::operator()...; };
template <class... Cases> Overloaded(Cases...) -> Overloaded<Cases...>;

bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }
bool isBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view trimmed(std::string_view text) noexcept {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// A plain decimal "123.45e6" without sign or commas.
std::optional<double> parseDecimal(std::string_view text) noexcept {
    double value = 0.0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size()) {
        return std::nullopt;
    }
    if (status == std::errc::result_out_of_range) {
        // Too small counts as zero, too large as infinite, which the callers refuse.
        const auto exponent = text.find_first_of("eE");
        const bool tiny = exponent != std::string_view::npos ? text.substr(exponent + 1).starts_with('-')
                                                             : text.starts_with('0') || text.starts_with('.');
        return tiny ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return status == std::errc() ? std::optional(value) : std::nullopt;
}

std::size_t digitRun(std::string_view text, std::size_t from) noexcept {
    std::size_t at = from;
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    return at - from;
}

// How much of a text, from its first character, is an exponent: "e", an optional sign, digits.
std::size_t exponentLength(std::string_view text) noexcept {
    if (text.empty() || (text[0] != 'e' && text[0] != 'E')) {
        return 0;
    }
    const std::size_t sign = text.size() > 1 && (text[1] == '+' || text[1] == '-') ? 2 : 1;
    const std::size_t digits = digitRun(text, sign);
    return digits == 0 ? 0 : sign + digits;
}

template <class Integer> Integer roundedTo(double value) {
    const double nearest = std::nearbyint(value); // half to even, the rounding mode that no one changes
    if (!(nearest >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
          nearest <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
        raisePlatformError(Reason::numberOutOfRange,
                           {std::isfinite(value) ? numberText(value) : std::to_string(value)});
    }
    return static_cast<Integer>(nearest);
}

template <class Integer> Integer toInteger(const Variant& value) {
    if (const auto* whole = value.get<Integer>()) {
        return *whole;
    }
    return roundedTo<Integer>(toDouble(value));
}

// Reads a run of one to maxDigits digits as a number.
std::optional<int> readDigits(std::string_view& text, std::size_t minDigits, std::size_t maxDigits) noexcept {
    const std::size_t run = digitRun(text, 0);
    if (run < minDigits || run > maxDigits) {
        return std::nullopt;
    }
    int value = 0;
    std::from_chars(text.data(), text.data() + run, value);
    text.remove_prefix(run);
    return value;
}

bool take(std::string_view& text, char expected) noexcept {
    if (!text.starts_with(expected)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// "h:mm" or "h:mm:ss", all of the text.
std::optional<TimeOfDay> readTime(std::string_view text) noexcept {
    TimeOfDay time;
    const auto hour = readDigits(text, 1, 2);
    if (!hour || !take(text, ':')) {
        return std::nullopt;
    }
    const auto minute = readDigits(text, 1, 2);
    if (!minute) {
        return std::nullopt;
    }
    time.hour = *hour;
    time.minute = *minute;
    if (take(text, ':')) {
        const auto second = readDigits(text, 1, 2);
        if (!second) {
            return std::nullopt;
        }
        time.second = *second;
    }
    const bool valid = time.hour < 24 && time.minute < 60 && time.second < 60;
    return text.empty() && valid ? std::optional(time) : std::nullopt;
}

} // namespace

std::string numberText(double value) {
    const DecimalDigits number = decimalDigits(value);
    const std::string& digits = number.digits;
    if (digits.empty()) {
        return "0";
    }
    constexpr int largestPoint = 15;
    constexpr int smallestPoint = -14;
    std::string text = number.negative ? "-" : "";
    if (number.point > largestPoint || number.point < smallestPoint) {
        text += digits.substr(0, 1);
        if (digits.size() > 1) {
            text += "." + digits.substr(1);
        }
        const int exponent = number.point - 1;
        const std::string size = std::to_string(std::abs(exponent));
        return text + "E" + (exponent < 0 ? "-" : "+") + (size.size() < 2 ? "0" : "") + size;
    }
    if (number.point <= 0) {
        return text + "0." + std::string(static_cast<std::size_t>(-number.point), '0') + digits;
    }
    const auto whole = static_cast<std::size_t>(number.point);
    if (digits.size() <= whole) {
        return text + digits + std::string(whole - digits.size(), '0');
    }
    return text + digits.substr(0, whole) + "." + digits.substr(whole);
}

std::string toText(const Variant& value) {
    return value.visit(Overloaded{
        [](Null) -> std::string { raisePlatformError(Reason::valueMissing); },
        [](const std::string& text) { return text; },
        [](double number) { return numberText(number); },
        [](bool truth) { return std::string(truth ? "True" : "False"); },
        [](Date date) { return dateText(date); },
        [](auto integer) { return std::to_string(static_cast<int>(integer)); },
    });
}

std::string toTextOrEmpty(const Variant& value) { return value.isNull() ? std::string() : toText(value); }

std::uint8_t toByte(const Variant& value) { return toInteger<std::uint8_t>(value); }
std::int16_t toInt16(const Variant& value) { return toInteger<std::int16_t>(value); }
std::int32_t toInt32(const Variant& value) { return toInteger<std::int32_t>(value); }

double toDouble(const Variant& value) {
    return value.visit(Overloaded{
        [](Null) -> double { raisePlatformError(Reason::valueMissing); },
        [](const std::string& text) {
            const auto number = readNumber(text);
            if (!number) {
                raisePlatformError(Reason::notANumber, {shortened(text)});
            }
            if (!std::isfinite(*number)) {
                raisePlatformError(Reason::numberOutOfRange, {shortened(text)});
            }
            return *number;
        },
        [](double number) { return number; },
        [](bool truth) { return truth ? -1.0 : 0.0; },
        [](Date date) { return date.dayNumber(); },
        [](auto integer) { return static_cast<double>(integer); },
    });
}

bool toBool(const Variant& value) {
    if (const auto* truth = value.get<bool>()) {
        return *truth;
    }
    if (const auto* text = value.get<std::string>()) {
        const std::string lower = asciiLower(trimmed(*text));
        if (lower == "true" || lower == "false") {
            return lower == "true";
        }
    }
    return toDouble(value) != 0.0;
}

Date toDate(const Variant& value) {
    if (const auto* date = value.get<Date>()) {
        return *date;
    }
    if (const auto* text = value.get<std::string>()) {
        const auto date = readDate(*text);
        if (!date) {
            raisePlatformError(Reason::notADate, {shortened(*text)});
        }
        return *date;
    }
    const Date date(toDouble(value));
    if (!isValidDate(date)) {
        raisePlatformError(Reason::dateOutOfRange);
    }
    return date;
}

std::optional<double> readNumber(std::string_view text) {
    text = trimmed(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    // Thousands commas are allowed between digits of the whole part.
    std::size_t wholeEnd = 0;
    while (wholeEnd < text.size() && (isDigit(text[wholeEnd]) || text[wholeEnd] == ',')) {
        ++wholeEnd;
    }
    std::string digits;
    for (std::size_t at = 0; at < wholeEnd; ++at) {
        if (text[at] != ',') {
            digits += text[at];
        } else if (at == 0 || at + 1 == wholeEnd || text[at + 1] == ',') {
            return std::nullopt;
        }
    }
    std::size_t at = wholeEnd;
    std::size_t fraction = 0;
    if (at < text.size() && text[at] == '.') {
        fraction = digitRun(text, at + 1);
        digits.append(text.substr(at, fraction + 1));
        at += fraction + 1;
    }
    if (wholeEnd == 0 && fraction == 0) {
        return std::nullopt;
    }
    const std::size_t exponent = exponentLength(text.substr(at));
    if (at + exponent != text.size()) {
        return std::nullopt;
    }
    if (digits.back() == '.') {
        digits.pop_back();
    }
    digits.append(text.substr(at, exponent));
    const auto value = parseDecimal(digits);
    return value ? std::optional(negative ? -*value : *value) : std::nullopt;
}

double leadingNumber(std::string_view text) {
    std::string digits;
    for (const char c : text) { // blanks inside a number do not end it
        if (!isBlank(c)) {
            digits += c;
        }
    }
    std::string_view rest = digits;
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) {
        rest.remove_prefix(1);
    }
    std::size_t length = digitRun(rest, 0);
    if (length < rest.size() && rest[length] == '.') {
        const std::size_t fraction = digitRun(rest, length + 1);
        length = length + fraction == 0 ? 0 : length + 1 + fraction;
    }
    if (length == 0) {
        return 0.0;
    }
    length += exponentLength(rest.substr(length));
    const auto value = readNumber(rest.substr(0, length)).value_or(0.0);
    return negative ? -value : value;
}

std::optional<Date> readDate(std::string_view text) {
    text = trimmed(text);
    const auto year = readDigits(text, 4, 4);
    if (!year || text.empty() || (text.front() != '-' && text.front() != '/' && text.front() != '.')) {
        return std::nullopt;
    }
    const char separator = text.front();
    text.remove_prefix(1);
    const auto month = readDigits(text, 1, 2);
    if (!month || !take(text, separator)) {
        return std::nullopt;
    }
    const auto day = readDigits(text, 1, 2);
    if (!day) {
        return std::nullopt;
    }
    TimeOfDay time;
    if (!text.empty()) {
        if (!isBlank(text.front())) {
            return std::nullopt;
        }
        const auto given = readTime(trimmed(text));
        if (!given) {
            return std::nullopt;
        }
        time = *given;
    }
    try {
        return Date::fromCivil(*year, *month, *day, time.hour, time.minute, time.second);
    } catch (const Error&) { // a day that the calendar does not have
        return std::nullopt;
    }
}

bool equalByValue(const Variant& a, const Variant& b) {
    if (a.isNull() || b.isNull()) {
        return false;
    }
    const auto number = [](const Variant& value) -> std::optional<double> {
        if (const auto* text = value.get<std::string>()) {
            return readNumber(*text);
        }
        return toDouble(value);
    };
    const auto left = number(a);
    const auto right = number(b);
    return left && right ? *left == *right : toText(a) == toText(b);
}

bool isNullOrEmpty(const Variant& value) noexcept {
    const auto* text = value.get<std::string>();
    return value.isNull() || (text != nullptr && text->empty());
}

std::string foldCase(std::string_view text) {
    const bool ascii =
        std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii) {
        return asciiLower(text);
    }
    std::string folded;
    folded.reserve(text.size());
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    std::size_t at = 0;
    while (at < text.size()) {
        utf8proc_int32_t codePoint = 0;
        const auto length = utf8proc_iterate(bytes + at, static_cast<utf8proc_ssize_t>(text.size() - at), &codePoint);
        if (length < 1) {
            folded += text[at++];
            continue;
        }
        std::array<utf8proc_uint8_t, 4> encoded{};
        const auto size = utf8proc_encode_char(utf8proc_tolower(codePoint), encoded.data());
        folded.append(reinterpret_cast<const char*>(encoded.data()), static_cast<std::size_t>(size));
        at += static_cast<std::size_t>(length);
    }
    return folded;
}

std::string asciiLower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

std::string asciiUpper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return upper;
}

std::size_t characterCount(std::string_view text) noexcept {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::string_view leftCharacters(std::string_view text, std::size_t count) noexcept {
    std::size_t at = 0;
    while (at < text.size()) {
        if ((static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U) {
            if (count == 0) {
                break;
            }
            --count;
        }
        ++at;
    }
    return text.substr(0, at);
}

std::string shortened(std::string_view text) {
    constexpr std::size_t mostCharacters = 60;
    const std::string_view shown = leftCharacters(text, mostCharacters);
    return std::string(shown) + (shown.size() < text.size() ? "..." : "");
}

} // namespace z7::cashflow
