#pragma once

#include "z7cashflow/support/Reason.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::host {

/// A reason in Chinese, with the same places as in English.
struct ChineseReason {
    template <class Id>
    constexpr ChineseReason(Id id, std::string_view chinese) noexcept
        : place(static_cast<std::size_t>(id)), chinese(chinese) {}

    std::size_t place;        ///< index in the table of its room, from 0
    std::string_view chinese; ///< without a full stop, because other text often follows
};

/// The reasons of one room in both languages and the names of its enumeration, in the same order.
struct ReasonRoom {
    std::span<const ReasonEntry> english;
    std::span<const ChineseReason> chinese;
    std::span<const std::string_view> names;
};

/// All rooms whose errors the program can show.
[[nodiscard]] std::vector<ReasonRoom> reasonRooms();

/// The room to whose table an entry belongs; empty if it is not in reasonRooms.
[[nodiscard]] std::optional<ReasonRoom> roomOf(const ReasonEntry& entry);

/// An explanation in Chinese; in English if its room is not in reasonRooms. Empty for Reason::none.
[[nodiscard]] std::string chineseText(const Explanation& why);

} // namespace z7::cashflow::host
