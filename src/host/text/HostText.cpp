#include "host/text/HostText.h"

#include "z7cashflow/support/textPlaces.h"

#include <array>

namespace z7::cashflow::host {

namespace {

using T = HostText;

// The size is written out because compilers deduce no more than 256 elements.
constexpr std::array<HostTextEntry, static_cast<std::size_t>(T::count)> texts{
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

    HostTextEntry{T::verdictMatched, "检查通过：现金流量行与凭证相符。", "The rows match the voucher."},
    HostTextEntry{T::verdictNoCash, "凭证中没有现金流量科目，不需要现金流量行。",
                  "The voucher has no cash-flow account and needs no rows."},
    HostTextEntry{T::verdictNothing, "现金流量科目的分录相互抵消，不需要现金流量行。",
                  "The lines on cash-flow accounts cancel out, so the voucher needs no rows."},
    HostTextEntry{T::verdictUnmatched, "检查不通过：{0}", "The rows do not match the voucher: {0}"},
    HostTextEntry{T::verdictUnworkable, "凭证无法处理：{0}", "The voucher cannot be worked with: {0}"},
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
    HostTextEntry{T::refusalsFollow, "被拒绝的凭证：", "Refused vouchers:"},
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
    HostTextEntry{T::verifyHolds, "文件完好，各表内容一致。", "The files are sound and the tables agree."},
    HostTextEntry{T::verifyFindings, "发现 {0} 处问题，见上。", "Findings: {0}, see above."},
    HostTextEntry{T::verifyRemarks, "装入的数据有 {0} 处问题，见上；可用 z7cf verify 再次检查。",
                  "Findings in the loaded tables: {0}, see above; z7cf verify checks them again."},
    HostTextEntry{T::verifyItem, "表 {0} 中的现金流量项目“{1}”（{2} 行）不在项目表 fitemss98 中",
                  "{0}: the item \"{1}\" ({2} records) is not in the list of items (fitemss98)"},
    HostTextEntry{T::verifyAccount, "分录的科目“{0}”（{1} 年，{2} 条分录）不在科目表 code 中",
                  "the account \"{0}\" of the year {1} ({2} entry lines) is not in the chart of accounts (code)"},
    HostTextEntry{T::verifyNoPeriods, "表 ua_period 中没有会计期间", "there are no accounting periods (ua_period)"},
    HostTextEntry{T::verifyForeignAccount,
                  "账套号 {0} 没有会计期间；表 ua_period 中的账套号有 {1}；请检查设置中的 account",
                  "the account {0} has no accounting periods; ua_period has those of {1}; look at the account in the "
                  "settings"},
    HostTextEntry{T::verifyDate, "日期 {0}（{3} 条分录）不在账套 {2} 的 {1} 年会计期间内",
                  "the date {0} ({3} entry lines) lies in no period of the year {1} of the account {2}"},
    HostTextEntry{T::verifyBalance, "凭证 {0} 借贷不平：借方 {1}，贷方 {2}",
                  "the voucher {0} does not balance: debit {1}, credit {2}"},
    HostTextEntry{T::verifyDamage, "文件 {0} 已损坏，请用备份恢复：{1}",
                  "the file {0} is damaged, restore it from a backup: {1}"},
    HostTextEntry{T::verifyMore, "另有 {0} 处同类问题", "and {0} more of this kind"},
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

    HostTextEntry{T::findingAmountWithSide, "{1} {0}", "{0} {1}"},
    HostTextEntry{T::findingSums, "凭证现金净额为{0}，现金流量行合计为{1}，{2}。",
                  "The voucher moves {0} in cash, its rows {1}: {2}."},
    HostTextEntry{T::findingSumsShort, "{0} 未分配", "{0} is not allocated"},
    HostTextEntry{T::findingSumsOver, "多分配了{0}", "{0} too much is allocated"},
    HostTextEntry{
        T::findingNoTemplate,
        "第 {0} 条分录：科目 {1} {2} 没有取数关系，请在 GL_CashItemDataSource 中增加，或在分录上录入现金流量项目。",
        "Line {0}: {1} {2} has no template: add one to GL_CashItemDataSource, or enter the item on the line."},
    HostTextEntry{T::findingLineWithoutRow, "第 {0} 条分录：科目 {1} {2} 没有现金流量行。",
                  "Line {0}: {1} {2} has no row."},
    HostTextEntry{T::findingAccountNotInYear, "第 {0} 条分录：本年度科目表中没有科目 {1}，该分录不计入。",
                  "Line {0}: account {1} is not in the chart of accounts of the year, so the line does not count."},
    HostTextEntry{T::findingAccountClosed, "第 {0} 条分录：科目 {1} 已封存，该分录不计入。",
                  "Line {0}: account {1} is closed, so the line does not count."},
    HostTextEntry{T::findingAccountNotEnd, "第 {0} 条分录：科目 {1} 不是末级科目，该分录不计入。",
                  "Line {0}: account {1} is not an end-level account, so the line does not count."},
    HostTextEntry{T::findingRowWithoutLine, "现金流量行属于第 {0} 条分录（科目 {1}），而凭证中没有该分录。",
                  "A row belongs to line {0} ({1}), which the voucher does not have."},
    HostTextEntry{T::findingRowOnOther, "第 {0} 条分录的现金流量行记在科目 {1}，而分录的科目是 {2}。",
                  "The row of line {0} is on account {1}, but the line is on {2}."},
    HostTextEntry{T::findingRowsDoubled,
                  "有 {0} 行重复存储，去掉重复的行后与凭证相符；处理方法见管理员文档中的“重复的行”。",
                  "{0} rows are stored twice; without the doubles the rows match. The administrator's page says how to "
                  "remove them (\"Doubled rows\")."},
    HostTextEntry{T::findingNotStoredYet, "尚未保存现金流量行；z7cf save 会生成并保存相符的行。",
                  "No rows are stored yet; z7cf save generates and stores rows that match."},
    HostTextEntry{T::findingNewRowsMatch,
                  "重新生成的行与凭证相符：z7cf export FILE VOUCHER --generate | z7cf import FILE VOUCHER - "
                  "会用它们替换已存的行。",
                  "Newly generated rows match: z7cf export FILE VOUCHER --generate | z7cf import FILE VOUCHER - "
                  "replaces the stored rows."},
    HostTextEntry{T::findingHeldElsewhere, "另一台终端正在使用该凭证，没有改动；请稍后重试。",
                  "Another desk is using the voucher, so nothing was changed; try again."},
    HostTextEntry{T::findingVoucherGone, "凭证已没有分录。", "The voucher has no lines any more."},
    HostTextEntry{T::findingDateMissing, "凭证没有制单日期，请补录 dbill_date。",
                  "The voucher has no date; enter its dbill_date."},
    HostTextEntry{T::findingDateOutside,
                  "第 {0} 条分录的日期 {1} 不在 {2} 年的会计期间内；请更正日期或 ua_period 中的期间。",
                  "Line {0} is dated {1}, which is in no period of the accounting year {2}; correct the date, or the "
                  "periods in ua_period."},
    HostTextEntry{T::findingAmountMissing, "第 {0} 条分录：科目 {1} 的{2}金额为空，没有发生额时请录入 0。",
                  "Line {0}: {1} has no {2} amount; enter 0 if there is none."},
    HostTextEntry{T::findingItemUnknown, "第 {0} 条分录：{2}的现金流量项目 {1} 不存在，请更正，或将其加入 fitemss98。",
                  "Line {0}: there is no cash-flow item {1}, which comes from {2}; correct it there, or add the item "
                  "to fitemss98."},
    HostTextEntry{T::findingItemOfRow, "已存的行", "the stored row"},
    HostTextEntry{T::findingItemOfLine, "分录（ccashitem_id）", "the line (ccashitem_id)"},
    HostTextEntry{T::findingItemAuxiliary, "分录辅助核算", "the line's auxiliary item"},
    HostTextEntry{T::findingItemOfTemplate, "科目 {0} {1}取数关系", "the template of {0} {1}"},
    HostTextEntry{T::findingItemOfDocument, "所导入文件", "the document"},
    HostTextEntry{T::findingAccountUnknown, "第 {0} 条分录：本年度科目表中没有现金流量行的科目 {1}。",
                  "Line {0}: the row's account {1} is not in the chart of accounts of the year."},
    HostTextEntry{T::findingRowsNotFound, "保存后只读到 {0} 行，与所保存的不一致，已撤销。",
                  "Reading back found {0} rows, which are not those that were stored; the save was undone."},
    HostTextEntry{T::findingNoRowsDocument, "该文件不是现金流量行的文件：根元素应为 root，其中应有 rows。",
                  "The document does not hold cash-flow rows: its root must be \"root\" with an element \"rows\"."},
    HostTextEntry{T::findingOtherVoucher, "该文件是凭证 {0} 的行；加 --force 可保存到本凭证。",
                  "The document holds rows of voucher {0}; --force stores them under this one."},

    HostTextEntry{T::lackVoucherGone, "总账中没有分录", "no lines in the ledger"},
    HostTextEntry{T::lackDateMissing, "没有制单日期", "no date"},
    HostTextEntry{T::lackDateOutside, "日期不在会计年度内", "dated outside the year"},
    HostTextEntry{T::lackAmount, "金额为空", "no amount"},
    HostTextEntry{T::lackItem, "现金流量项目 {0} 不存在", "no cash-flow item {0}"},
    HostTextEntry{T::lackAccount, "现金流量行的科目不存在", "row on an account that is not there"},
    HostTextEntry{T::lackReadable, "保存的行读不到", "stored rows that are not found"},
    HostTextEntry{T::lackSums, "现金流量行合计与凭证不符", "sums differ"},
    HostTextEntry{T::lackTemplate, "没有取数关系", "no template"},
    HostTextEntry{T::lackRow, "没有现金流量行", "no row"},
    HostTextEntry{T::lackAccountNotInYear, "本年度科目表中没有该科目", "not in the chart of the year"},
    HostTextEntry{T::lackAccountClosed, "科目已封存", "account closed"},
    HostTextEntry{T::lackAccountNotEnd, "不是末级科目", "not an end-level account"},
    HostTextEntry{T::lackRowWithoutLine, "现金流量行没有对应的分录", "row without a line"},
    HostTextEntry{T::lackRowOnOther, "现金流量行记在其他科目", "row on another account"},
    HostTextEntry{T::lackRowsDoubled, "现金流量行重复存储", "rows stored twice"},
    HostTextEntry{T::lackNotStored, "尚未保存（z7cf allot 可生成）", "not stored yet (z7cf allot stores rows)"},
    HostTextEntry{T::lackNewRowsMatch, "重新生成的行相符", "newly generated rows would match"},
    HostTextEntry{T::lackHeldElsewhere, "另一台终端正在使用", "in use on another desk"},
    HostTextEntry{T::lackError, "错误 {0}", "error {0}"},

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
    HostTextEntry{T::helpOpen, "只列未分配或不相符的凭证，及其原因和处理办法",
                  "Only vouchers that are not allocated or do not match, with the reason and the remedy"},
    HostTextEntry{T::helpGroup, "与 --open 同用：按原因、科目和方向汇总", "With --open: by reason, account and side"},
    HostTextEntry{T::helpLines, "与 --open 同用：列出待分配的分录和建议项目",
                  "With --open: the lines that lack a row, with a proposed item"},
    HostTextEntry{T::helpWhy, "显示每行的现金流量项目从何而来", "Show where the item of each row comes from"},
    HostTextEntry{T::helpVoucher, "显示一张凭证的分录及各分录的现金流量行",
                  "Show the lines of a voucher with their rows"},
    HostTextEntry{T::helpItems, "列出现金流量项目", "List the cash-flow items"},
    HostTextEntry{T::helpAccounts, "列出某年度的会计科目", "List the accounts of a year"},
    HostTextEntry{T::helpTemplates, "列出某年度的取数关系：科目、方向和项目",
                  "List the templates of a year: account, side and item"},
    HostTextEntry{T::helpKinds, "列出凭证类别及其类别字", "List the voucher kinds with their signs"},
    HostTextEntry{T::examplesVoucher,
                  "例：\n  z7cf voucher company.db 2024/6/2/10\n  z7cf voucher company.db 2024/6/付/10 --json",
                  "Examples:\n  z7cf voucher company.db 2024/6/2/10\n  z7cf voucher company.db 2024/6/2/10 --json"},
    HostTextEntry{T::examplesItems, "例：\n  z7cf items company.db\n  z7cf items company.db --csv -o items.csv",
                  "Examples:\n  z7cf items company.db\n  z7cf items company.db --csv -o items.csv"},
    HostTextEntry{T::examplesAccounts,
                  "例：\n  z7cf accounts company.db --year 2024\n  z7cf accounts company.db --year 2024 --json",
                  "Examples:\n  z7cf accounts company.db --year 2024\n  z7cf accounts company.db --year 2024 --json"},
    HostTextEntry{T::examplesTemplates,
                  "例：\n  z7cf templates company.db --year 2024\n  z7cf templates company.db --year 2024 --csv",
                  "Examples:\n  z7cf templates company.db --year 2024\n  z7cf templates company.db --year 2024 --csv"},
    HostTextEntry{T::examplesKinds, "例：\n  z7cf kinds company.db", "Examples:\n  z7cf kinds company.db"},

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
    HostTextEntry{T::statementTitle, "{0} 年第 {1} 期现金流量表", "Cash-flow statement {0}, periods {1}"},
    HostTextEntry{T::statementProven, "现金科目净变动 {0}，现金流量表净额 {1}：相符。",
                  "Net change of the cash accounts {0}, net of the statement {1}: they match."},
    HostTextEntry{T::statementOpen, "现金科目净变动 {0}，现金流量表净额 {1}，差额 {2}，涉及凭证 {3} 张。",
                  "Net change of the cash accounts {0}, net of the statement {1}, difference {2}, in {3} vouchers."},
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
    HostTextEntry{T::helpPeriods, "只限此会计期间，或从一期至另一期（如 1-3）",
                  "This accounting period only, or a range such as 1-3"},
    HostTextEntry{T::openingNotCash, "科目 {0} 不是 {1} 年的末级、未封存的现金科目，不能指定期初余额",
                  "Account {0} is not an open, end-level cash account of {1}, so it has no opening balance"},
    HostTextEntry{T::helpStatement, "编制现金流量表，并与现金科目核对",
                  "Draw up the cash-flow statement and prove it against the cash accounts"},
    HostTextEntry{T::helpBy, "每月、每季或全年一栏：month、quarter、year",
                  "A column for each month, quarter or the year"},
    HostTextEntry{T::helpByCurrency, "另按币种列示原币金额", "Show each item in its currencies as well"},
    HostTextEntry{T::helpOpening, "账套启用前的期初余额，写作 科目=金额；可写多次",
                  "Balance before the ledger's first voucher, as ACCOUNT=AMOUNT; may be repeated"},
    HostTextEntry{T::helpHtml, "另存为一个可打印的网页文件", "Write a page that prints well to this new file as well"},
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
    HostTextEntry{T::findingChangedSince, "现金流量行已不是批次 {0} 留下的样子，因此没有恢复。",
                  "The rows are no longer what run {0} left, so they were not restored."},
    HostTextEntry{T::helpLog, "列出改动过现金流量行的批次，或一个批次改动的行",
                  "List the runs that changed rows, or the rows that one run changed"},
    HostTextEntry{T::helpUndo, "恢复一个批次之前的现金流量行", "Restore the rows from before a run"},
    HostTextEntry{T::helpRun, "批次号，例如 3", "Number of the run, such as 3"},
    HostTextEntry{T::helpUndoKeys, "只恢复这些凭证", "Restore these vouchers only"},
    HostTextEntry{T::helpUndoDryRun, "只显示将要恢复的内容：全部回滚",
                  "Only show what would be restored: roll everything back"},
    HostTextEntry{T::examplesLog,
                  "例：\n"
                  "  z7cf log company.db\n"
                  "  z7cf log company.db 3 --csv -o run3.csv",
                  "Examples:\n"
                  "  z7cf log company.db\n"
                  "  z7cf log company.db 3 --csv -o run3.csv"},
    HostTextEntry{T::examplesUndo,
                  "例：\n"
                  "  z7cf undo company.db 3 --dry-run\n"
                  "  z7cf undo company.db 3 2024/1/2/15",
                  "Examples:\n"
                  "  z7cf undo company.db 3 --dry-run\n"
                  "  z7cf undo company.db 3 2024/1/2/15"},

    HostTextEntry{T::rowCount, "{0} {1}", "{0} {1}"},
    HostTextEntry{T::colon, "：", ": "},
    HostTextEntry{T::itemMissing, "没有现金流量项目“{0}”", "There is no cash-flow item \"{0}\""},
    HostTextEntry{T::itemNear, "没有现金流量项目“{0}”；是否指 {1}？",
                  "There is no cash-flow item \"{0}\"; was one of these meant: {1}?"},
    HostTextEntry{T::restStays, "凭证 {0} 分录 {1}：余下的 {2} 留在项目 {3} {4}。",
                  "Voucher {0}, line {1}: the remaining {2} stay on item {3} {4}."},
    HostTextEntry{T::nothingToChange, "没有需要改动的凭证。", "There is no voucher to change."},
    HostTextEntry{T::findingLineMissing, "凭证没有第 {0} 号分录。", "The voucher has no line {0}."},
    HostTextEntry{T::findingAmountExceedsLine, "指定的金额超过分录 {0}（科目 {1}，{2}）、为零或符号相反。",
                  "What was assigned exceeds line {0} (account {1}, {2}), is 0 or has the other sign."},
    HostTextEntry{T::findingRestWithoutItem, "分录 {0}（科目 {1}）余下 {2} 没有项目；请在同一命令中为其指定项目。",
                  "Line {0} (account {1}): {2} are left over and have no item; name one for them in the same command."},
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
    HostTextEntry{T::helpShowChanges, "只逐行显示变动：全部回滚",
                  "Only show the changes, row by row: roll everything back"},
    HostTextEntry{T::helpAssign, "把分录的金额指定到现金流量项目", "Put the amounts of lines on cash-flow items"},
    HostTextEntry{T::helpAssignLine, "分录号，例如 2", "Number of the line, such as 2"},
    HostTextEntry{T::helpAssignItems, "项目（编码或名称）及金额；可重复，最后一个可以不写金额",
                  "Item, by code or name, and its amount; may be repeated, and the last amount left out"},
    HostTextEntry{T::helpAssignFrom, "填好项目的分录 CSV 文件，- 为标准输入",
                  "CSV file of lines with their items filled in; - for standard input"},
    HostTextEntry{T::helpClear, "删除一张凭证的全部现金流量行", "Remove all rows of a voucher"},
    HostTextEntry{T::helpReassign, "把一个项目的现金流量行改到另一个项目", "Move the rows of one item to another"},
    HostTextEntry{T::helpReassignFrom, "原项目（编码或名称）", "The item that the rows have, by code or name"},
    HostTextEntry{T::helpReassignTo, "新项目（编码或名称）", "The item that they get, by code or name"},
    HostTextEntry{T::helpReassignAccount, "只改这个科目的行", "Only the rows on this account"},
    HostTextEntry{T::helpRegenerateRows, "重新生成，替换已存的行", "Generate the rows anew in place of stored ones"},
    HostTextEntry{T::helpKeepItems, "重新生成时，没有找到项目的分录保留已存的项目",
                  "Lines for which that finds no item keep the stored one"},
    HostTextEntry{T::examplesAssign,
                  "例：\n"
                  "  z7cf assign company.db 2024/1/2/15 2 0102\n"
                  "  z7cf assign company.db 2024/1/2/15 2 0101 300.00 0102\n"
                  "  z7cf assign company.db --from open.csv --dry-run",
                  "Examples:\n"
                  "  z7cf assign company.db 2024/1/2/15 2 0102\n"
                  "  z7cf assign company.db 2024/1/2/15 2 0101 300.00 0102\n"
                  "  z7cf assign company.db --from open.csv --dry-run"},
    HostTextEntry{T::examplesClear,
                  "例：\n"
                  "  z7cf clear company.db 2024/1/2/15",
                  "Examples:\n"
                  "  z7cf clear company.db 2024/1/2/15"},
    HostTextEntry{T::examplesReassign,
                  "例：\n"
                  "  z7cf reassign company.db --year 2024 --from 0111 --to 0114 --account 2202 --dry-run",
                  "Examples:\n"
                  "  z7cf reassign company.db --year 2024 --from 0111 --to 0114 --account 2202 --dry-run"},

    HostTextEntry{T::editNothingSaved, "没有保存任何内容。", "Nothing was saved."},
    HostTextEntry{T::widthsForgotten, "已清除保存的列宽：{0} 条。", "Stored column widths removed: {0}."},
    HostTextEntry{T::noWindowBuilt,
                  "本程序编译时没有包含窗口，无法打开编辑窗口。请安装 libwxgtk3.2-dev 和 libgtk-3-dev 后重新编译。",
                  "This z7cf was built without windows. Install libwxgtk3.2-dev and libgtk-3-dev and build it again."},
    HostTextEntry{T::noScreen,
                  "没有可用的图形界面，无法打开编辑窗口。请在桌面会话中运行，并检查 DISPLAY 或 WAYLAND_DISPLAY。",
                  "There is no screen to show the dialog on. Run z7cf edit in a desktop session, where DISPLAY or "
                  "WAYLAND_DISPLAY names the screen."},
    HostTextEntry{T::helpEdit, "在窗口中编辑一张凭证的现金流量行，确定后保存",
                  "Edit the rows of a voucher in a window and save them after OK"},
    HostTextEntry{T::helpEditOutside, "编辑其他子系统的凭证：所在的表和它的外部凭证号",
                  "Edit a voucher of another subsystem: its table and its outside key"},
    HostTextEntry{T::helpEditYear, "外部凭证的会计年度；默认为其日期所在年度",
                  "Accounting year of an outside voucher; by default the year of its date"},
    HostTextEntry{T::helpReadOnly, "只能查看，不能修改", "Look at the rows without changing them"},
    HostTextEntry{T::helpRegenerate, "忽略已存的行，重新从凭证取数",
                  "Begin with rows generated from the voucher instead of the stored ones"},
    HostTextEntry{T::helpWidths, "编辑窗口保存的列宽", "Column widths stored by the edit window"},
    HostTextEntry{T::helpReset, "清除所有语言的列宽，恢复默认", "Remove the stored widths of all languages"},
    HostTextEntry{T::examplesEdit,
                  "例：\n"
                  "  z7cf edit company.db 2024/1/1/7\n"
                  "  z7cf edit company.db 2024/1/1/7 --read-only\n"
                  "  z7cf edit company.db --outside sales_voucher AR-2024-0301",
                  "Examples:\n"
                  "  z7cf edit company.db 2024/1/1/7\n"
                  "  z7cf edit company.db 2024/1/1/7 --read-only\n"
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
                  "Allots the cash movements of ledger vouchers to cash-flow items."},
    HostTextEntry{T::helpInit, "建立账套数据库：空的、示例公司的或来自 CSV 文件的",
                  "Make an account's database: empty, with the sample company, or from CSV files"},
    HostTextEntry{T::helpVouchers, "列出某年度或期间的凭证及其现金流量状况",
                  "List the vouchers of a year or period and how their rows stand"},
    HostTextEntry{T::helpRows, "显示一张凭证已存的或新生成的现金流量行及检查结果",
                  "Show the stored or freshly generated rows of a voucher and the verdict on them"},
    HostTextEntry{T::helpCheck, "检查一张凭证已存的现金流量行是否与凭证相符",
                  "Check whether the stored rows of a voucher match it"},
    HostTextEntry{T::helpSave, "保存一张凭证的现金流量行；没有已存的行就先生成",
                  "Save the rows of a voucher, generating them where none are stored"},
    HostTextEntry{T::helpAllot, "为某年度或期间的每张凭证生成、检查并保存现金流量行",
                  "Generate, check and save the rows of every voucher of a year or period"},
    HostTextEntry{T::helpVerify, "检查账套的文件是否完好，各表的内容是否一致",
                  "Check whether an account's files are sound and its tables agree"},
    HostTextEntry{T::helpExport, "把一张凭证的现金流量行写成 XML", "Write the rows of a voucher as XML"},
    HostTextEntry{T::helpImport, "用 XML 中的行替换一张凭证的现金流量行",
                  "Store the rows of an XML document in place of a voucher's own"},
    HostTextEntry{T::helpOutside, "其他子系统凭证的现金流量行：显示、生成、检查、保存",
                  "The rows of a voucher of another subsystem: show, generate, check, save"},
    HostTextEntry{T::helpVoucherXml, "显示以 XML 交来的凭证的现金流量行",
                  "Show the rows of a voucher that is handed over as XML"},
    HostTextEntry{T::helpSampleXml, "写出示例公司的 XML 文件", "Write the XML documents of the sample company"},
    HostTextEntry{T::helpLang, "输出的语言：zh-CN 或 en", "Language of the output: zh-CN or en"},
    HostTextEntry{T::helpQuiet, "不显示提示消息和进度", "No notices and no progress"},
    HostTextEntry{T::helpJson, "输出 JSON，供程序读取", "Write JSON for machines"},
    HostTextEntry{T::helpSettings, "设置文件（TOML）；默认为 ~/.config/z7cf/settings.toml",
                  "Settings file (TOML); by default ~/.config/z7cf/settings.toml"},
    HostTextEntry{T::helpConnect, "连接串，代替 FILE；“@文件”表示从文件读取；也可用环境变量 Z7CF_CONNECT",
                  "Connection string in place of FILE; @FILE reads it from a file. Without it, that of the variable "
                  "Z7CF_CONNECT"},
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
    HostTextEntry{T::helpDryRun, "只试运行：每张凭证都回滚", "Try only: roll every voucher back"},
    HostTextEntry{T::helpAll, "列出全部被拒绝的凭证，而不只是前 20 张",
                  "List all refused vouchers, not only the first 20"},
    HostTextEntry{T::helpSample, "装入随程序提供的示例公司",
                  "Fill it with the sample company that comes with the program"},
    HostTextEntry{T::helpFrom, "装入此文件夹中以表名命名的 CSV 文件",
                  "Fill it from the CSV files of this folder, which are named after the tables"},
    HostTextEntry{T::helpSet, "账套选项，可重复：bCashCode=true", "Account option, may be repeated: bCashCode=true"},
    HostTextEntry{T::helpRowsXml, "行的 XML 文件；- 为标准输入", "XML document with rows; - is standard input"},
    HostTextEntry{T::helpForce, "即使文件属于另一张凭证也保存", "Store the rows even if they are another voucher's"},
    HostTextEntry{T::helpAction, "rows、generate、check 或 save", "rows, generate, check or save"},
    HostTextEntry{T::helpTable, "存放凭证分录的表", "Table that holds the voucher's lines"},
    HostTextEntry{T::helpOutKey, "凭证在其子系统中的键（coutno_id）",
                  "Key of the voucher in its subsystem (coutno_id)"},
    HostTextEntry{T::helpOutsideXml, "rows、generate：写入此文件；save：从此文件读取行；- 为标准输出或输入",
                  "rows, generate: write the document there; save: take the rows from there; - is standard output or "
                  "input"},
    HostTextEntry{T::helpVoucherFile, "凭证的 XML 文件；- 为标准输入",
                  "XML document of the voucher; - is standard input"},
    HostTextEntry{T::helpXmlYear, "会计年度；默认为 dbill_date 的年份",
                  "Accounting year; by default that of dbill_date"},
    HostTextEntry{T::helpCreate, "由凭证分录生成行，而不是已存的行",
                  "Rows generated from the lines instead of the stored ones"},
    HostTextEntry{T::helpAsXml, "输出行的 XML", "Write the rows as XML"},
    HostTextEntry{T::helpFolder, "文件夹", "Folder"},
    HostTextEntry{T::examplesProgram,
                  "例：\n"
                  "  z7cf init company.db --sample\n"
                  "  z7cf allot company.db --year 2024\n"
                  "  z7cf help allot\n"
                  "退出码：0 完成，1 有凭证被拒绝或不存在，2 用法错误，3 数据库或输出错误，130/143 被中断",
                  "Examples:\n"
                  "  z7cf init company.db --sample\n"
                  "  z7cf allot company.db --year 2024\n"
                  "  z7cf help allot\n"
                  "Exit codes: 0 done, 1 some voucher refused or not there, 2 usage, 3 database or output, 130/143 "
                  "interrupted"},
    HostTextEntry{
        T::examplesInit,
        "用 --connect 时，账套建在连接串中 Database= 指明的数据库里；该数据库和 zqsystem "
        "不存在时先建立，已有账套的表则拒绝。其余全部在一个事务中完成；出错或中断不留下任何东西。\n"
        "例：\n"
        "  z7cf init company.db --sample --set bCashCode=true\n"
        "  z7cf init journal.db --from ./tables\n"
        "  z7cf init --connect @office.txt --from ./tables",
        "With --connect the account goes into the database that the string names with Database=. That database "
        "and zqsystem are made if they are not there; one that holds an account's tables is refused. All else "
        "is one transaction, and a failure or an interruption leaves nothing behind.\n"
        "Examples:\n"
        "  z7cf init company.db --sample --set bCashCode=true\n"
        "  z7cf init journal.db --from ./tables\n"
        "  z7cf init --connect @office.txt --from ./tables"},
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
                  "  z7cf rows company.db 2024/1/2/15\n"
                  "  z7cf rows company.db 2024/1/2/15 --generate --why",
                  "Examples:\n"
                  "  z7cf rows company.db 2024/1/2/15\n"
                  "  z7cf rows company.db 2024/1/2/15 --generate --why"},
    HostTextEntry{T::examplesCheck,
                  "例：\n"
                  "  z7cf check company.db 2024/1/2/15",
                  "Examples:\n"
                  "  z7cf check company.db 2024/1/2/15"},
    HostTextEntry{T::examplesSave,
                  "例：\n"
                  "  z7cf save company.db 2024/1/2/15",
                  "Examples:\n"
                  "  z7cf save company.db 2024/1/2/15"},
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
        "例：\n  z7cf export company.db 2024/6/2/10 > rows.xml\n  z7cf export company.db 2024/6/2/11 --generate",
        "Examples:\n  z7cf export company.db 2024/6/2/10 > rows.xml\n  z7cf export company.db 2024/6/2/11 --generate"},
    HostTextEntry{T::examplesImport,
                  "例：\n  z7cf import company.db 2024/7/2/12 advertising-rows.xml\n  z7cf export a.db 2024/6/2/10 | "
                  "z7cf import b.db 2024/6/2/10 -",
                  "Examples:\n  z7cf import company.db 2024/7/2/12 advertising-rows.xml\n  z7cf export a.db "
                  "2024/6/2/10 | z7cf import b.db 2024/6/2/10 -"},
    HostTextEntry{T::examplesOutside,
                  "例：\n  z7cf outside rows company.db sales_voucher AR-2024-0301 --year 2024\n  z7cf outside save "
                  "company.db sales_voucher AR-2024-0301 --year 2024 --xml rows.xml",
                  "Examples:\n  z7cf outside rows company.db sales_voucher AR-2024-0301 --year 2024\n  z7cf outside "
                  "save company.db sales_voucher AR-2024-0301 --year 2024 --xml rows.xml"},
    HostTextEntry{T::examplesVoucherXml,
                  "例：\n  z7cf voucher-xml company.db bonus-voucher.xml\n  z7cf voucher-xml company.db "
                  "sales-voucher.xml --year 2024 --xml",
                  "Examples:\n  z7cf voucher-xml company.db bonus-voucher.xml\n  z7cf voucher-xml company.db "
                  "sales-voucher.xml --year 2024 --xml"},
    HostTextEntry{T::examplesSampleXml, "例：\n  z7cf sample-xml documents", "Examples:\n  z7cf sample-xml documents"},
    HostTextEntry{
        T::findingNoLedgerVoucher,
        "{1} 年的总账（gl_accvouch）中没有外部凭证号为“{0}”的有效凭证，现金流量行无凭证可归；请先在总账中生成该凭证，"
        "或更正外部凭证号（coutno_id）或年度。",
        "The ledger has no valid voucher with the outside key {0} in {1} for the rows to belong to; post it to "
        "gl_accvouch first, or correct the key (coutno_id) or the year."},
    HostTextEntry{T::verifyVersion, "账套的表结构为第 {0} 版，而本程序适用第 {1} 版；请换用相应版本的程序",
                  "the account's schema has version {0}, but this program works with version {1}; use the program of "
                  "that version"},
    HostTextEntry{
        T::verifyNoVersion,
        "未检查表结构版本：读不到视图 z7_schema_version；账套建于记录版本之前，或该登录没有查询权限。",
        "The schema version was not checked: there is no view z7_schema_version that this login can read. The "
        "account was made before versions were kept, or the right to select is missing."},
};

static_assert([] {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (static_cast<std::size_t>(texts[i].id) != i) {
            return false;
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
