#pragma once

#include "z7cashflow/support/Reason.h"

#include <span>
#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// A reason in Chinese, with the same places as in English.
struct ChineseReason {
    Reason id;
    std::string_view chinese; ///< without a full stop, since it often goes on or stands inside another sentence
};

/// All reasons in the order of their names.
[[nodiscard]] std::span<const ChineseReason> chineseReasons() noexcept;

/// An explanation in Chinese; the empty text for Reason::none.
[[nodiscard]] std::string chineseText(const Explanation& why);

} // namespace z7::cashflow::host
