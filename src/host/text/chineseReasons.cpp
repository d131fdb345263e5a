#include "host/text/chineseReasons.h"

#include "z7cashflow/support/textPlaces.h"

#include <array>
#include <cstddef>

namespace z7::cashflow::host {

namespace {

using R = Reason;

constexpr std::array libraryReasons{
    ChineseReason{R::none, ""},

    ChineseReason{R::notANumber, "“{0}”不是数字"},
    ChineseReason{R::notADate, "“{0}”不是日期"},
    ChineseReason{R::noSuchDate, "日期不存在"},
    ChineseReason{R::dateOutOfRange, "日期不在公元 100 年至 9999 年之间"},
    ChineseReason{R::numberOutOfRange, "数值 {0} 超出范围"},
    ChineseReason{R::numberNotFinite, "数值不是有限数"},
    ChineseReason{R::sumOutOfRange, "两个整数之和超出范围"},
    ChineseReason{R::amountTooFine, "金额“{0}”的小数超过四位"},
    ChineseReason{R::zeroByte, "文本在“{0}”之后含有零字节"},
    ChineseReason{R::invalidUtf8, "文本的第 {0} 个字节（“{1}”之后）不是有效的 UTF-8 编码"},
    ChineseReason{R::valueMissing, "必填的值为空，例如分录没有借方或贷方金额"},

    ChineseReason{R::keyUnknown, "列表中没有键“{0}”"},
    ChineseReason{R::indexOutOfRange, "列表中没有第 {0} 项"},
    ChineseReason{R::controlUnknown, "窗口中没有控件“{0}”"},
    ChineseReason{R::keyExists, "列表中已有键“{0}”"},
    ChineseReason{R::fieldExists, "已有名为“{0}”的字段"},
    ChineseReason{R::loginMissing, "尚未设置登录对象"},
    ChineseReason{R::formattedTextsMissing, "登录对象没有提供带参数的文本"},
    ChineseReason{R::textKeyUnknown, "文本目录中没有键“{0}”"},
    ChineseReason{R::schemaFieldMissing, "没有可加入的字段"},
    ChineseReason{R::rowsMissing, "没有可供检查的现金流量行"},
    ChineseReason{R::linesMissing, "凭证没有可供检查的分录"},
    ChineseReason{R::attributeMissing, "凭证分录缺少属性 {0}"},
    ChineseReason{R::collectionNotText, "现金流量行只能从 XML 文本读取"},
    ChineseReason{R::rowNotElement, "现金流量行只能从它的 XML 元素读取"},
    ChineseReason{R::rowFieldUnknown, "现金流量行没有字段“{0}”"},
    ChineseReason{
        R::valueWithQuote,
        "该值会改变它所写入的数据库语句，语句没有执行：{0} 为“{1}”，其中含有引号（语句 {2}）。请在录入处更正该值"},
    ChineseReason{
        R::valueNotOneNumber,
        "该值会改变它所写入的数据库语句，语句没有执行：{0} 为“{1}”，不是一个数字（语句 {2}）。请在录入处更正该值"},
    ChineseReason{
        R::valueNotTableName,
        "该值会改变它所写入的数据库语句，语句没有执行：{0} 为“{1}”，不是表名（语句 {2}）。请在录入处更正该值"},
    ChineseReason{
        R::valueNotColumnName,
        "该值会改变它所写入的数据库语句，语句没有执行：{0} 为“{1}”，不是列名（语句 {2}）。请在录入处更正该值"},
    ChineseReason{R::periodsReversed, "起始期间 {0} 晚于结束期间 {1}"},
    ChineseReason{R::notCashAccount, "科目 {0} 不是本年度的现金科目"},

    ChineseReason{R::connectionFactoryMissing, "尚未设置创建数据库连接的对象"},
    ChineseReason{R::dialogFactoryMissing, "尚未设置创建窗口的对象"},
    ChineseReason{R::dialogConnectionMissing, "窗口没有数据库连接"},
    ChineseReason{R::dialogRowsMissing, "窗口没有现金流量行"},
    ChineseReason{R::referenceNotXml, "参照的说明不是有效的 XML"},
    ChineseReason{R::argumentNegative, "数值 {0} 为负数"},
    ChineseReason{R::editKindUnknown, "没有录入类型 {0}"},
    ChineseReason{R::propertyUnknown, "对象没有属性 {0}"},

    ChineseReason{R::xmlEmpty, "文档是空的"},
    ChineseReason{R::xmlTooLong, "文档超过 2 GiB"},
    ChineseReason{R::xmlZeroByte, "文档含有零字节"},
    ChineseReason{R::xmlTooMuchMarkup, "文档的标记或属性过多，或某个元素的属性超过 512 个"},
    ChineseReason{R::xmlNotXml, "第 {0} 行：不是 XML 文本"},
    ChineseReason{R::xmlNotWellFormed, "第 {0} 行：文档格式不正确"},
    ChineseReason{R::xmlTextAfterEnd, "第 {0} 行：文档结束之后还有内容"},
    ChineseReason{R::xmlTagMismatch, "第 {0} 行：结束标记与开始标记不符"},
    ChineseReason{R::xmlTagNotFinished, "第 {0} 行：文档在元素全部结束之前中断"},
    ChineseReason{R::xmlAttributeTwice, "第 {0} 行：同一元素中有重复的属性"},
    ChineseReason{R::xmlAttributeWithoutValue, "第 {0} 行：属性缺少带引号的值"},
    ChineseReason{R::xmlAttributeNotFinished, "第 {0} 行：属性值的引号没有闭合，或值中含有“<”"},
    ChineseReason{R::xmlEntityUnknown, "第 {0} 行：“&”之后不是已知的实体，“&”本身须转义"},
    ChineseReason{R::xmlPrefixUndeclared, "第 {0} 行：命名空间前缀没有声明"},
    ChineseReason{R::xmlCharacterInvalid, "第 {0} 行：含有不允许的字符，或文本不是 UTF-8 编码"},
    ChineseReason{R::xmlBeyondLimits, "第 {0} 行：文档嵌套过深，或含有不接受的声明或引用"},

    ChineseReason{R::fieldUnknown, "记录中没有字段“{0}”"},
    ChineseReason{R::fieldPositionUnknown, "记录中没有第 {0} 个字段"},
    ChineseReason{R::recordMissing, "没有当前记录"},
    ChineseReason{R::recordsetReadOnly, "记录不能修改"},
    ChineseReason{R::recordWithoutKey, "{0} 的记录不能修改：该表没有可用来定位记录的主键，或查询没有取出主键"},
    ChineseReason{R::columnOfExpression, "该列不能修改：它是视图 {0} 中的计算列"},
    ChineseReason{R::recordChanged, "{0} 的记录在读取之后已被他人修改或删除"},
    ChineseReason{R::objectClosed, "数据库连接或记录集已关闭"},
    ChineseReason{R::objectOpen, "数据库连接或记录集已打开"},
    ChineseReason{R::connectionMissing, "记录集没有可用的数据库连接"},
    ChineseReason{R::connectionForeign, "该连接属于另一种数据库"},
    ChineseReason{R::filterUnreadable, "“{0}”不是筛选条件；条件应写成 列=数字，多个条件以 and 连接"},
    ChineseReason{R::filterWithoutNumber, "筛选条件“{1}”中 {0} 没有数字"},
    ChineseReason{R::resultTooLong, "查询结果中的文本过长"},
    ChineseReason{R::columnValueBad, "“{1}”不能存入列 {0}"},
    ChineseReason{R::columnTextTooLong, "列 {0} 最多 {1} 个字符"},
};

static_assert(isComplete<Reason>(libraryReasons));

} // namespace

std::vector<ReasonRoom> reasonRooms() { return {{reasonTable(), libraryReasons}}; }

std::string chineseText(const Explanation& why) {
    std::vector<std::string> arguments = why.arguments;
    for (const Explanation& cause : why.causes) {
        arguments.push_back(chineseText(cause));
    }
    const ReasonEntry& entry = why.reason.entry();
    for (const ReasonRoom& room : reasonRooms()) {
        if (entry.place < room.english.size() && &room.english[entry.place] == &entry) {
            return fillPlaces(room.chinese[entry.place].chinese, arguments);
        }
    }
    return fillPlaces(entry.english, arguments);
}

} // namespace z7::cashflow::host
