#include "adapters/shared/recordset/fieldValue.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <cmath>
#include <string>

namespace z7::cashflow::shared {
namespace {

constexpr double moneyLimit = 922337203685477.5807;

double moneyValue(double value) {
    if (!(std::fabs(value) <= moneyLimit)) {
        raisePlatformError(Reason::numberOutOfRange, {std::to_string(value)});
    }
    return std::round(value * 10000.0) / 10000.0;
}

Variant converted(ColumnType type, const Variant& value) {
    switch (type) {
    case ColumnType::any:
        return value;
    case ColumnType::boolean:
        return Variant(toBool(value));
    case ColumnType::byte:
        return Variant(toByte(value));
    case ColumnType::int16:
        return Variant(toInt16(value));
    case ColumnType::int32:
        return Variant(toInt32(value));
    case ColumnType::real:
        return Variant(toDouble(value));
    case ColumnType::money:
        return Variant(moneyValue(toDouble(value)));
    case ColumnType::date: {
        const Date date = toDate(value);
        if (!isValidDate(date)) {
            raisePlatformError(Reason::dateOutOfRange);
        }
        return Variant(date);
    }
    case ColumnType::text:
        return Variant(toText(value));
    }
    return {};
}

/// A value as shown in messages.
std::string shownText(const Variant& value) {
    const auto* date = value.get<Date>();
    return date != nullptr && !isValidDate(*date) ? numberText(date->dayNumber()) : shortened(toText(value));
}

} // namespace

Variant fieldValue(const Column& column, const Variant& value) {
    if (value.isNull()) {
        return {};
    }
    Variant result = [&] {
        try {
            return converted(column.type, value);
        } catch (const Error&) {
            raisePlatformError(DatabaseReason::columnValueBad, {column.name, shownText(value)});
        }
    }();
    if (column.type == ColumnType::text && column.length > 0 &&
        characterCount(*result.get<std::string>()) > static_cast<std::size_t>(column.length)) {
        raisePlatformError(DatabaseReason::columnTextTooLong, {column.name, std::to_string(column.length)});
    }
    return result;
}

} // namespace z7::cashflow::shared
