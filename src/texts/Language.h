#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string_view>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::texts {

/// The languages of the catalogue.
enum class Language { english, chinese };

/// Language tag of the login: "zh-CN" or "en-US".
[[nodiscard]] const char* languageTag(Language language) noexcept;

/// Locale identifier of the login: 2052 for Chinese, 1033 for English.
[[nodiscard]] std::int32_t localeId(Language language) noexcept;

/// The language that a user names: "zh", "zh-CN", "en", "en-US" in any letter case, with "-" or "_"; empty for any
/// other text.
[[nodiscard]] std::optional<Language> readLanguage(std::string_view text);

} // namespace z7::cashflow::texts

Z7_PUBLIC_END
