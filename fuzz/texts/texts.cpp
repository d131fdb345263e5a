// Number and date texts: any text is converted or refused, and the value can be converted to text and back.

#include "fuzz/target.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/format.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

namespace z7::cashflow::fuzz {
namespace {

constexpr std::array<const char*, 7> patterns{"##,##0.00", "##0.00", "#.00", "0.00", "00", "#", "#,##0.####"};

template <class Action> int errorNumberOf(const Action& action) {
    try {
        action();
        return 0;
    } catch (const Error& error) {
        return error.number();
    }
}

void requireNumber(double number) {
    const std::string text = numberText(number);
    const auto again = readNumber(text);
    require(again.has_value(), "a number's text is a number");
    // Rounded up to 15 digits, the largest numbers exceed the range of a double.
    if (std::isfinite(*again)) {
        require(numberText(*again) == text, "a number's text reads back as the same 15 digits");
        require(std::fabs(*again - number) <= std::fabs(number) * 1e-14 || std::fabs(number) < 1e-300,
                "a number's text is the number, to 15 digits");
    }
    for (const char* pattern : patterns) {
        const std::string shown = format(number, pattern);
        require(shown.empty() || shown == "-" || readNumber(shown).has_value() || shown == ".",
                "a formatted number is a number");
    }
}

void requireDate(Date date) {
    require(isValidDate(date), "a date that was read can be written");
    const std::string text = dateText(date);
    const auto again = readDate(text);
    require(again && *again == date, "a date's text reads back as the same date");
    require(text.starts_with(dayText(date)), "a date's text begins with its day");
}

// The conversion of a text fails with its own error number, or returns a value in range.
void requireConversions(const std::string& text) {
    const auto isTold = [](int number) {
        return number == 0 || number == errors::overflow || number == errors::typeMismatch;
    };
    const Variant value(text);
    require(isTold(errorNumberOf([&] { static_cast<void>(toByte(value)); })), "toByte");
    require(isTold(errorNumberOf([&] { static_cast<void>(toInt16(value)); })), "toInt16");
    require(isTold(errorNumberOf([&] { static_cast<void>(toInt32(value)); })), "toInt32");
    require(isTold(errorNumberOf([&] { static_cast<void>(toDouble(value)); })), "toDouble");
    require(isTold(errorNumberOf([&] { static_cast<void>(toBool(value)); })), "toBool");
    require(isTold(errorNumberOf([&] { static_cast<void>(toDate(value)); })), "toDate");
    require(toText(value) == text, "a text's text is itself");
    require(equalByValue(value, value) || (readNumber(text) && std::isnan(*readNumber(text))), "a text equals itself");
    require(foldCase(foldCase(text)) == foldCase(text), "folding folds once");
    const std::size_t count = characterCount(text);
    require(count <= text.size() && leftCharacters(text, count) == text, "a text has its own number of characters");
    require(characterCount(leftCharacters(text, count / 2)) == count / 2, "a beginning has the characters asked for");
}

void run(std::string_view input) {
    const std::string text(input);
    requireConversions(text);
    const double leading = leadingNumber(text);
    require(!std::isnan(leading), "what a text begins with is a number");
    const auto number = readNumber(text);
    if (number && std::isfinite(*number)) {
        requireNumber(*number);
    }
    if (!number) {
        require(format(Variant(text), "##,##0.00") == text, "a text that is no number is shown as it is");
    }
    if (const auto date = readDate(text)) {
        requireDate(*date);
        require(!number, "no text is both a number and a date");
    }
    // The bytes as a number and as a date, whatever they are.
    if (input.size() >= sizeof(double)) {
        double bits = 0.0;
        std::memcpy(&bits, input.data(), sizeof bits);
        if (std::isfinite(bits)) {
            requireNumber(bits);
        }
        if (isValidDate(Date(bits))) {
            requireDate(*readDate(dateText(Date(bits))));
        }
    }
}

} // namespace
} // namespace z7::cashflow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    z7::cashflow::fuzz::run(z7::cashflow::fuzz::textOf(data, size));
    return 0;
}
