#include "host/text/HostText.h"

#include "host/text/findingTexts.h"
#include "host/text/helpTexts.h"
#include "z7cashflow/support/textPlaces.h"

#include <array>

namespace z7::cashflow::host {

namespace {

using T = HostText;

// The size is given because compilers deduce at most 256 elements.
constexpr std::array<HostTextEntry, 230> generalTexts{
    HostTextEntry{T::voucher, "凭证", "Voucher"},
    HostTextEntry{T::date, "日期", "Date"},
    HostTextEntry{T::summary, "摘要", "Summary"},
    HostTextEntry{T::cashSum, "现金净额", "Cash sum"},
    HostTextEntry{T::needed, "需分配", "Needs rows"},
    HostTextEntry{T::stored, "已存行数", "Rows stored"},
    HostTextEntry{T::matched, "相符", "Matched"},
    HostTextEntry{T::line, "分录号", "Line"},
    HostTextEntry{T::account, "科目", "Account"},
    HostTextEntry{T::accountName, "科目名称", "Account name"},
    HostTextEntry{T::debit, "借方", "Debit"},
    HostTextEntry{T::credit, "贷方", "Credit"},
    HostTextEntry{T::item, "项目", "Item"},
    HostTextEntry{T::itemName, "现金流量项目", "Cash-flow item"},
    HostTextEntry{T::error, "错误号", "Error"},
    HostTextEntry{T::message, "原因", "Reason"},
    HostTextEntry{T::outcome, "结果", "Outcome"},
    HostTextEntry{T::vouchers, "凭证数", "Vouchers"},
    HostTextEntry{T::rowsOf, "行数", "Rows"},
    HostTextEntry{T::yes, "是", "yes"},
    HostTextEntry{T::no, "否", "no"},
    HostTextEntry{T::total, "合计", "Total"},

    HostTextEntry{T::outcomeStored, "已保存", "stored"},
    HostTextEntry{T::outcomeNoCash, "无现金流量科目", "no cash-flow account"},
    HostTextEntry{T::outcomeNothing, "无需分配", "nothing to allocate"},
    HostTextEntry{T::outcomeRefused, "被拒绝", "refused"},

    HostTextEntry{T::savedRows, "凭证 {0}：已保存 {1} 行。", "Voucher {0}: rows stored: {1}."},
    HostTextEntry{T::savedNoCash, "凭证 {0}：没有现金流量科目，未作改动。",
                  "Voucher {0}: no cash-flow account, nothing changed."},
    HostTextEntry{T::savedNothing, "凭证 {0}：无需分配，没有保存任何行。",
                  "Voucher {0}: nothing to allocate, no rows stored."},
    HostTextEntry{T::savedRemoved, "凭证 {0}：删除了 {1} 行，没有保存任何行。",
                  "Voucher {0}: rows removed: {1}, none stored."},
    HostTextEntry{T::noRows, "没有现金流量行。", "There are no rows."},
    HostTextEntry{T::noVouchers, "所选年度或期间没有凭证。", "There are no vouchers."},
    HostTextEntry{T::reasonAtLine, "{0}（第 {1} 条分录）", "{0} (line {1})"},
    HostTextEntry{T::reasonInDetail, "{0}（{1}）", "{0} ({1})"},
    HostTextEntry{T::stateUnknown, "凭证 {0}：错误 {1}：{2}", "Voucher {0}: error {1}: {2}"},
    HostTextEntry{T::moreRefusals, "……另有 {0} 张被拒绝的凭证，用 --all 全部列出。",
                  "... and {0} more refused vouchers; --all lists them all."},
    HostTextEntry{T::dryRun, "试运行：全部已回滚，数据库没有改动。",
                  "Dry run: everything was rolled back, the database is unchanged."},
    HostTextEntry{T::interrupted, "已中断：{1} 张凭证中已处理 {0} 张，其余凭证没有改动。",
                  "Interrupted: {0} of {1} vouchers are done, the others are untouched."},
    HostTextEntry{T::initInterrupted, "已中断，没有建立数据库。", "Interrupted; no database was made."},
    HostTextEntry{T::stopped, "因数据库错误而停止于凭证 {0}：{1} 张凭证中已处理 {2} 张，其后的凭证没有改动。",
                  "Stopped at voucher {0} by an error of the database: {2} of {1} vouchers are done, those behind "
                  "it are untouched."},
    HostTextEntry{T::databaseMade, "已建立 {0}：{1} 张表，{2} 行。", "Created {0} (tables: {1}, records: {2})."},
    HostTextEntry{T::fileWritten, "已写出 {0}。", "Wrote {0}."},
    HostTextEntry{T::outsideMatched, "检查通过：由凭证分录得出的行与凭证相符。",
                  "The rows generated from the lines match the voucher."},
    HostTextEntry{T::outsideRefused, "检查不通过：由凭证分录得出的行与凭证不符。",
                  "The rows generated from the lines do not match the voucher."},
    HostTextEntry{T::outsideCheckIgnores, "检查只看由凭证分录得出的行，不读取 --xml 的文件内容。",
                  "The check compares the rows generated from the lines; it does not look at the document of --xml."},
    HostTextEntry{T::tableDropped, "操作失败后留下的临时表已删除。",
                  "The temporary table that the failed operation left behind was dropped."},
    HostTextEntry{T::progress, "正在分配", "Allocating"},
    HostTextEntry{T::listComma, "、", ", "},

    HostTextEntry{T::allocatedRows, "已分配", "Allocated"},
    HostTextEntry{T::side, "方向", "Side"},
    HostTextEntry{T::amount, "金额", "Amount"},
    HostTextEntry{T::proposedItem, "建议项目", "Proposed item"},
    HostTextEntry{T::openTotal, "待处理凭证 {0} 张，差额合计 {1}。",
                  "Open vouchers: {0}; their differences add up to {1}."},
    HostTextEntry{T::openNone, "没有待处理的凭证。", "No voucher is open."},
    HostTextEntry{T::openSummary, "待处理的原因：", "What is open:"},
    HostTextEntry{T::firstVoucher, "首张凭证", "First voucher"},
    HostTextEntry{T::kind, "类别", "Kind"},
    HostTextEntry{T::sign, "类别字", "Sign"},
    HostTextEntry{T::cash, "现金", "Cash"},
    HostTextEntry{T::endLevel, "末级", "End level"},
    HostTextEntry{T::closed, "封存", "Closed"},
    HostTextEntry{T::accountType, "科目类型", "Class"},
    HostTextEntry{T::startDate, "启用日期", "From"},
    HostTextEntry{T::endDate, "终止日期", "To"},
    HostTextEntry{T::itemFrom, "项目来源", "Item from"},
    HostTextEntry{T::fromStored, "已保存的行", "stored earlier"},
    HostTextEntry{T::fromDraft, "用户 {0} 的草稿", "draft of {0}"},
    HostTextEntry{T::fromLine, "分录上录入", "entered on the line"},
    HostTextEntry{T::fromAuxiliary, "分录辅助核算", "auxiliary item of the line"},
    HostTextEntry{T::fromTemplate, "科目 {0} {1}取数关系", "template of {0} {1}"},
    HostTextEntry{T::fromTemplateSince, "科目 {0} {1}取数关系（{2} 启用）", "template of {0} {1}, from {2}"},
    HostTextEntry{T::fromNowhere, "无", "none"},
    HostTextEntry{T::voucherTitle, "凭证 {0}，{1}", "Voucher {0}, {1}"},
    HostTextEntry{T::errorLine, "z7cf: {0}", "z7cf: {0}"},
    HostTextEntry{T::asItIs, "{0}", "{0}"},
    HostTextEntry{T::badKey, "“{0}”不是凭证号；请写成 年/期间/类别/号，例如 2024/1/2/15",
                  "\"{0}\" is not a voucher key; write year/period/kind/number, such as 2024/1/2/15"},
    HostTextEntry{T::badKeyYear, "凭证号“{0}”中的年应为 {1} 至 {2}",
                  "In the voucher key \"{0}\" the year must be {1} to {2}"},
    HostTextEntry{T::badKeyPeriod, "凭证号“{0}”中的期间应为 {1} 至 {2}",
                  "In the voucher key \"{0}\" the period must be {1} to {2}"},
    HostTextEntry{T::badKeyKind, "凭证号“{0}”中的类别应为 {1} 至 {2}",
                  "In the voucher key \"{0}\" the kind must be {1} to {2}"},
    HostTextEntry{T::badKeyNumber, "凭证号“{0}”中的号应为 {1} 至 {2}",
                  "In the voucher key \"{0}\" the number must be {1} to {2}"},
    HostTextEntry{T::kindUnknown, "没有类别字为“{0}”的凭证类别；已有的类别字：{1}",
                  "No voucher kind has the sign \"{0}\"; the signs are {1}"},
    HostTextEntry{T::kindAmbiguous, "类别字“{0}”属于不止一个凭证类别（{1}），请写类别号；各类别字：{2}",
                  "The sign \"{0}\" belongs to several voucher kinds ({1}), so write the number; the signs are {2}"},
    HostTextEntry{T::optionNeeds, "{0} 须与 {1} 同用", "{0} goes with {1}"},
    HostTextEntry{T::badYear, "会计年度应为 1 至 9999：{0}", "The accounting year must be 1 to 9999, not {0}"},
    HostTextEntry{T::badPeriod, "会计期间应为 0 至 255 的一个数或一段，例如 3 或 1-3：{0}",
                  "--period takes a period from 0 to 255 or a range, such as 3 or 1-3, not \"{0}\""},
    HostTextEntry{T::commandMissing, "缺少命令；用 --help 查看有哪些命令", "A command is missing; --help lists them"},
    HostTextEntry{T::badLanguage, "--lang 应为 zh-CN 或 en，而不是“{0}”", "--lang takes zh-CN or en, not \"{0}\""},
    HostTextEntry{T::noVoucher, "没有凭证 {0}", "There is no voucher {0}"},
    HostTextEntry{T::noOutsideVoucher, "表 {0} 中没有凭证 {1}", "Table {0} has no voucher {1}"},
    HostTextEntry{T::badAction, "“{0}”不是 rows、generate、check 或 save",
                  "\"{0}\" is none of rows, generate, check and save"},
    HostTextEntry{
        T::badTable, "“{0}”不是表名；表名由字母、数字和下划线组成，各部分以点分隔，其他字符须放在方括号内",
        "\"{0}\" is no name of a table: such a name has letters, digits and \"_\", with dots between its parts and "
        "anything else in brackets"},
    HostTextEntry{T::yearMissing, "{0} 没有可读的 dbill_date；请用 --year 给出会计年度",
                  "{0} gives no dbill_date that can be read; name the accounting year with --year"},
    HostTextEntry{T::inputUnreadable, "无法读取 {0}", "{0} is not there or cannot be read"},
    HostTextEntry{T::inputTooLong, "{0} 超过 64 MiB", "{0} is longer than 64 MiB"},
    HostTextEntry{T::inputEmpty, "{0} 是空的", "{0} is empty"},
    HostTextEntry{T::standardInputUnreadable, "无法读取标准输入", "standard input cannot be read"},
    HostTextEntry{T::standardInputTooLong, "标准输入超过 64 MiB", "standard input is longer than 64 MiB"},
    HostTextEntry{T::standardInputEmpty, "标准输入是空的", "standard input is empty"},
    HostTextEntry{T::argumentMissing, "缺少 {0}；用 --help 查看用法", "{0} is missing; see --help"},
    HostTextEntry{T::argumentTooMany, "参数过多：“{0}”；给出 --connect 时没有 FILE",
                  "\"{0}\" is one argument too many; with --connect there is no FILE"},
    HostTextEntry{T::argumentUnknown, "多余的参数：{0}；用 --help 查看用法", "too many arguments: {0}; see --help"},
    HostTextEntry{T::optionUnknown, "没有选项 {0}；用 --help 查看用法", "unknown option {0}; see --help"},
    HostTextEntry{T::optionUnknownNear, "没有选项 {0}；是否想用 {1}？", "unknown option {0}; did you mean {1}?"},
    HostTextEntry{T::commandUnknown, "没有命令“{0}”；用 --help 查看有哪些命令",
                  "unknown command \"{0}\"; --help lists the commands"},
    HostTextEntry{T::commandUnknownNear, "没有命令“{0}”；是否想用 {1}？", "unknown command \"{0}\"; did you mean {1}?"},
    HostTextEntry{T::optionWithoutValue, "选项 {0} 缺少值；用 --help 查看用法", "option {0} needs a value; see --help"},
    HostTextEntry{T::optionTwice, "选项 {0} 给出了不止一次", "option {0} is given more than once"},
    HostTextEntry{T::optionTakesNone, "选项 {0} 不带值", "option {0} takes no value"},
    HostTextEntry{T::optionEmpty, "选项 {0} 的值是空的", "the value of option {0} is empty"},
    HostTextEntry{T::optionsExclude, "{0} 和 {1} 不能同时使用", "{0} and {1} cannot be used together"},
    HostTextEntry{T::optionChoice, "选项 {0} 应为 {1} 之一，而不是“{2}”", "option {0} takes one of {1}, not \"{2}\""},
    HostTextEntry{T::optionBadValue, "选项 {0} 应为整数，而不是“{1}”", "option {0} takes a whole number, not \"{1}\""},
    HostTextEntry{T::commandLineWrong, "命令行有误：{0}", "the command line cannot be used: {0}"},
    HostTextEntry{T::connectEmpty, "连接串是空的", "The connection string is empty"},
    HostTextEntry{T::connectSecret,
                  "命令行上的密码会出现在进程列表中，因此不接受；请写成 --connect @文件，或使用环境变量 Z7CF_CONNECT",
                  "A password on the command line shows in the list of processes, so it is not taken; write --connect "
                  "@FILE, or use the variable Z7CF_CONNECT"},
    HostTextEntry{T::connectFileMissing, "无法读取连接串文件 {0}",
                  "The file {0} with the connection string is not there or cannot be read"},
    HostTextEntry{
        T::connectFileNoText, "连接串文件 {0} 不是 UTF-8 文本；似乎是 UTF-16，请另存为 UTF-8",
        "The file {0} with the connection string is not UTF-8 text; it looks like UTF-16, so save it as UTF-8"},
    HostTextEntry{T::connectFileEmpty, "连接串文件 {0} 中没有连接串", "The file {0} holds no connection string"},
    HostTextEntry{
        T::connectFileOpen, "警告：连接串文件 {0} 含有密码，而本机其他用户可以读写它；请执行 chmod 600 {0}",
        "Warning: the file {0} holds a password, and other users of this machine have access to it; run chmod "
        "600 {0}"},
    HostTextEntry{T::serverNoDatabase,
                  "“{0}”是服务器自己的数据库，不能存放账套；请在连接串中用 Database=名称 指明账套的数据库",
                  "\"{0}\" is a database of the server's own and takes no account; name the account's database in the "
                  "connection string with Database=NAME"},
    HostTextEntry{T::serverLetterCase,
                  "数据库 {0} 的排序规则区分大小写，账套不能用；请另选数据库，或不事先建立，由 init 建立",
                  "The collation of database {0} tells upper from lower case, which no account can use; choose another "
                  "database, or let init make it"},
    HostTextEntry{T::serverAccountThere, "数据库 {0} 中已有 {1}，未做任何改动；请另选数据库，或先把它们移走",
                  "Database {0} holds {1} already, and nothing was changed; choose another database, or take them away "
                  "first"},
    HostTextEntry{T::fileMissing, "找不到数据库文件 {0}；可用 z7cf init 建立",
                  "There is no database file {0}; z7cf init makes one"},
    HostTextEntry{
        T::accountWithoutYear,
        "账套 {0} 没有 {1} 年的会计期间，只有 {2} 年；请检查设置中的账套号 (account) 和表 ua_period",
        "Account {0} has no accounting periods for {1}, only for {2}; look at the account in the settings and at "
        "the table ua_period"},
    HostTextEntry{T::accountWithoutPeriods, "账套 {0} 没有任何会计期间；请检查设置中的账套号 (account) 和表 ua_period",
                  "Account {0} has no accounting periods; look at the account in the settings and at the table "
                  "ua_period"},
    HostTextEntry{T::yearUnknown, "账套 {0} 没有会计年度 {1}；已有 {2}",
                  "Account {0} has no accounting year {1}; it has {2}"},
    HostTextEntry{T::periodUnknown, "会计年度 {1} 没有期间 {0}；已有 {2}",
                  "The accounting year {1} has no period {0}; it has {2}"},
    HostTextEntry{T::fileExists, "{0} 已存在，不会覆盖；请另选文件名或先移走该文件",
                  "{0} exists and is not overwritten; choose another name or move the file away first"},
    HostTextEntry{T::notADatabase, "无法打开数据库 {0}：{1}", "Database {0} cannot be opened: {1}"},
    HostTextEntry{T::notConnected, "无法打开连接串指定的数据库：{0}",
                  "The database that the connection string names cannot be opened: {0}"},
    HostTextEntry{T::databaseFailed, "数据库错误 {0}：{1}", "Database error {0}: {1}"},
    HostTextEntry{T::voucherFailed, "错误 {0}：{1}", "Error {0}: {1}"},
    HostTextEntry{T::outputFailed, "无法写出结果：{0}", "The output cannot be written: {0}"},
    HostTextEntry{T::settingsUnreadable, "设置文件 {0} 第 {1} 行：{2}", "Settings file {0}, line {1}: {2}"},
    HostTextEntry{
        T::settingsBadKey,
        "不认识的设置“{0}”；可用的有 account、user、operator、accounting_system、language、guard、statement_groups",
        "unknown setting \"{0}\"; known are account, user, operator, accounting_system, language, guard "
        "and statement_groups"},
    HostTextEntry{T::settingsBadType, "设置“{0}”应为文本", "setting \"{0}\" must be a text"},
    HostTextEntry{
        T::settingsBadGroups, "设置“{0}”应为一组 项目编码开头 = \"名称\"，例如 [{0}] 下一行 01 = \"经营活动\"",
        "setting \"{0}\" must be a table of item beginnings with names, such as 01 = \"Operating\" under [{0}]"},
    HostTextEntry{T::settingsNoTruth, "设置“{0}”应为 true 或 false", "setting \"{0}\" must be true or false"},
    HostTextEntry{T::settingsBadValue, "设置“{0}”的值“{1}”无效", "setting \"{0}\" cannot be \"{1}\""},
    HostTextEntry{T::settingsMissing, "无法读取设置文件 {0}", "Settings file {0} is not there or cannot be read"},
    HostTextEntry{T::settingsTooLong, "设置文件 {0} 超过 64 KiB", "Settings file {0} is longer than 64 KiB"},
    HostTextEntry{T::settingsTooDeep, "设置文件 {0} 的嵌套过深；每项设置应写成一行：名称 = \"值\"",
                  "Settings file {0} nests too deep; each setting is one line: NAME = \"VALUE\""},
    HostTextEntry{T::settingsNoToml, "无法理解；每项设置应写成一行：名称 = \"值\"",
                  "this cannot be understood; each setting is one line: NAME = \"VALUE\""},
    HostTextEntry{T::setNeedsValue, "--set 应写成 名称=值，而不是“{0}”", "--set takes NAME=VALUE, not \"{0}\""},
    HostTextEntry{T::setUnknown, "不认识的账套选项“{0}”；可用的有 {1}",
                  "Unknown account option \"{0}\"; known are {1}"},
    HostTextEntry{T::setTwice, "账套选项“{0}”给出了两次", "Account option \"{0}\" is given twice"},
    HostTextEntry{T::setBadValue, "账套选项“{0}”应为 true 或 false，而不是“{1}”",
                  "Account option \"{0}\" takes true or false, not \"{1}\""},
    HostTextEntry{T::folderMissing, "{0} 不是可读的文件夹", "{0} is no folder that can be read"},
    HostTextEntry{T::folderEmpty, "文件夹 {0} 中没有 .csv 文件", "Folder {0} holds no .csv file"},
    HostTextEntry{T::moveFailed, "无法写入 {0}：{1}", "{0} cannot be written: {1}"},
    HostTextEntry{T::outOfMemory, "内存不足", "Out of memory"},
    HostTextEntry{T::internal, "内部错误：{0}", "Internal error: {0}"},

    HostTextEntry{T::csvAt, "{0} 第 {1} 行：{2}", "{0}, line {1}: {2}"},
    HostTextEntry{T::csvAtColumn, "{0} 第 {1} 行 {2} 列：{3}", "{0}, line {1}, column {2}: {3}"},
    HostTextEntry{T::csvFaults, "以上 {0} 处错误；没有建立任何东西", "{0} faults, see above; nothing was created"},
    HostTextEntry{T::csvFaultsAndMore, "以上是前 {0} 处错误，其后的未列出；没有建立任何东西",
                  "the first {0} faults, see above, and there may be more; nothing was created"},
    HostTextEntry{T::csvSeparator, "字段之间似乎是{0}；请改用逗号，例如另存为“CSV UTF-8（逗号分隔）”",
                  "the fields seem to be separated by {0}; separate them by commas, such as by saving as CSV UTF-8"},
    HostTextEntry{T::tabulator, "制表符", "tabs"},
    HostTextEntry{T::csvCannotOpen, "无法打开文件", "the file cannot be opened"},
    HostTextEntry{T::csvNoHeading, "第一行应为列名，但文件是空的",
                  "the first line must name the columns, but the file is empty"},
    HostTextEntry{T::csvNoTable, "{0}：数据库中没有表“{1}”；可用的表有 {2}",
                  "{0}: the database has no table \"{1}\"; tables are {2}"},
    HostTextEntry{T::csvTableTwice, "{0}：表“{1}”有两个文件", "{0}: there are two files for table \"{1}\""},
    HostTextEntry{T::csvNoName, "第 {0} 个列名是空的", "column name {0} is empty"},
    HostTextEntry{T::csvDoubleKeyAt, "键 {0} 已在第 {1} 行出现", "the key {0} is on line {1} already"},

    HostTextEntry{T::receipts, "现金流入", "Receipts"},
    HostTextEntry{T::payments, "现金流出", "Payments"},
    HostTextEntry{T::net, "净额", "Net"},
    HostTextEntry{T::opening, "期初余额", "Opening"},
    HostTextEntry{T::closing, "期末余额", "Closing"},
    HostTextEntry{T::currency, "币种", "Currency"},
    HostTextEntry{T::ledgerCurrency, "本位币", "ledger currency"},
    HostTextEntry{T::allocated, "已分配", "Allocated"},
    HostTextEntry{T::difference, "差额", "Difference"},
    HostTextEntry{T::cashAccounts, "现金科目", "Cash accounts"},
    HostTextEntry{T::statementTitle, "{0} 年第 {1} 期现金流量表", "Cash-flow statement {0}, period {1}"},
    HostTextEntry{T::statementProven, "现金科目净变动 {0}，现金流量表净额 {1}：相符。",
                  "Net change of the cash accounts {0}, net of the statement {1}: they match."},
    HostTextEntry{T::statementOpen, "现金科目净变动 {0}，现金流量表净额 {1}，差额 {2}，涉及凭证 {3} 张。",
                  "Net change of the cash accounts {0}, net of the statement {1}, difference {2} (vouchers: {3})."},
    HostTextEntry{T::statementPicture, "各期现金流入、流出与现金余额", "Receipts, payments and cash balance by period"},
    HostTextEntry{
        T::statementPictureKey,
        "向上的柱为现金流入，向下的柱为现金流出（柱高最大为 {0}）；折线为期末现金余额（最大为 {1}）。",
        "Bars up: receipts; bars down: payments (the longest stands for {0}). Line: cash balance at the end of the "
        "period (the farthest point stands for {1})."},
    HostTextEntry{T::vouchersOfDifference, "构成差额的凭证", "Vouchers that make up the difference"},
    HostTextEntry{T::vouchersOfItem, "现金流量项目 {0} {1} 的凭证", "Vouchers of cash-flow item {0} {1}"},
    HostTextEntry{T::vouchersOfAccount, "科目 {0} {1} 的凭证", "Vouchers of account {0} {1}"},
    HostTextEntry{T::gapUnallocated, "未分配现金流量项目", "not allocated"},
    HostTextEntry{T::gapHiddenRows, "现金流量行的项目或科目不存在",
                  "the item or the account of a stored row does not exist"},
    HostTextEntry{T::gapVoucherMissing, "总账中没有此凭证", "the ledger has no such voucher"},
    HostTextEntry{T::gapSumsDiffer, "现金流量行合计与凭证不符", "the rows do not add up to the voucher's cash"},
    HostTextEntry{
        T::badOpening, "“{0}”不是期初余额；请写作 科目=金额，例如 1001=2500.00，每个科目只写一次",
        "\"{0}\" is not an opening balance; write ACCOUNT=AMOUNT, such as 1001=2500.00, once for each account"},
    HostTextEntry{T::badPeriods, "“{0}”不是会计期间；请写作 3 或 1-3，期间为 0 至 255",
                  "\"{0}\" is not a period or a range of periods; write 3 or 1-3, with periods from 0 to 255"},
    HostTextEntry{T::openingNotCash, "科目 {0} 不是 {1} 年的末级、未封存的现金科目，不能指定期初余额",
                  "Account {0} is not an open, end-level cash account of {1}, so it has no opening balance"},
    HostTextEntry{T::run, "批次", "Run"},
    HostTextEntry{T::time, "时间", "Time"},
    HostTextEntry{T::user, "用户", "User"},
    HostTextEntry{T::command, "命令", "Command"},
    HostTextEntry{T::undoes, "撤销的批次", "Undoes"},
    HostTextEntry{T::undoneBy, "被撤销于批次", "Undone by"},
    HostTextEntry{T::rowChange, "变动", "Change"},
    HostTextEntry{T::rowKept, "保留", "kept"},
    HostTextEntry{T::rowNew, "新增", "new"},
    HostTextEntry{T::rowChanged, "修改", "changed"},
    HostTextEntry{T::rowRemoved, "删除", "removed"},
    HostTextEntry{T::formerValues, "原值", "Was"},
    HostTextEntry{T::listSeparator, "，", ", "},
    HostTextEntry{T::noRuns, "日志中没有批次。", "The log holds no runs."},
    HostTextEntry{
        T::noLog, "此账套没有变动日志，因为它由不带日志的版本建立；文档说明如何添加日志表。",
        "This account has no log of changes, because a version without one made it; the documentation says how to "
        "add its tables."},
    HostTextEntry{T::noLogNoted, "此账套没有变动日志，本次变动无法撤销。",
                  "This account has no log of changes, so this run cannot be undone."},
    HostTextEntry{T::runMissing, "日志中没有批次 {0}。", "The log holds no run {0}."},
    HostTextEntry{T::runLacksVoucher, "批次 {0} 没有改动凭证 {1}。", "Run {0} did not change voucher {1}."},
    HostTextEntry{T::badRun, "“{0}”不是批次号；请写日志中的号码，例如 3",
                  "\"{0}\" is not a run; write its number in the log, such as 3"},
    HostTextEntry{T::runNumber, "本次变动在日志中为批次 {0}。", "The log holds this as run {0}."},
    HostTextEntry{T::undoneVouchers, "批次 {0}：已恢复 {1} 张凭证，拒绝 {2} 张。",
                  "Run {0}: vouchers restored: {1}, refused: {2}."},
    HostTextEntry{T::rowCount, "{0} {1}", "{0} {1}"},
    HostTextEntry{T::colon, "：", ": "},
    HostTextEntry{T::itemMissing, "没有现金流量项目“{0}”", "There is no cash-flow item \"{0}\""},
    HostTextEntry{T::itemNear, "没有现金流量项目“{0}”；是否指 {1}？",
                  "There is no cash-flow item \"{0}\"; was one of these meant: {1}?"},
    HostTextEntry{T::restStays, "凭证 {0} 分录 {1}：余下的 {2} 留在项目 {3} {4}。",
                  "Voucher {0}, line {1}: the remaining {2} stay on item {3} {4}."},
    HostTextEntry{T::nothingToChange, "没有需要改动的凭证。", "There is no voucher to change."},
    HostTextEntry{T::sheetFaults, "{0} 中有 {1} 处错误，没有改动任何凭证",
                  "{0} has {1} faults, and no voucher was changed"},
    HostTextEntry{T::sheetNoCsv, "不是 UTF-8 的 CSV 文件", "this is not CSV in UTF-8"},
    HostTextEntry{T::sheetNoColumn, "缺少列 {0}", "the column {0} is missing"},
    HostTextEntry{T::sheetBadLine, "“{0}”不是分录号", "\"{0}\" is not the number of a line"},
    HostTextEntry{T::sheetBadAmount, "“{0}”不是金额；请写最多四位小数的数字，例如 1234.50",
                  "\"{0}\" is not an amount; write a number with at most four decimals, such as 1234.50"},
    HostTextEntry{T::sheetOtherYear, "凭证 {0} 不属于年度 {1}；一个文件只能有一个年度",
                  "voucher {0} is not of the year {1}; a file has vouchers of one year"},
    HostTextEntry{T::sheetNoLine, "凭证 {0} 没有第 {1} 号分录", "voucher {0} has no line {1}"},
    HostTextEntry{T::sheetOtherAccount, "科目 {0} 与分录的科目 {1} 不同", "the account is {0}, that of the line {1}"},
    HostTextEntry{T::sheetOtherSide, "方向“{0}”与分录不同", "the side \"{0}\" is not that of the line"},
    HostTextEntry{T::sheetTooMuch, "金额 {0} 超过分录余下的部分（分录金额 {1}）",
                  "the amount {0} is more than is left of the line, whose amount is {1}"},
    HostTextEntry{T::editNothingSaved, "没有保存任何内容。", "Nothing was saved."},
    HostTextEntry{T::widthsForgotten, "已清除保存的列宽：{0} 条。", "Stored column widths removed: {0}."},
    HostTextEntry{T::noWindowBuilt,
                  "本程序编译时没有包含窗口，无法打开编辑窗口。请安装 libwxgtk3.2-dev 和 libgtk-3-dev 后重新编译。",
                  "This z7cf was built without windows. Install libwxgtk3.2-dev and libgtk-3-dev and build it again."},
    HostTextEntry{T::noScreen,
                  "没有可用的图形界面，无法打开编辑窗口。请在桌面会话中运行，并检查 DISPLAY 或 WAYLAND_DISPLAY。",
                  "There is no screen to show the dialog on. Run z7cf edit in a desktop session, where DISPLAY or "
                  "WAYLAND_DISPLAY names the screen."},
};

constexpr std::size_t textCount = static_cast<std::size_t>(T::count);
static_assert(generalTexts.size() + findingTexts.size() + helpTexts.size() == textCount, "a text is missing");

/// All texts, in the order of their names.
constexpr std::array<HostTextEntry, textCount> texts = [] {
    std::array<HostTextEntry, textCount> all{};
    const auto place = [&all](const auto& group) {
        for (const HostTextEntry& entry : group) {
            all.at(static_cast<std::size_t>(entry.id)) = entry;
        }
    };
    place(generalTexts);
    place(findingTexts);
    place(helpTexts);
    return all;
}();

static_assert([] {
    for (const HostTextEntry& entry : texts) {
        if (entry.english.empty()) {
            return false; // a name with two texts means that another name has none
        }
    }
    return true;
}());

} // namespace

std::span<const HostTextEntry> hostTexts() noexcept { return texts; }

std::string hostText(Language language, HostText text, const std::vector<std::string>& arguments) {
    const HostTextEntry& entry = texts.at(static_cast<std::size_t>(text));
    return fillPlaces(language == Language::chinese ? entry.chinese : entry.english, arguments);
}

} // namespace z7::cashflow::host
