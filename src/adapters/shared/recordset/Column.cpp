#include "adapters/shared/recordset/Column.h"

#include <utility>

namespace z7::cashflow::shared {
namespace {

constexpr char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::uint32_t nameHash(std::string_view name) noexcept {
    std::uint32_t hash = 2166136261U;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(lower(c))) * 16777619U;
    }
    return hash ^ (hash >> 15U);
}

bool sameName(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && lower(a[i]) != lower(b[i])) {
            return false;
        }
    }
    return true;
}

} // namespace

ColumnList::ColumnList(std::vector<Column> columns) : columns_(std::move(columns)) {
    std::size_t size = 8;
    while (size < columns_.size() * 2) {
        size *= 2;
    }
    slots_.assign(size, -1);
    for (std::size_t position = 0; position < columns_.size(); ++position) {
        const std::string& name = columns_[position].name;
        if (find(name) >= 0) {
            continue; // the first of several columns with one name is the one that is found
        }
        std::size_t slot = nameHash(name) & (size - 1);
        while (slots_[slot] >= 0) {
            slot = (slot + 1) & (size - 1);
        }
        slots_[slot] = static_cast<std::int32_t>(position);
    }
}

int ColumnList::find(std::string_view name) const noexcept {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = nameHash(name) & mask; slots_[slot] >= 0; slot = (slot + 1) & mask) {
        if (sameName(columns_[static_cast<std::size_t>(slots_[slot])].name, name)) {
            return slots_[slot];
        }
    }
    return -1;
}

} // namespace z7::cashflow::shared
