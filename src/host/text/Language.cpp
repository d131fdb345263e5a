#include "host/text/Language.h"

#include "z7cashflow/support/conversions.h"

#include <cstdlib>

namespace z7::cashflow::host {

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
