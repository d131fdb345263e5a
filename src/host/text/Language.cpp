#include "host/text/Language.h"

#include "host/cli/environment.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::host {

Language languageOfEnvironment() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const auto value = environmentVariable(name);
        if (value && !value->empty()) {
            return asciiLower(*value).starts_with("zh") ? Language::chinese : Language::english;
        }
    }
    return isSystemChinese() ? Language::chinese : Language::english;
}

} // namespace z7::cashflow::host
