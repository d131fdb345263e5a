#include "adapters/ado/hostValue.h"

#include "adapters/ado/AdoReason.h"
#include "adapters/ado/automation/AutomationReason.h"
#include "adapters/ado/automation/Bstr.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <optional>

namespace z7::cashflow::ado {

namespace {

using adapters::automation::AutomationReason;
using adapters::automation::Dispatch;
using adapters::automation::OwnedVariant;
using adapters::automation::utf8;

[[noreturn]] void refuse(AdoReason reason, const wchar_t* member) { raisePlatformError(reason, {utf8(member)}); }

bool isNumber(const Variant& value) {
    return value.is<std::uint8_t>() || value.is<std::int16_t>() || value.is<std::int32_t>() || value.is<double>();
}

/// Empty for arrays and objects.
std::optional<Variant> plainValue(const OwnedVariant& value) {
    std::optional<Variant> result;
    ignoringErrors([&] { result = value.value(); });
    return result;
}

} // namespace

std::string hostText(const OwnedVariant& value, const wchar_t* member) {
    const std::optional<Variant> held = plainValue(value);
    if (held) {
        if (const auto* text = held->get<std::string>()) {
            return *text;
        }
        if (isNumber(*held)) {
            return toText(*held);
        }
    }
    refuse(AdoReason::notAText, member);
}

std::int32_t wholeNumber(const OwnedVariant& value, const wchar_t* member) {
    const std::optional<Variant> held = plainValue(value);
    if (held && (isNumber(*held) || held->is<std::string>())) {
        std::optional<std::int32_t> number;
        ignoringErrors([&] {
            const std::int32_t whole = toInt32(*held);
            if (toDouble(*held) == whole) {
                number = whole;
            }
        });
        if (number) {
            return *number;
        }
    }
    refuse(AdoReason::notAWholeNumber, member);
}

void requireObject(const Dispatch& object, const wchar_t* name) {
    if (!object) {
        raisePlatformError(AutomationReason::objectMissing, {utf8(name)});
    }
}

} // namespace z7::cashflow::ado
