#pragma once

#include "host/text/HostText.h"

#include <array>

namespace z7::cashflow::host {

/// What is wrong with a voucher or an account, and the remedy.
inline constexpr std::array<HostTextEntry, 73> findingTexts = [] {
    using T = HostText;
    return std::array{
        HostTextEntry{T::verdictMatched, "检查通过：现金流量行与凭证相符。", "The rows match the voucher."},
        HostTextEntry{T::verdictNoCash, "凭证中没有现金流量科目，不需要现金流量行。",
                      "The voucher has no cash-flow account and needs no rows."},
        HostTextEntry{T::verdictNothing, "现金流量科目的分录相互抵消，不需要现金流量行。",
                      "The lines on cash-flow accounts cancel out, so the voucher needs no rows."},
        HostTextEntry{T::verdictUnmatched, "检查不通过：{0}", "The rows do not match the voucher: {0}"},
        HostTextEntry{T::verdictUnworkable, "凭证无法处理：{0}", "The voucher cannot be worked with: {0}"},
        HostTextEntry{T::refusalsFollow, "被拒绝的凭证：", "Refused vouchers:"},
        HostTextEntry{T::verifyHolds, "文件完好，各表内容一致。", "The files are sound and the tables agree."},
        HostTextEntry{T::verifyFindings, "发现 {0} 处问题，见上。", "Findings: {0}, see above."},
        HostTextEntry{T::verifyRemarks, "装入的数据有 {0} 处问题，见上；可用 z7cf verify 再次检查。",
                      "Findings in the loaded tables: {0}, see above; z7cf verify checks them again."},
        HostTextEntry{T::verifyItem, "表 {0} 中的现金流量项目“{1}”（{2} 行）不在项目表 fitemss98 中",
                      "{0}: the item \"{1}\" ({2} records) is not in the list of items (fitemss98)"},
        HostTextEntry{T::verifyAccount, "分录的科目“{0}”（{1} 年，{2} 条分录）不在科目表 code 中",
                      "the account \"{0}\" of the year {1} ({2} entry lines) is not in the chart of accounts (code)"},
        HostTextEntry{T::verifyNoPeriods, "表 ua_period 中没有会计期间", "there are no accounting periods (ua_period)"},
        HostTextEntry{
            T::verifyForeignAccount, "账套号 {0} 没有会计期间；表 ua_period 中的账套号有 {1}；请检查设置中的 account",
            "the account {0} has no accounting periods; ua_period has those of {1}; look at the account in the "
            "settings"},
        HostTextEntry{T::verifyDate, "日期 {0}（{3} 条分录）不在账套 {2} 的 {1} 年会计期间内",
                      "the date {0} ({3} entry lines) lies in no period of the year {1} of the account {2}"},
        HostTextEntry{T::verifyBalance, "凭证 {0} 借贷不平：借方 {1}，贷方 {2}",
                      "the voucher {0} does not balance: debit {1}, credit {2}"},
        HostTextEntry{T::verifyDamage, "文件 {0} 已损坏，请用备份恢复：{1}",
                      "the file {0} is damaged, restore it from a backup: {1}"},
        HostTextEntry{T::verifyMore, "另有 {0} 处同类问题", "and {0} more of this kind"},
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
        HostTextEntry{
            T::findingRowsDoubled, "有 {0} 行重复存储，去掉重复的行后与凭证相符；处理方法见管理员文档中的“重复的行”。",
            "{0} rows are stored twice; without the doubles the rows match. The administrator's page says how to "
            "remove them (\"Doubled rows\")."},
        HostTextEntry{T::findingNotStoredYet, "尚未保存现金流量行；z7cf save 会生成并保存相符的行。",
                      "No rows are stored yet; z7cf save generates and stores rows that match."},
        HostTextEntry{T::findingNewRowsMatch,
                      "重新生成的行与凭证相符：z7cf save FILE VOUCHER --regenerate 会用它们替换已存的行。",
                      "Newly generated rows match: z7cf save FILE VOUCHER --regenerate replaces the stored rows."},
        HostTextEntry{T::findingHeldElsewhere, "另一台终端正在使用该凭证，没有改动；请稍后重试。",
                      "Another desk is using the voucher, so nothing was changed; try again."},
        HostTextEntry{T::findingVoucherGone, "凭证已没有分录。", "The voucher has no lines any more."},
        HostTextEntry{T::findingDateMissing, "凭证没有制单日期，请补录 dbill_date。",
                      "The voucher has no date; enter its dbill_date."},
        HostTextEntry{
            T::findingDateOutside, "第 {0} 条分录的日期 {1} 不在 {2} 年的会计期间内；请更正日期或 ua_period 中的期间。",
            "Line {0} is dated {1}, which is in no period of the accounting year {2}; correct the date, or the "
            "periods in ua_period."},
        HostTextEntry{T::findingAmountMissing, "第 {0} 条分录：科目 {1} 的{2}金额为空，没有发生额时请录入 0。",
                      "Line {0}: {1} has no {2} amount; enter 0 if there is none."},
        HostTextEntry{
            T::findingItemUnknown, "第 {0} 条分录：{2}的现金流量项目 {1} 不存在，请更正，或将其加入 fitemss98。",
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
        HostTextEntry{T::findingChangedSince, "现金流量行已不是批次 {0} 留下的样子，因此没有恢复。",
                      "The rows are no longer what run {0} left, so they were not restored."},
        HostTextEntry{T::findingLineMissing, "凭证没有第 {0} 号分录。", "The voucher has no line {0}."},
        HostTextEntry{T::findingAmountExceedsLine, "指定的金额超过分录 {0}（科目 {1}，{2}）、为零或符号相反。",
                      "What was assigned exceeds line {0} (account {1}, {2}), is 0 or has the other sign."},
        HostTextEntry{
            T::findingRestWithoutItem, "分录 {0}（科目 {1}）余下 {2} 没有项目；请在同一命令中为其指定项目。",
            "Line {0} (account {1}): {2} are left over and have no item; name one for them in the same command."},
        HostTextEntry{
            T::findingNoLedgerVoucher,
            "{1} 年的总账（gl_accvouch）中没有外部凭证号为“{0}”的有效凭证，现金流量行无凭证可归；请先在总账中生成该凭证，"
            "或更正外部凭证号（coutno_id）或年度。",
            "The ledger has no valid voucher with the outside key {0} in {1} for the rows to belong to; post it to "
            "gl_accvouch first, or correct the key (coutno_id) or the year."},
        HostTextEntry{
            T::verifyVersion, "账套的表结构为第 {0} 版，而本程序适用第 {1} 版；请换用相应版本的程序",
            "the account's schema has version {0}, but this program works with version {1}; use the program of "
            "that version"},
        HostTextEntry{
            T::verifyNoVersion,
            "未检查表结构版本：读不到视图 z7_schema_version；账套建于记录版本之前，或该登录没有查询权限。",
            "The schema version was not checked: there is no view z7_schema_version that this login can read. The "
            "account was made before versions were kept, or the right to select is missing."},
    };
}();

} // namespace z7::cashflow::host
