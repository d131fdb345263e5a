#include "texts/Language.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <string>

namespace z7::cashflow::texts {

const char* languageTag(Language language) noexcept { return language == Language::chinese ? "zh-CN" : "en-US"; }

std::int32_t localeId(Language language) noexcept { return language == Language::chinese ? 2052 : 1033; }

std::optional<Language> readLanguage(std::string_view text) {
    std::string name = asciiLower(text);
    std::replace(name.begin(), name.end(), '_', '-');
    if (name == "zh" || name == "zh-cn") {
        return Language::chinese;
    }
    if (name == "en" || name == "en-us") {
        return Language::english;
    }
    return std::nullopt;
}

} // namespace z7::cashflow::texts
