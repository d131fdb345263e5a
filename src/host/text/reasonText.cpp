#include "host/text/reasonText.h"

#include "host/text/ChineseReason.h"
#include "host/text/HostText.h"

namespace z7::cashflow::host {

std::string reasonText(Language language, const std::string& checkText) {
    const std::size_t lineBreak = checkText.find("\r\n");
    if (lineBreak != std::string::npos) {
        return checkText.substr(0, lineBreak) + (language == Language::chinese ? "；" : "; ") +
               checkText.substr(lineBreak + 2);
    }
    // The check of a row answers with three parts separated by tabs: text, entry line, column. A text with any
    // other number of tabs is not of that form and is kept.
    const std::size_t firstTab = checkText.find('\t');
    const std::size_t secondTab = firstTab == std::string::npos ? firstTab : checkText.find('\t', firstTab + 1);
    const bool namesLine = secondTab != std::string::npos && secondTab + 1 < checkText.size() &&
                           checkText.find_first_not_of("0123456789", secondTab + 1) == std::string::npos;
    if (!namesLine) {
        return checkText;
    }
    const std::string line = checkText.substr(firstTab + 1, secondTab - firstTab - 1);
    const std::string text = checkText.substr(0, firstTab);
    return line.empty() ? text : hostText(language, HostText::reasonAtLine, {text, line});
}

std::string reasonText(Language language, const Explanation& why) {
    return language == Language::chinese ? chineseText(why) : englishText(why);
}

std::string reasonText(Language language, const Error& error) {
    std::string why = reasonText(language, error.why());
    if (!error.hasOwnText()) {
        return why;
    }
    const std::string own = reasonText(language, error.description());
    return why.empty() ? own : hostText(language, HostText::reasonInDetail, {own, why});
}

} // namespace z7::cashflow::host
