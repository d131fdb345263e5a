#include "adapters/shared/recordset/RowSet.h"

#include "adapters/shared/reasons/DatabaseReason.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <limits>
#include <utility>

namespace z7::cashflow::shared {
namespace {

template <class T> bool fits(std::int64_t value) noexcept {
    return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
}

Variant integerValue(std::int64_t value, ColumnType type) {
    switch (type) {
    case ColumnType::boolean:
        return Variant(value != 0);
    case ColumnType::byte:
        if (fits<std::uint8_t>(value)) {
            return Variant(static_cast<std::uint8_t>(value));
        }
        break;
    case ColumnType::int16:
        if (fits<std::int16_t>(value)) {
            return Variant(static_cast<std::int16_t>(value));
        }
        break;
    case ColumnType::real:
    case ColumnType::money:
        return Variant(static_cast<double>(value));
    case ColumnType::date:
        return Variant(Date(static_cast<double>(value)));
    case ColumnType::any:
    case ColumnType::int32:
    case ColumnType::text:
        break;
    }
    const Variant number =
        fits<std::int32_t>(value) ? Variant(static_cast<std::int32_t>(value)) : Variant(static_cast<double>(value));
    return type == ColumnType::text ? Variant(toText(number)) : number;
}

Variant realValue(double value, ColumnType type) {
    switch (type) {
    case ColumnType::boolean:
        return Variant(value != 0.0);
    case ColumnType::text:
        return Variant(numberText(value));
    case ColumnType::date:
        return Variant(Date(value));
    default:
        return Variant(value);
    }
}

Variant textValue(std::string_view text, ColumnType type) {
    if (type == ColumnType::date) {
        if (const auto date = readDate(text)) {
            return Variant(*date);
        }
    }
    return Variant(text);
}

} // namespace

RowSet::RowSet(std::shared_ptr<const ColumnList> columns)
    : columns_(std::move(columns)), width_(static_cast<std::size_t>(columns_->count())) {}

void RowSet::addText(std::string_view text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max() / 2) {
        raisePlatformError(DatabaseReason::resultTooLong);
    }
    cells_.push_back({Kind::text, static_cast<std::uint32_t>(text.size()), {.offset = texts_.size()}});
    texts_.append(text);
}

void RowSet::add(const Variant& value) {
    if (const auto* text = value.get<std::string>()) {
        addText(*text);
    } else if (const auto* date = value.get<Date>()) {
        addDate(*date);
    } else if (const auto* truth = value.get<bool>()) {
        addInteger(*truth ? 1 : 0);
    } else if (const auto* real = value.get<double>()) {
        addReal(*real);
    } else if (value.isNull()) {
        addNull();
    } else {
        addInteger(toInt32(value));
    }
}

Variant RowSet::value(std::size_t row, int column) const {
    const Cell& stored = cell(row, column);
    const ColumnType type = (*columns_)[column].type;
    switch (stored.kind) {
    case Kind::null:
        break;
    case Kind::integer:
        return integerValue(stored.payload.integer, type);
    case Kind::real:
        return realValue(stored.payload.real, type);
    case Kind::date:
        return Variant(Date(stored.payload.real));
    case Kind::text:
        return textValue(text(stored), type);
    }
    return {};
}

std::optional<double> RowSet::number(std::size_t row, int column) const {
    const Cell& stored = cell(row, column);
    switch (stored.kind) {
    case Kind::null:
        break;
    case Kind::integer:
        return static_cast<double>(stored.payload.integer);
    case Kind::real:
    case Kind::date:
        return stored.payload.real;
    case Kind::text:
        if ((*columns_)[column].type == ColumnType::date) {
            if (const auto date = readDate(text(stored))) {
                return date->dayNumber();
            }
        }
        return readNumber(text(stored));
    }
    return std::nullopt;
}

void RowSet::replace(std::size_t row, int column, const Variant& value) {
    add(value);
    cells_[row * width_ + static_cast<std::size_t>(column)] = cells_.back();
    cells_.pop_back();
}

} // namespace z7::cashflow::shared
