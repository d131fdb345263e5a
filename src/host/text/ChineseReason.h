#pragma once

#include "z7cashflow/support/Reason.h"

#include <cstddef>
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

/// The reasons of one room in both languages, in the same order.
struct ReasonRoom {
    std::span<const ReasonEntry> english;
    std::span<const ChineseReason> chinese;
};

/// All rooms whose errors the program can show.
[[nodiscard]] std::vector<ReasonRoom> reasonRooms();

/// An explanation in Chinese; in English if its room is not in reasonRooms. Empty for Reason::none.
[[nodiscard]] std::string chineseText(const Explanation& why);

} // namespace z7::cashflow::host
