#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace z7::cashflow::host {

/// The languages that the host speaks.
enum class Language { english, chinese };

/// Language tag as the login tells it: "zh-CN" or "en-US".
[[nodiscard]] const char* languageTag(Language language) noexcept;

/// Locale identifier as the login tells it: 2052 for Chinese, 1033 for English.
[[nodiscard]] std::int32_t localeId(Language language) noexcept;

/// A language written by a user: "zh", "zh-CN", "en", "en-US" in any letter case, "_" for "-"; nothing for any other
/// text.
[[nodiscard]] std::optional<Language> readLanguage(std::string_view text);

/// The language that the environment asks for: the first non-empty one of LC_ALL, LC_MESSAGES and LANG decides.
/// Chinese if it begins with "zh", else English.
[[nodiscard]] Language languageOfEnvironment();

} // namespace z7::cashflow::host
