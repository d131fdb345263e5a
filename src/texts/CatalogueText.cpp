#include "texts/CatalogueText.h"

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/textPlaces.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace z7::cashflow::texts {

namespace {

// The library concatenates some texts without separators, so these carry the necessary blanks and marks: the labels
// of the two sums precede a side, a side precedes an amount, and the question of 00038 follows a statement. The
// captions 00058 to 00062 are written to XML attributes unescaped, so they contain none of & < > ' ".
constexpr std::array catalogue{
    ResourceText{"Z7.CW.GL.CashFlow.00001", "现金流量行的科目与所属凭证分录的科目不一致！",
                 "The account of a cash-flow row is not the account of its voucher line."},
    ResourceText{"Z7.CW.GL.CashFlow.00002", "现金流量行所属的分录在凭证中不存在！",
                 "A cash-flow row belongs to a line that the voucher does not have."},
    ResourceText{"Z7.CW.GL.CashFlow.00003", "凭证现金科目净额：", "Cash moved by the voucher: "},
    ResourceText{"Z7.CW.GL.CashFlow.00004", "借方 ", "debit "},
    ResourceText{"Z7.CW.GL.CashFlow.00005", "贷方 ", "credit "},
    ResourceText{"Z7.CW.GL.CashFlow.00006", "现金流量行净额：", "Sum of the cash-flow rows: "},
    ResourceText{"Z7.CW.GL.CashFlow.00009", "没有找到要保存的凭证，无法取得制单日期！",
                 "The voucher to be saved was not found, so its date is not known."},
    ResourceText{"Z7.CW.GL.CashFlow.00010", "没有找到现金流量数据所属的凭证，无法取得制单日期！",
                 "The voucher of the cash-flow data was not found, so its date is not known."},
    ResourceText{"Z7.CW.GL.CashFlow.00011", "没有可供检查的现金流量数据！", "There is no cash-flow data to check."},
    ResourceText{"Z7.CW.GL.CashFlow.00012", "凭证中没有现金流量科目，不需要录入现金流量。",
                 "The voucher has no cash-flow account, so it needs no cash-flow rows."},
    ResourceText{"Z7.CW.GL.CashFlow.00013", "现金流量", "Cash flow"},
    ResourceText{"Z7.CW.GL.CashFlow.00016", "现金流量的字段结构无法解析！",
                 "The field schema of cash-flow rows cannot be parsed."},
    ResourceText{"Z7.CW.GL.CashFlow.00017", "现金流量数据的 XML 无法读取！",
                 "The XML of the cash-flow rows cannot be read."},
    ResourceText{"Z7.CW.GL.CashFlow.00018", "现金流量行中没有该字段！", "A cash-flow row has no field of that name."},
    ResourceText{"Z7.CW.GL.CashFlow.00020", "现金流量项目不能为空！", "The cash-flow item is missing."},
    ResourceText{"Z7.CW.GL.CashFlow.00021", "科目不能为空！", "The account is missing."},
    ResourceText{"Z7.CW.GL.CashFlow.00022", "金额不能为空！", "The amount is missing."},
    ResourceText{"Z7.CW.GL.CashFlow.00023", "重新取数将清除现有的现金流量行，是否继续？",
                 "The present cash-flow rows will be replaced by new ones. Continue?"},
    ResourceText{"Z7.CW.GL.CashFlow.00025", "确定要删除当前行吗？", "Delete this row?"},
    ResourceText{"Z7.CW.GL.CashFlow.00032", "科目编码", "Account"},
    ResourceText{"Z7.CW.GL.CashFlow.00033", "方向", "Side"},
    ResourceText{"Z7.CW.GL.CashFlow.00034", "金额", "Amount"},
    ResourceText{"Z7.CW.GL.CashFlow.00035", "项目编码", "Item code"},
    ResourceText{"Z7.CW.GL.CashFlow.00036", "现金流量项目", "Cash-flow item"},
    ResourceText{"Z7.CW.GL.CashFlow.00037", "分录号", "Line"},
    ResourceText{"Z7.CW.GL.CashFlow.00038", "是否覆盖？", " Replace it?"},
    ResourceText{"Z7.CW.GL.CashFlow.00043", "请输入科目编码！", "Enter an account."},
    ResourceText{"Z7.CW.GL.CashFlow.00045", "凭证中没有该科目的分录！", "The voucher has no line on this account."},
    ResourceText{"Z7.CW.GL.CashFlow.00049", "请输入不为零的金额！", "Enter an amount other than zero."},
    ResourceText{"Z7.CW.GL.CashFlow.00052", "请输入现金流量项目编码！", "Enter a cash-flow item."},
    ResourceText{"Z7.CW.GL.CashFlow.00054", "该现金流量项目不存在！", "This cash-flow item does not exist."},
    ResourceText{"Z7.CW.GL.CashFlow.00056", "请输入分录号！", "Enter the number of a voucher line."},
    ResourceText{"Z7.CW.GL.CashFlow.00058", "凭证分录参照", "Voucher lines"},
    ResourceText{"Z7.CW.GL.CashFlow.00059", "分录号", "Line"},
    ResourceText{"Z7.CW.GL.CashFlow.00060", "科目编码", "Account"},
    ResourceText{"Z7.CW.GL.CashFlow.00061", "借方金额", "Debit"},
    ResourceText{"Z7.CW.GL.CashFlow.00062", "贷方金额", "Credit"},
    ResourceText{"Z7.CW.GL.CashFlow.00063", "凭证的 XML 无法读取！", "The XML of the voucher cannot be read."},
    ResourceText{"Z7.CW.GL.CashFlow.00064", "取数关系已保存。", "The template was saved."},
    ResourceText{"Z7.CW.GL.CashFlow.00065", "该科目在此方向上已有取数关系，",
                 "A template for this account and side already exists."},
    ResourceText{"Z7.CW.GL.CashFlow.00207", "重新取数", "Refill"},
    ResourceText{"Z7.CW.GL.CashFlow.00208", "另存取数关系", "Save template"},
    ResourceText{"Z7.CW.GL.CashFlow.00209", "现金流量录入修改", "Cash-flow rows of the voucher"},
    ResourceText{"Z7.CW.GL.CashFlow.Z711.00001", "凭证中没有现金流量科目，没有可查看的现金流量。",
                 "The voucher has no cash-flow account, so there are no cash-flow rows to view."},
    ResourceText{"Z7.CW.GL.CashFlow.Z790.00001", "插行", "Insert row"},
    ResourceText{"Z7.CW.APAR.ARAPMain.Add_Line", "增行", "Add row"},
    ResourceText{"Z7.CW.APAR.ARAPMain.Delete_Row", "删行", "Delete row"},
    ResourceText{"Z7.CW.GL.ZWSQL.EndItem.frmXmDlmx.Picture1.Toolbar1.Button7_7.Caption", "摘要", "Summary"},
    ResourceText{"Z7.GL.USZZPUB.00001", "平", "Even"},
    ResourceText{"Z7.GL.USZZPUB.00004", "提示", "Notice"},
    ResourceText{"Z7.GL.USZZPUB.00011", "借", "Dr"},
    ResourceText{"Z7.GL.USZZPUB.00012", "贷", "Cr"},
    ResourceText{"Z7.GL.USZZPUB.00571", "列宽已改变，是否保存{0}？", "The column widths have changed. Save them{0}?"},
    ResourceText{"Z7.GL.ZZPZ.00003", "提示", "Notice"},
    ResourceText{"Z7.GL.ZZPZ.00192", "确定", "OK"},
    ResourceText{"Z7.GL.ZZPZ.00234", "请使用非现金流量科目！", "Use an account that is not a cash-flow account."},
    ResourceText{"Z7.GL.ZZPZ.00352", "取消", "Cancel"},
    ResourceText{"Z7.GL.ZZPZ.01154", "您没有修改他人凭证的权限！",
                 "You are not allowed to change another user's voucher."},
    ResourceText{"Z7.GL.ZZPZ.02010", "请使用现金流量科目！", "Use a cash-flow account."},
};

} // namespace

std::span<const ResourceText> resourceTexts() noexcept { return catalogue; }

std::string CatalogueText::text(const std::string& key) {
    const auto* const found =
        std::find_if(catalogue.begin(), catalogue.end(), [&key](const ResourceText& text) { return text.key == key; });
    if (found == catalogue.end()) {
        throw Error("CashFlowTexts", {Reason::textKeyUnknown, {key}});
    }
    return std::string(language_ == Language::chinese ? found->chinese : found->english);
}

std::string CatalogueFormattedText::text(const std::string& key, const std::vector<Variant>& arguments) {
    std::vector<std::string> texts;
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(texts), toTextOrEmpty);
    return fillPlaces(text_.text(key), texts);
}

} // namespace z7::cashflow::texts
