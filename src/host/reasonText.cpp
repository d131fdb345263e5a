#include "host/reasonText.h"

#include "host/HostText.h"

#include <array>
#include <string_view>

namespace z7::cashflow::host {

namespace {

/// What conversions, lists and recordsets say, with ": " and a detail behind it where there is one.
struct PlatformText {
    std::string_view english;
    std::string_view chinese;
};

constexpr std::array platformTexts{
    PlatformText{"Invalid procedure call or argument", "参数无效"},
    PlatformText{"Overflow", "数值超出范围"},
    PlatformText{"Subscript out of range", "下标越界"},
    PlatformText{"Type mismatch", "值的类型不符"},
    PlatformText{"Object variable not set", "缺少所需的数据"},
    PlatformText{"Invalid use of Null", "必需的值为空（例如分录没有借方或贷方金额）"},
    PlatformText{"This key is already associated with an element of this collection", "该键已存在"},
    PlatformText{"Arguments are of the wrong type, are out of acceptable range, or conflict", "条件或参数无效"},
    PlatformText{"There is no current record", "没有当前记录"},
    PlatformText{"The recordset does not support updating", "记录集不能修改"},
    PlatformText{"Item cannot be found in the recordset's fields", "没有该字段"},
    PlatformText{"Operation is not allowed when the object is closed", "对象已关闭，不能执行此操作"},
    PlatformText{"Operation is not allowed when the object is open", "对象已打开，不能执行此操作"},
    PlatformText{"There is no connection to work on", "没有可用的数据库连接"},
};

std::string inChinese(const std::string& reason) {
    for (const PlatformText& text : platformTexts) {
        const std::string_view rest = reason;
        if (rest == text.english) {
            return std::string(text.chinese);
        }
        if (rest.starts_with(text.english) && rest.substr(text.english.size()).starts_with(": ")) {
            return std::string(text.chinese) + "：" + std::string(rest.substr(text.english.size() + 2));
        }
    }
    constexpr std::string_view guarded = "A value would change the statement that it goes into";
    constexpr std::string_view lead = "It departs at \"";
    if (!reason.starts_with(guarded)) {
        return reason;
    }
    const std::size_t start = reason.find(lead);
    const std::size_t end = reason.find("\" behind \"", start == std::string::npos ? 0 : start);
    const bool found = start != std::string::npos && end != std::string::npos;
    const std::size_t place = found ? start + lead.size() : reason.find(". ") + 2; // a text that does not end
    const std::size_t last = found ? end : reason.find(" Look for", place);
    return hostText(Language::chinese, HostText::statementRefused, {reason.substr(place, last - place)});
}

} // namespace

std::string reasonText(Language language, const std::string& reason) {
    const std::size_t lineBreak = reason.find("\r\n");
    if (lineBreak != std::string::npos) {
        return reason.substr(0, lineBreak) + (language == Language::chinese ? "；" : "; ") +
               reason.substr(lineBreak + 2);
    }
    const std::size_t firstTab = reason.find('\t');
    if (firstTab == std::string::npos) {
        return language == Language::chinese ? inChinese(reason) : reason;
    }
    const std::size_t secondTab = reason.find('\t', firstTab + 1);
    const std::string line = reason.substr(firstTab + 1, secondTab - firstTab - 1);
    const std::string text = reason.substr(0, firstTab);
    return line.empty() ? text : hostText(language, HostText::reasonAtLine, {text, line});
}

} // namespace z7::cashflow::host
