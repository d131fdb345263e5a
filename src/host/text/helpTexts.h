#pragma once

#include "host/text/HostText.h"

#include <array>

namespace z7::cashflow::host {

/// The help of z7cf: the purpose of each command and option, and examples for each command.
inline constexpr std::array<HostTextEntry, 122> helpTexts = [] {
    using T = HostText;
    return std::array{
        HostTextEntry{T::helpOpen, "只列未分配或不相符的凭证，及其原因和处理办法",
                      "Only vouchers that are not allocated or do not match, with the reason and the remedy"},
        HostTextEntry{T::helpGroup, "与 --open 同用：按原因、科目和方向汇总",
                      "With --open: by reason, account and side"},
        HostTextEntry{T::helpLines, "与 --open 同用：列出待分配的分录和建议项目",
                      "With --open: the unallocated lines, with a proposed item"},
        HostTextEntry{T::helpWhy, "显示每行的现金流量项目从何而来", "Show where the item of each row comes from"},
        HostTextEntry{T::helpVoucher, "显示一张凭证的分录及各分录的现金流量行",
                      "Show the lines of a voucher with their rows"},
        HostTextEntry{T::helpItems, "列出现金流量项目", "List the cash-flow items"},
        HostTextEntry{T::helpAccounts, "列出某年度的会计科目", "List the accounts of a year"},
        HostTextEntry{T::helpTemplates, "列出某年度的取数关系：科目、方向和项目",
                      "List the templates of a year: account, side and item"},
        HostTextEntry{T::helpKinds, "列出凭证类别及其类别字", "List the voucher kinds with their signs"},
        HostTextEntry{
            T::examplesVoucher,
            "例：\n  z7cf voucher company.db 2024/6/2/10\n  z7cf voucher company.db 2024/6/付/10 --json",
            "Examples:\n  z7cf voucher company.db 2024/6/2/10\n  z7cf voucher company.db 2024/6/付/10 --json"},
        HostTextEntry{T::examplesItems, "例：\n  z7cf items company.db\n  z7cf items company.db --csv -o items.csv",
                      "Examples:\n  z7cf items company.db\n  z7cf items company.db --csv -o items.csv"},
        HostTextEntry{
            T::examplesAccounts,
            "例：\n  z7cf accounts company.db --year 2024\n  z7cf accounts company.db --year 2024 --json",
            "Examples:\n  z7cf accounts company.db --year 2024\n  z7cf accounts company.db --year 2024 --json"},
        HostTextEntry{
            T::examplesTemplates,
            "例：\n  z7cf templates company.db --year 2024\n  z7cf templates company.db --year 2024 --csv",
            "Examples:\n  z7cf templates company.db --year 2024\n  z7cf templates company.db --year 2024 --csv"},
        HostTextEntry{T::examplesKinds, "例：\n  z7cf kinds company.db", "Examples:\n  z7cf kinds company.db"},
        HostTextEntry{T::helpPeriods, "只限此会计期间，或从一期至另一期（如 1-3）",
                      "This accounting period only, or a range such as 1-3"},
        HostTextEntry{T::helpStatement, "编制现金流量表，并与现金科目核对",
                      "Draw up the cash-flow statement and prove it against the cash accounts"},
        HostTextEntry{T::helpBy, "每月、每季或全年一栏：month、quarter、year",
                      "One column per month, per quarter, or for the year"},
        HostTextEntry{T::helpByCurrency, "另按币种列示原币金额", "Show the items by currency as well"},
        HostTextEntry{T::helpOpening, "账套启用前的期初余额，写作 科目=金额；可写多次",
                      "Balance before the ledger's first voucher, as ACCOUNT=AMOUNT; may be repeated"},
        HostTextEntry{T::helpHtml, "另存为一个可打印的网页文件",
                      "Also write a page for printing (HTML) to this new file"},
        HostTextEntry{T::helpCsv, "以 CSV 格式输出", "Write CSV, for a spreadsheet"},
        HostTextEntry{T::helpOutputFile, "输出到新文件", "Write to this new file instead of standard output"},
        HostTextEntry{T::examplesStatement,
                      "例：\n"
                      "  z7cf statement company.db --year 2024\n"
                      "  z7cf statement company.db --year 2024 --period 1-3 --by month --csv -o quarter.csv\n"
                      "  z7cf statement company.db --year 2024 --html 2024.html",
                      "Examples:\n"
                      "  z7cf statement company.db --year 2024\n"
                      "  z7cf statement company.db --year 2024 --period 1-3 --by month --csv -o quarter.csv\n"
                      "  z7cf statement company.db --year 2024 --html 2024.html"},
        HostTextEntry{T::helpLog, "列出改动过现金流量行的批次，或一个批次改动的行",
                      "List the runs that changed rows, or the rows that one run changed"},
        HostTextEntry{T::helpLogStart, "为没有变动日志的账套添加日志",
                      "Add the log to an account that was made without it"},
        HostTextEntry{T::helpUndo, "恢复一个批次之前的现金流量行", "Restore the rows from before a run"},
        HostTextEntry{T::helpRun, "批次号，例如 3", "Number of the run, such as 3"},
        HostTextEntry{T::helpUndoKeys, "只恢复这些凭证", "Restore these vouchers only"},
        HostTextEntry{T::helpUndoDryRun, "只显示将要恢复的内容：全部回滚",
                      "Only show what would be restored: roll everything back"},
        HostTextEntry{T::examplesLog,
                      "例：\n"
                      "  z7cf log company.db\n"
                      "  z7cf log company.db 3 --csv -o run3.csv\n"
                      "  z7cf log company.db --start",
                      "Examples:\n"
                      "  z7cf log company.db\n"
                      "  z7cf log company.db 3 --csv -o run3.csv\n"
                      "  z7cf log company.db --start"},
        HostTextEntry{T::examplesUndo,
                      "例：\n"
                      "  z7cf undo company.db 3 --dry-run\n"
                      "  z7cf undo company.db 3 2024/6/付/10",
                      "Examples:\n"
                      "  z7cf undo company.db 3 --dry-run\n"
                      "  z7cf undo company.db 3 2024/6/付/10"},
        HostTextEntry{T::helpShowChanges, "只逐行显示变动：全部回滚",
                      "Only show the changes, row by row: roll everything back"},
        HostTextEntry{T::helpAssign, "把分录的金额指定到现金流量项目",
                      "Assign the amounts of lines to cash-flow items"},
        HostTextEntry{T::helpAssignLine, "分录号，例如 2", "Number of the line, such as 2"},
        HostTextEntry{T::helpAssignItems, "项目（编码或名称）及金额；可重复，最后一个可以不写金额",
                      "Item, by code or name, and its amount; may be repeated, and the last amount left out"},
        HostTextEntry{T::helpAssignFrom, "填好项目的分录 CSV 文件，- 为标准输入",
                      "CSV file of lines with their items filled in; - for standard input"},
        HostTextEntry{T::helpClear, "删除一张凭证的全部现金流量行", "Remove all rows of a voucher"},
        HostTextEntry{T::helpReassign, "把一个项目的现金流量行改到另一个项目", "Move the rows of one item to another"},
        HostTextEntry{T::helpReassignFrom, "原项目（编码或名称）", "Item to move rows from, by code or name"},
        HostTextEntry{T::helpReassignTo, "新项目（编码或名称）", "Item to move rows to, by code or name"},
        HostTextEntry{T::helpReassignAccount, "只改这个科目的行", "Only the rows on this account"},
        HostTextEntry{T::helpRegenerateRows, "重新生成，替换已存的行", "Replace stored rows by newly generated ones"},
        HostTextEntry{T::helpKeepItems, "重新生成时，没有找到项目的分录保留已存的项目",
                      "With --regenerate: lines for which no item is found keep the stored one"},
        HostTextEntry{T::examplesAssign,
                      "例：\n"
                      "  z7cf assign company.db 2024/6/2/10 1 0114\n"
                      "  z7cf assign company.db 2024/6/2/10 1 0112 400.00 0114\n"
                      "  z7cf assign company.db --from open.csv --dry-run",
                      "Examples:\n"
                      "  z7cf assign company.db 2024/6/2/10 1 0114\n"
                      "  z7cf assign company.db 2024/6/2/10 1 0112 400.00 0114\n"
                      "  z7cf assign company.db --from open.csv --dry-run"},
        HostTextEntry{T::examplesClear,
                      "例：\n"
                      "  z7cf clear company.db 2024/6/2/10",
                      "Examples:\n"
                      "  z7cf clear company.db 2024/6/2/10"},
        HostTextEntry{T::examplesReassign,
                      "例：\n"
                      "  z7cf reassign company.db --year 2024 --from 0111 --to 0114 --account 2202 --dry-run",
                      "Examples:\n"
                      "  z7cf reassign company.db --year 2024 --from 0111 --to 0114 --account 2202 --dry-run"},
        HostTextEntry{T::helpEdit, "在窗口中编辑一张凭证的现金流量行，确定后保存",
                      "Edit the rows of a voucher in a window and save them after OK"},
        HostTextEntry{T::helpEditOutside, "编辑其他子系统的凭证：所在的表和它的外部凭证号",
                      "Edit a voucher of another subsystem: its table and its outside key"},
        HostTextEntry{T::helpEditYear, "外部凭证的会计年度；默认为其日期所在年度",
                      "Accounting year of an outside voucher; by default the year of its date"},
        HostTextEntry{T::helpReadOnly, "只能查看，不能修改", "View the rows without changing them"},
        HostTextEntry{T::helpRegenerate, "忽略已存的行，从凭证重新取数",
                      "Start with rows generated from the voucher instead of the stored ones"},
        HostTextEntry{T::helpWidths, "编辑窗口保存的列宽", "Column widths stored by the edit window"},
        HostTextEntry{T::helpReset, "清除所有语言的列宽，恢复默认", "Remove the stored widths of all languages"},
        HostTextEntry{T::examplesEdit,
                      "例：\n"
                      "  z7cf edit company.db 2024/6/2/10\n"
                      "  z7cf edit company.db 2024/6/2/10 --read-only\n"
                      "  z7cf edit company.db --outside sales_voucher AR-2024-0301",
                      "Examples:\n"
                      "  z7cf edit company.db 2024/6/2/10\n"
                      "  z7cf edit company.db 2024/6/2/10 --read-only\n"
                      "  z7cf edit company.db --outside sales_voucher AR-2024-0301"},
        HostTextEntry{T::examplesWidths,
                      "例：\n"
                      "  z7cf widths company.db --reset",
                      "Examples:\n"
                      "  z7cf widths company.db --reset"},
        HostTextEntry{T::helpUsage, "用法：{0}", "Usage: {0}"},
        HostTextEntry{T::helpArguments, "参数：", "Arguments:"},
        HostTextEntry{T::helpOptions, "选项：", "Options:"},
        HostTextEntry{T::helpCommands, "命令：", "Subcommands:"},
        HostTextEntry{T::helpOptionsPlace, "[选项]", "[OPTIONS]"},
        HostTextEntry{T::helpCommandPlace, "[命令]", "[SUBCOMMAND]"},
        HostTextEntry{T::helpText, "文本", "TEXT"},
        HostTextEntry{T::helpNumber, "整数", "NUMBER"},
        HostTextEntry{T::helpRequired, "（必需）", " (required)"},
        HostTextEntry{T::helpExcludes, "（不能与 {0} 同时使用）", " (not together with {0})"},
        HostTextEntry{T::helpProgram, "把总账凭证的现金收支分配到现金流量项目。",
                      "Allocates the cash movements of ledger vouchers to cash-flow items."},
        HostTextEntry{T::helpInit, "建立账套数据库：空的、示例公司的或来自 CSV 文件的",
                      "Create an account's database: empty, with the sample company, or from CSV files"},
        HostTextEntry{T::helpVouchers, "列出某年度或期间的凭证及其现金流量状况",
                      "List the vouchers of a year or period and the state of their rows"},
        HostTextEntry{T::helpRows, "显示一张凭证已存的或新生成的现金流量行及检查结果",
                      "Show the stored or newly generated rows of a voucher, with the verdict"},
        HostTextEntry{T::helpCheck, "检查一张凭证已存的现金流量行是否与凭证相符",
                      "Check whether the stored rows of a voucher match it"},
        HostTextEntry{T::helpSave, "保存一张凭证的现金流量行；没有已存的行就先生成",
                      "Save the rows of a voucher, generating them if none are stored"},
        HostTextEntry{T::helpAllot, "为某年度或期间的每张凭证生成、检查并保存现金流量行",
                      "Generate, check and save the rows of every voucher of a year or period"},
        HostTextEntry{T::helpVerify, "检查账套的文件是否完好，各表的内容是否一致",
                      "Check whether an account's files are sound and its tables agree"},
        HostTextEntry{T::helpExport, "把一张凭证的现金流量行写成 XML", "Write the rows of a voucher as XML"},
        HostTextEntry{T::helpImport, "用 XML 中的行替换一张凭证的现金流量行",
                      "Replace the rows of a voucher by those of an XML document"},
        HostTextEntry{T::helpOutside, "其他子系统凭证的现金流量行：显示、生成、检查、保存",
                      "The rows of a voucher of another subsystem: show, generate, check, save"},
        HostTextEntry{T::helpVoucherXml, "显示以 XML 提供的凭证的现金流量行",
                      "Show the rows of a voucher given as XML"},
        HostTextEntry{T::helpSampleXml, "写出示例公司的 XML 文件", "Write the XML documents of the sample company"},
        HostTextEntry{T::helpLang, "输出的语言：zh-CN 或 en", "Language of the output: zh-CN or en"},
        HostTextEntry{T::helpQuiet, "不显示提示消息和进度", "No remarks and no progress bar"},
        HostTextEntry{T::helpJson, "输出 JSON，供程序读取", "Write JSON, for programs"},
        HostTextEntry{T::helpSettings,
                      "设置文件（TOML）；默认为 ~/.config（Windows 上为 %APPDATA%）下的 z7cf/settings.toml",
                      "Settings file (TOML); by default z7cf/settings.toml in ~/.config, on Windows in %APPDATA%"},
        HostTextEntry{
            T::helpConnect, "连接字符串，代替 FILE；“@文件”表示从文件读取；也可用环境变量 Z7CF_CONNECT",
            "Connection string in place of FILE; @FILE reads it from a file; by default that of the environment variable Z7CF_CONNECT"},
        HostTextEntry{T::helpVersion, "显示版本", "Show the version"},
        HostTextEntry{T::helpHelp, "显示帮助", "Show this help"},
        HostTextEntry{T::helpFile, "账套数据库文件", "Database file of the account"},
        HostTextEntry{T::helpKey, "凭证：年/期间/类别/号，类别可写类别字",
                      "Voucher: year/period/kind/number; the kind may be its sign"},
        HostTextEntry{T::helpYear, "会计年度", "Accounting year"},
        HostTextEntry{T::helpPeriod, "只限此会计期间，或一段期间，例如 1-3",
                      "This accounting period only, or a range such as 1-3"},
        HostTextEntry{T::helpGenerate, "显示由凭证新生成的行，而不是已存的行",
                      "Show rows generated from the voucher instead of the stored ones"},
        HostTextEntry{T::helpDryRun, "只试运行：每张凭证都回滚", "Dry run: roll back every voucher"},
        HostTextEntry{T::helpAll, "列出全部被拒绝的凭证，而不只是前 20 张",
                      "List all refused vouchers, not only the first 20"},
        HostTextEntry{T::helpJobs, "并行工作的会话数，1 至 64；服务器默认 4，文件默认 1",
                      "Number of sessions that work side by side, 1 to 64; default 4 on a server, 1 on a file"},
        HostTextEntry{T::helpSample, "装入随程序提供的示例公司", "Load the built-in sample company"},
        HostTextEntry{T::helpFrom, "装入此文件夹中以表名命名的 CSV 文件",
                      "Load the CSV files of this folder, which are named after the tables"},
        HostTextEntry{T::helpSet, "账套选项，可重复：bCashCode=true",
                      "Account option, may be repeated: bCashCode=true"},
        HostTextEntry{T::helpRowsXml, "行的 XML 文件；- 为标准输入", "XML document with rows; - is standard input"},
        HostTextEntry{T::helpForce, "即使文件属于另一张凭证也保存",
                      "Store the rows even if they belong to another voucher"},
        HostTextEntry{T::helpAction, "rows、generate、check 或 save", "rows, generate, check or save"},
        HostTextEntry{T::helpTable, "存放凭证分录的表", "Table that holds the voucher's lines"},
        HostTextEntry{T::helpOutKey, "凭证在其子系统中的键（coutno_id）",
                      "Key of the voucher in its subsystem (coutno_id)"},
        HostTextEntry{
            T::helpOutsideXml, "rows、generate：写入此文件；save：从此文件读取行；- 为标准输出或输入",
            "rows, generate: write the document to this file; save: read the rows from it; - is standard output or input"},
        HostTextEntry{T::helpVoucherFile, "凭证的 XML 文件；- 为标准输入",
                      "XML document of the voucher; - is standard input"},
        HostTextEntry{T::helpXmlYear, "会计年度；默认为 dbill_date 的年份",
                      "Accounting year; by default that of dbill_date"},
        HostTextEntry{T::helpCreate, "由凭证分录生成行，而不是已存的行",
                      "Show rows generated from the lines instead of the stored ones"},
        HostTextEntry{T::helpIdentities, "JSON 中也输出各行的标识 key 和 RowGuid（每次读取都不同）",
                      "In JSON, also write the identities of the rows, key and RowGuid, which differ each time"},
        HostTextEntry{T::helpNewIdentities, "各行的标识 key 和 RowGuid 随机生成，每次都不同",
                      "Give the rows new random identities, key and RowGuid, each time"},
        HostTextEntry{T::helpAsXml, "输出行的 XML", "Write the rows as XML"},
        HostTextEntry{T::helpFolder, "文件夹", "Folder"},
        HostTextEntry{
            T::examplesProgram,
            "例：\n"
            "  z7cf init company.db --sample\n"
            "  z7cf allot company.db --year 2024\n"
            "  z7cf help allot\n"
            "退出码：0 完成，1 有凭证被拒绝或不存在，2 用法错误，3 数据库或输出错误，130/143 被中断",
            "Examples:\n"
            "  z7cf init company.db --sample\n"
            "  z7cf allot company.db --year 2024\n"
            "  z7cf help allot\n"
            "Exit codes: 0 done, 1 a voucher refused or missing, 2 wrong usage, 3 database or output error, 130/143 "
            "interrupted"},
        HostTextEntry{
            T::examplesInit,
            "用 --connect 时，账套建在连接字符串中 Database= 指明的数据库里；该数据库和 zqsystem "
            "不存在时先建立，已有账套的表则拒绝。其余全部在一个事务中完成；出错或中断不留下任何东西。\n"
            "例：\n"
            "  z7cf init company.db --sample --set bCashCode=true\n"
            "  z7cf init journal.db --from ./tables\n"
            "  z7cf init --connect @office.txt --sample",
            "With --connect the account is created in the database that the string names with Database=. That database "
            "and zqsystem are created if they do not exist; a database with an account's tables is refused. Everything "
            "else is one transaction: an error or an interruption leaves nothing behind.\n"
            "Examples:\n"
            "  z7cf init company.db --sample --set bCashCode=true\n"
            "  z7cf init journal.db --from ./tables\n"
            "  z7cf init --connect @office.txt --sample"},
        HostTextEntry{T::examplesVouchers,
                      "例：\n"
                      "  z7cf vouchers company.db --year 2024 --period 3\n"
                      "  z7cf vouchers company.db --year 2024 --open\n"
                      "  z7cf vouchers company.db --year 2024 --open --group\n"
                      "  z7cf vouchers company.db --year 2024 --open --lines --csv -o open.csv",
                      "Examples:\n"
                      "  z7cf vouchers company.db --year 2024 --period 3\n"
                      "  z7cf vouchers company.db --year 2024 --open\n"
                      "  z7cf vouchers company.db --year 2024 --open --group\n"
                      "  z7cf vouchers company.db --year 2024 --open --lines --csv -o open.csv"},
        HostTextEntry{T::examplesRows,
                      "例：\n"
                      "  z7cf rows company.db 2024/6/2/10\n"
                      "  z7cf rows company.db 2024/6/2/10 --generate --why",
                      "Examples:\n"
                      "  z7cf rows company.db 2024/6/2/10\n"
                      "  z7cf rows company.db 2024/6/2/10 --generate --why"},
        HostTextEntry{T::examplesCheck,
                      "例：\n"
                      "  z7cf check company.db 2024/6/2/10",
                      "Examples:\n"
                      "  z7cf check company.db 2024/6/2/10"},
        HostTextEntry{T::examplesSave,
                      "例：\n"
                      "  z7cf save company.db 2024/6/2/10",
                      "Examples:\n"
                      "  z7cf save company.db 2024/6/2/10"},
        HostTextEntry{T::examplesAllot,
                      "例：\n"
                      "  z7cf allot company.db --year 2024 --dry-run\n"
                      "  z7cf allot company.db --year 2024 --period 3 --json",
                      "Examples:\n"
                      "  z7cf allot company.db --year 2024 --dry-run\n"
                      "  z7cf allot company.db --year 2024 --period 3 --json"},
        HostTextEntry{T::examplesVerify, "例：\n  z7cf verify company.db\n  z7cf verify --connect @office.txt --json",
                      "Examples:\n  z7cf verify company.db\n  z7cf verify --connect @office.txt --json"},
        HostTextEntry{
            T::examplesExport,
            "例：\n  z7cf export company.db 2024/6/2/10 > rows.xml\n  z7cf export company.db 2024/6/2/10 --generate",
            "Examples:\n  z7cf export company.db 2024/6/2/10 > rows.xml\n  z7cf export company.db 2024/6/2/10 --generate"},
        HostTextEntry{
            T::examplesImport,
            "例：\n  z7cf import company.db 2024/7/2/12 advertising-rows.xml\n  z7cf export a.db 2024/6/2/10 | "
            "z7cf import b.db 2024/6/2/10 -",
            "Examples:\n  z7cf import company.db 2024/7/2/12 advertising-rows.xml\n  z7cf export a.db "
            "2024/6/2/10 | z7cf import b.db 2024/6/2/10 -"},
        HostTextEntry{
            T::examplesOutside,
            "例：\n  z7cf outside rows company.db sales_voucher AR-2024-0301 --year 2024\n  z7cf outside save "
            "company.db sales_voucher AR-2024-0301 --year 2024 --xml rows.xml",
            "Examples:\n  z7cf outside rows company.db sales_voucher AR-2024-0301 --year 2024\n  z7cf outside "
            "save company.db sales_voucher AR-2024-0301 --year 2024 --xml rows.xml"},
        HostTextEntry{T::examplesVoucherXml,
                      "例：\n  z7cf voucher-xml company.db bonus-voucher.xml\n  z7cf voucher-xml company.db "
                      "sales-voucher.xml --year 2024 --xml",
                      "Examples:\n  z7cf voucher-xml company.db bonus-voucher.xml\n  z7cf voucher-xml company.db "
                      "sales-voucher.xml --year 2024 --xml"},
        HostTextEntry{T::examplesSampleXml, "例：\n  z7cf sample-xml documents",
                      "Examples:\n  z7cf sample-xml documents"},
    };
}();

} // namespace z7::cashflow::host
