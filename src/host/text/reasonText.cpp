#include "host/text/reasonText.h"

#include "host/text/HostText.h"
#include "host/text/TextCatalogue.h"

#include <array>
#include <optional>
#include <string_view>

namespace z7::cashflow::host {

namespace {

/// What conversions, lists and recordsets raise, with ": " and a detail behind it where there is one. It is worded for the
/// engineer of a host; people read the other two.
struct PlatformText {
    std::string_view raised;
    std::string_view chinese;
    std::string_view english;
};

constexpr std::array platformTexts{
    PlatformText{"Invalid procedure call or argument", "键或参数无效", "A key or a value cannot be used"},
    PlatformText{"Overflow", "数值或日期超出范围", "A number or a date is out of range"},
    PlatformText{"Subscript out of range", "下标越界", "There is no such place in the list"},
    PlatformText{"Type mismatch", "值的类型不符", "A value is not of the kind that is needed"},
    PlatformText{"Object variable not set", "缺少所需的数据", "Something that is needed is missing"},
    PlatformText{"Invalid use of Null", "必需的值为空（例如分录没有借方或贷方金额）",
                 "A needed value is missing, such as the debit or credit amount of a line"},
    PlatformText{"This key is already associated with an element of this collection", "该键已存在",
                 "There is an entry with this key already"},
    PlatformText{"Arguments are of the wrong type, are out of acceptable range, or conflict", "条件或参数无效",
                 "A condition or a value cannot be used"},
    PlatformText{"There is no current record", "没有当前记录", "There is no record to work on"},
    PlatformText{"The recordset does not support updating", "记录集不能修改", "The records cannot be changed"},
    PlatformText{"Item cannot be found in the recordset's fields", "没有该字段", "The records have no such field"},
    PlatformText{"Operation is not allowed when the object is closed", "对象已关闭，不能执行此操作",
                 "The database or its records are closed already"},
    PlatformText{"Operation is not allowed when the object is open", "对象已打开，不能执行此操作",
                 "The database or its records are open already"},
    PlatformText{"There is no connection to work on", "没有可用的数据库连接", "There is no database to work on"},
};

/// A detail behind such a text that the data of a voucher can bring about, with {0} for what it quotes. It is raised in English.
struct Detail {
    std::string_view english;
    std::string_view chinese;
};

constexpr std::array details{
    Detail{"\"{0}\" is no number", "“{0}”不是数字"},
    Detail{"\"{0}\" is no date", "“{0}”不是日期"},
    Detail{"there is no such date", "没有这一天"},
    Detail{"a date outside the years 100 to 9999", "日期不在公元 100 年至 9999 年之间"},
    Detail{"a number that is not finite", "不是有限的数"},
    Detail{"a voucher line without the attribute {0}", "凭证分录缺少属性 {0}"},
    Detail{"there are no rows to check", "没有可供检查的行"},
    Detail{"the voucher has no lines to check", "凭证没有可供检查的分录"},
};

std::string detailInChinese(std::string_view detail) {
    constexpr std::string_view place = "{0}";
    for (const Detail& known : details) {
        const std::size_t at = known.english.find(place);
        const bool quotes = at != std::string_view::npos;
        const std::string_view before = known.english.substr(0, at);
        const std::string_view after = quotes ? known.english.substr(at + place.size()) : std::string_view();
        if (!detail.starts_with(before)) {
            continue;
        }
        const std::string_view rest = detail.substr(before.size());
        if (quotes ? rest.ends_with(after) : rest.empty()) {
            return fillPlaces(known.chinese, {Variant(rest.substr(0, rest.size() - after.size()))});
        }
    }
    return std::string(detail);
}

/// What a platform text says in a language, with its detail; nothing for any other text.
std::optional<std::string> platformReason(Language language, std::string_view reason) {
    const bool chinese = language == Language::chinese;
    for (const PlatformText& text : platformTexts) {
        const std::string said(chinese ? text.chinese : text.english);
        if (reason == text.raised) {
            return said;
        }
        if (reason.starts_with(text.raised) && reason.substr(text.raised.size()).starts_with(": ")) {
            const std::string_view detail = reason.substr(text.raised.size() + 2);
            return said + (chinese ? "：" + detailInChinese(detail) : ": " + std::string(detail));
        }
    }
    return std::nullopt;
}

/// What the guard says, which goes on with what to look for; every other text as it is.
std::string guardInChinese(const std::string& reason) {
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
    // The library puts two tabs behind a text on a row, before its line and before the number of a column; any other tab belongs
    // to a text of somebody else.
    const std::size_t firstTab = reason.find('\t');
    const std::size_t secondTab = firstTab == std::string::npos ? firstTab : reason.find('\t', firstTab + 1);
    const bool tellsLine = secondTab != std::string::npos && secondTab + 1 < reason.size() &&
                           reason.find_first_not_of("0123456789", secondTab + 1) == std::string::npos;
    if (!tellsLine) {
        if (const auto platform = platformReason(language, reason)) {
            return *platform;
        }
        return language == Language::chinese ? guardInChinese(reason) : reason;
    }
    const std::string line = reason.substr(firstTab + 1, secondTab - firstTab - 1);
    const std::string text = reason.substr(0, firstTab);
    return line.empty() ? text : hostText(language, HostText::reasonAtLine, {text, line});
}

} // namespace z7::cashflow::host
