#include "host/text/Language.h"

#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cstdlib>

namespace z7::cashflow::host {

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

Language languageOfEnvironment() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): the host starts no thread
        if (value != nullptr && *value != '\0') {
            return asciiLower(value).starts_with("zh") ? Language::chinese : Language::english;
        }
    }
    return Language::english;
}

} // namespace z7::cashflow::host
