#include "workbench/Amount.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <cmath>

namespace z7::cashflow::workbench {

namespace {

constexpr std::int64_t unit = 10000;
constexpr std::int64_t largest = 900'000'000'000 * unit;

} // namespace

Amount Amount::of(const Variant& value) {
    if (value.isNull()) {
        return {};
    }
    const double number = toDouble(value);
    if (!(std::fabs(number) * unit <= static_cast<double>(largest))) {
        raisePlatformError(Reason::numberOutOfRange, {numberText(number)});
    }
    return Amount(std::llround(number * unit));
}

Amount Amount::read(const std::string& text) {
    const auto number = readNumber(text);
    if (!number) {
        raisePlatformError(Reason::notANumber, {shortened(text)});
    }
    const Amount amount = of(*number);
    if (amount.value() != *number) {
        raisePlatformError(Reason::amountTooFine, {shortened(text)});
    }
    return amount;
}

std::string Amount::plainText() const {
    const std::uint64_t size = static_cast<std::uint64_t>(tenThousandths_ < 0 ? -tenThousandths_ : tenThousandths_);
    std::string decimals = std::to_string(unit + size % unit).substr(1);
    if (decimals.ends_with("00")) {
        decimals.resize(2);
    }
    return (tenThousandths_ < 0 ? "-" : "") + std::to_string(size / unit) + "." + decimals;
}

std::string Amount::text() const {
    std::string text = plainText();
    const std::size_t first = tenThousandths_ < 0 ? 1 : 0;
    for (std::size_t place = text.find('.'); place > first + 3;) {
        place -= 3;
        text.insert(place, ",");
    }
    return text;
}

Amount& Amount::operator+=(Amount other) {
    tenThousandths_ += other.tenThousandths_; // both are in range, so the sum fits in 64 bits
    requireInRange();
    return *this;
}

Amount& Amount::operator-=(Amount other) { return *this += -other; }

void Amount::requireInRange() const {
    if (tenThousandths_ > largest || tenThousandths_ < -largest) {
        raisePlatformError(Reason::numberOutOfRange, {plainText()});
    }
}

} // namespace z7::cashflow::workbench
