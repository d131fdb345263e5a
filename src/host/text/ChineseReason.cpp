#include "host/text/ChineseReason.h"

#include "adapters/odbc/OdbcReason.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/sqlite/SqliteReason.h"
#include "adapters/tsql/TsqlReason.h"
#include "host/account/CsvReason.h"
#include "host/text/enumWord.h"
#include "z7cashflow/support/textPlaces.h"

#include <array>
#include <cstddef>

namespace z7::cashflow::host {

namespace {

namespace library_texts {

using R = Reason;

constexpr std::array reasons{
    ChineseReason{R::none, ""},
    ChineseReason{R::verbatim, "{0}"},

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
    ChineseReason{R::screenMissing, "没有可以显示窗口的屏幕"},
    ChineseReason{R::windowsInUse, "本程序已打开现金流量窗口，请先关闭该窗口"},
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
};

static_assert(isComplete<R>(reasons));

} // namespace library_texts

namespace database_texts {

using R = shared::DatabaseReason;

constexpr std::array reasons{
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

    ChineseReason{R::transactionOpen, "已有打开的事务，事务不能嵌套"},
    ChineseReason{R::noTransactionToCommit, "没有可提交的事务"},
    ChineseReason{R::noTransactionToRollBack, "没有可回滚的事务"},
    ChineseReason{R::transactionRolledBack, "先前出错后，数据库已回滚该事务；请先在此回滚，再继续操作"},

    ChineseReason{R::connectionStringBad, "连接字符串不能使用：{0}"},
    ChineseReason{R::stringWithZeroByte, "其中含有零字节"},
    ChineseReason{R::stringTooLong, "长度超过 {0} 字节"},
    ChineseReason{R::partWithoutValue, "每一部分都应写成 关键字=值"},
    ChineseReason{R::braceNotClosed, "{0} 的大括号没有闭合"},
    ChineseReason{R::textAfterBrace, "{0} 的右大括号之后还有内容"},
    ChineseReason{R::keywordTwice, "关键字“{0}”出现了两次"},
    ChineseReason{R::keywordMissing, "缺少关键字“{0}”"},
    ChineseReason{R::keywordUnknown, "不认识关键字“{0}”；可用的关键字有 {1}"},
    ChineseReason{R::keywordNotNumber, "{0} 应为 {1} 至 {2} 的整数"},

    ChineseReason{R::rowsOfTable, "{0}：{1}"},
    ChineseReason{R::rowsOfColumn, "{0}.{1}：{2}"},
    ChineseReason{R::columnUnknown, "表“{0}”没有此列"},
    ChineseReason{R::columnTwice, "列名出现了两次"},
    ChineseReason{R::columnMissing, "缺少这个必需的列"},
    ChineseReason{R::valueCountWrong, "字段有 {0} 个，而列名有 {1} 个"},
    ChineseReason{R::columnWithoutValue, "此列必须有值"},
    ChineseReason{R::notATruth, "“{0}”不是 0、1、true 或 false"},
    ChineseReason{R::notAWholeNumber, "“{0}”不是 {1} 至 {2} 的整数"},
    ChineseReason{R::notANumber, "“{0}”不是数字（不能有千位分隔符）"},
    ChineseReason{R::numberTooLarge, "“{0}”太大；此列最大为 {1}"},
    ChineseReason{R::amountTooFine, "“{0}”超过四位小数；请先舍入"},
    ChineseReason{R::notADate, "“{0}”不是日期（年份在前）"},
    ChineseReason{R::textTooLong, "“{0}”超过 {1} 个字符"},
    ChineseReason{R::keyTaken, "键 {0} 已经存在"},
    ChineseReason{R::rowRefused, "数据库拒绝这一行：{0}"},
};

static_assert(isComplete<R>(reasons));

} // namespace database_texts

namespace statement_texts {

using R = tsql::TsqlReason;

constexpr std::array reasons{
    ChineseReason{R::syntaxNear, "“{0}”附近有语法错误"},
    ChineseReason{R::syntaxAtEnd, "语句末尾有语法错误"},
    ChineseReason{R::orderByPosition, "order by 附近有语法错误：应为列名，不能是列的序号"},
    ChineseReason{R::commentNotClosed, "注释没有以“*/”结束"},
    ChineseReason{R::nameNotClosed, "名称“{0}”之后的引号没有闭合"},
    ChineseReason{R::textNotClosed, "字符串“{0}”之后的引号没有闭合"},
    ChineseReason{R::tooDeep, "语句嵌套过深"},
    ChineseReason{R::tooManyValues, "语句中的值超过 {0} 个"},

    ChineseReason{R::objectUnknown, "没有名为“{0}”的表或视图"},
    ChineseReason{R::databaseUnknown, "没有名为“{0}”的数据库"},
    ChineseReason{R::tableAmbiguous, "表名“{0}”所指不明确"},
    ChineseReason{R::functionUnknown, "没有名为“{0}”的函数"},
    ChineseReason{R::argumentCountWrong, "函数 {0} 的参数不能是 {1} 个"},
    ChineseReason{R::typeUnknown, "没有名为“{0}”的数据类型"},
    ChineseReason{R::columnUnnamed, "新表中有一列没有名称；请为表达式指定别名"},

    ChineseReason{R::valuesMissing, "插入语句指定了 {0} 列，却只有 {1} 个值"},
    ChineseReason{R::valuesTooMany, "插入语句只指定了 {0} 列，却有 {1} 个值"},
    ChineseReason{R::overflow, "数值超出列 {0} 的范围"},
    ChineseReason{R::notANumber, "文本不能转换为列 {0} 的数值类型"},
    ChineseReason{R::notADate, "字符串不能转换为日期或时间"},
    ChineseReason{R::textTooLong, "文本超过列 {0} 的长度"},
};

static_assert(isComplete<R>(reasons));

} // namespace statement_texts

namespace embedded_texts {

using R = sqlite::SqliteReason;

constexpr std::array reasons{
    ChineseReason{R::folderNotFile, "{0} 是文件夹，不是账套文件"},
    ChineseReason{R::accountMissing, "没有文件 {0}，请先建立账套"},
    ChineseReason{R::periodsMissing, "没有文件 {0}。其中保存账套的会计期间，应与 {1} 放在一起：请从同一备份恢复"},
    ChineseReason{R::cannotOpen, "{0} 无法打开：{1}"},
    ChineseReason{R::logLeftBehind,
                  "{0} 无法读取：有程序在旁边留下了日志（-wal）。请由对该文件和所在文件夹有写权限的人打开一次账套"},
    ChineseReason{R::notADatabase, "{0} 不能作为数据库读取：{1}"},
    ChineseReason{R::notAnAccount, "{0} 是数据库，但不是账套"},
    ChineseReason{R::notThePeriods, "{0} 是数据库，但不是 {1}"},
    ChineseReason{R::versionNewer, "{0} 的结构版本为 {1}，本程序只支持版本 {2}：请使用新版程序"},
    ChineseReason{R::versionOlder, "{0} 的结构版本为 {1}，本程序只支持版本 {2}"},
    ChineseReason{R::fileTaken, "{0} 已经存在；请另选名称，或先将其删除"},
    ChineseReason{R::folderMissing, "没有可建立账套的文件夹 {0}"},
    ChineseReason{R::cannotCreate, "{0} 无法建立：{1}"},
    ChineseReason{R::cannotWrite, "{0} 无法写入：{1}"},
    ChineseReason{R::openElsewhere, "另一程序已将其打开"},
    ChineseReason{R::cannotCheck, "无法检查"},
    ChineseReason{R::noTemporaryFolder, "没有存放临时文件的文件夹：{0}；请在环境变量 TMPDIR（Windows 上为 TMP）中指定"},
    ChineseReason{R::folderNotCreated, "无法在 {0} 中建立文件夹：{1}"},
    ChineseReason{R::folderNotLocked, "{0} 中的文件夹无法加锁：磁盘可能已满，或其文件系统不支持加锁"},

    ChineseReason{R::fileDamaged, "{1}：{0} 已损坏，请从备份恢复"},
    ChineseReason{R::systemSays, "{1}：{0}"},
    ChineseReason{R::writeRefused, "{0}：系统拒绝写入；请检查磁盘和文件大小的限制（ulimit -f）"},
    ChineseReason{R::locked, "{2}：另一会话正在写入 {0}；已等待 {1} 毫秒"},

    ChineseReason{R::fileReadOnly, "{0} 只能读取：请允许写入该文件、会计期间文件（zqsystem）和所在文件夹"},
    ChineseReason{R::fileMoved, "{0} 在打开期间被删除、移动或替换：本事务写入的内容不在现在同名的文件中"},
    ChineseReason{R::fileChanged, "有人正在写入 {0}，而此处没有权限加锁；请重试"},
    ChineseReason{R::statementTooLong, "语句过长"},
    ChineseReason{R::joinsLoseRows, "数据库程序库 {0} 按文本连接时会丢失行；请安装其他版本的 SQLite"},
    ChineseReason{R::sumOfTexts, "文本不能求和"},
    ChineseReason{R::yearMissing, "会话没有会计年度，而该行需要会计年度；请在连接字符串中指定，例如 year=2013"},

    ChineseReason{R::driverNotSqlite, "使用嵌入式数据库时 driver 应为 sqlite"},
    ChineseReason{R::databaseEmpty, "database 应为账套文件的名称"},
};

static_assert(isComplete<R>(reasons));

} // namespace embedded_texts

namespace server_texts {

using R = odbc::OdbcReason;

constexpr std::array reasons{
    ChineseReason{R::noMemory, "ODBC 驱动程序管理器内存不足"},
    ChineseReason{R::driverSilent, "驱动程序报告失败，但没有说明原因"},
    ChineseReason{R::driverMissing, "{1}（ODBC 驱动程序“{0}”没有安装，或数据源没有设置）"},
    ChineseReason{R::connectingTo, "{1}（连接目标：{0}）"},
    ChineseReason{
        R::driverNotUtf8,
        "ODBC 驱动程序不以 UTF-8 传递文本。使用 FreeTDS 时，请在连接字符串或数据源中设置 ClientCharset=UTF-8；使用其他驱动程序时，请在 UTF-8 区域设置下运行"},
    ChineseReason{R::connectionLost, "与服务器的连接已中断"},
    ChineseReason{R::connectionLostWith, "与服务器的连接已中断。{0}"},

    ChineseReason{R::lostInTransaction, "事务进行中与服务器的连接已中断，服务器会回滚该事务；请先在此回滚，再继续操作"},
    ChineseReason{R::lostInCommit,
                  "服务器提交事务时连接中断，事务可能已提交，也可能没有；请先在此回滚，并查看已保存的内容，再继续操作"},
    ChineseReason{R::commitUnknown, "不能确定事务是否已提交。{0}"},

    ChineseReason{R::odbcPartMissing, "driver=odbc 还需要 odbc={...}，其中写 ODBC 驱动程序的连接字符串"},
    ChineseReason{R::driverNotNamed, "其中既没有驱动程序（Driver={...}），也没有数据源（DSN=...）"},
    ChineseReason{R::driverEmbedded, "driver=sqlite 是嵌入式数据库，不通过 ODBC 连接"},
    ChineseReason{R::charsetNotUtf8, "ClientCharset 应为 UTF-8"},
};

static_assert(isComplete<R>(reasons));

} // namespace server_texts

namespace file_texts {

using R = CsvReason;

constexpr std::array reasons{
    ChineseReason{R::utf16, "文件似乎是 UTF-16 编码；请另存为“CSV UTF-8（逗号分隔）”"},
    ChineseReason{R::gb18030, "文件似乎是 GB18030（GBK）编码；请另存为“CSV UTF-8（逗号分隔）”"},
    ChineseReason{R::spreadsheet, "这是电子表格文件，不是 CSV；请另存为“CSV UTF-8（逗号分隔）”"},
    ChineseReason{R::invalidUtf8, "不是有效的 UTF-8 文本；请另存为“CSV UTF-8（逗号分隔）”"},
    ChineseReason{R::zeroByte, "含有零字节"},
    ChineseReason{R::strayQuote, "引号位置不对；含引号的字段要整个加引号，其中的引号要成双"},
    ChineseReason{R::unclosedQuote, "引号没有闭合"},
    ChineseReason{R::recordTooLong, "记录超过 16 MiB"},
    ChineseReason{R::unreadable, "读取失败"},
    ChineseReason{R::outOfMemory, "内存不足"},
};

static_assert(isComplete<R>(reasons));

} // namespace file_texts

} // namespace

std::vector<ReasonRoom> reasonRooms() {
    return {{reasonTable(), library_texts::reasons, enumNames<Reason>},
            {shared::databaseReasons(), database_texts::reasons, enumNames<shared::DatabaseReason>},
            {tsql::tsqlReasons(), statement_texts::reasons, enumNames<tsql::TsqlReason>},
            {sqlite::sqliteReasons(), embedded_texts::reasons, enumNames<sqlite::SqliteReason>},
            {odbc::odbcReasons(), server_texts::reasons, enumNames<odbc::OdbcReason>},
            {csvReasons(), file_texts::reasons, enumNames<CsvReason>}};
}

std::optional<ReasonRoom> roomOf(const ReasonEntry& entry) {
    for (const ReasonRoom& room : reasonRooms()) {
        if (entry.place < room.english.size() && &room.english[entry.place] == &entry) {
            return room;
        }
    }
    return std::nullopt;
}

std::string chineseText(const Explanation& why) {
    std::vector<std::string> arguments = why.arguments;
    for (const Explanation& cause : why.causes) {
        arguments.push_back(chineseText(cause));
    }
    const ReasonEntry& entry = why.reason.entry();
    const auto room = roomOf(entry);
    return fillPlaces(room ? room->chinese[entry.place].chinese : entry.english, arguments);
}

} // namespace z7::cashflow::host
