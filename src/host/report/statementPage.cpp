#include "host/report/statementPage.h"

#include "host/report/statementReport.h"
#include "host/text/HostText.h"
#include "z7cashflow/support/format.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <span>

namespace z7::cashflow::host {

namespace {

using namespace workbench;

constexpr const char* style = R"(<style>
body{font:14px/1.4 "Noto Sans CJK SC","Microsoft YaHei",sans-serif;margin:2em auto;max-width:60em;color:#222}
h1{font-size:1.5em}h2{font-size:1.15em;margin-top:2em}
table{border-collapse:collapse;width:100%}
th,td{padding:.25em .6em;border-bottom:1px solid #ddd;text-align:left}
th{border-bottom:2px solid #444}.n{text-align:right;font-variant-numeric:tabular-nums;white-space:nowrap}
.group,.total{font-weight:bold}.total td{border-top:2px solid #444}.in{padding-left:1.8em}
a{color:inherit;text-decoration:none;border-bottom:1px dotted #888}.open{color:#a11}.proved{color:#161}
svg{width:100%;height:auto}details{margin:.4em 0}summary{cursor:pointer}
@media print{body{margin:0;max-width:none}a{border:0}details{break-inside:avoid}}
</style>)";

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

/// An anchor's name: letters and digits unchanged, all other bytes as hexadecimal digits.
std::string anchor(char kind, std::string_view code) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string name(1, kind);
    for (const char c : code) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        name += plain ? std::string(1, c) : std::string("-") + digits[byte >> 4U] + digits[byte & 15U];
    }
    return name;
}

class Page {
public:
    explicit Page(const StatementPage& source) : source_(source), statement_(source.statement) {}

    std::string write() {
        const std::string title =
            text(HostText::statementTitle,
                 {std::to_string(statement_.year), columnName({statement_.firstPeriod, statement_.lastPeriod})});
        out_ = "<!DOCTYPE html>\n<html lang=\"" + std::string(source_.language == Language::english ? "en" : "zh-CN") +
               "\"><head><meta charset=\"utf-8\"><title>" + escaped(title) + "</title>\n" + style +
               "</head><body>\n<h1>" + escaped(title) + "</h1>\n";
        writeProof();
        writeItems();
        writePicture();
        writeAccounts();
        writeGaps();
        writeItemDetails();
        writeAccountDetails();
        return out_ + "</body></html>\n";
    }

private:
    [[nodiscard]] std::string text(HostText id, const std::vector<std::string>& arguments = {}) const {
        return hostText(source_.language, id, arguments);
    }

    void heading(const std::vector<std::pair<std::string, bool>>& columns) {
        out_ += "<table><tr>";
        for (const auto& [name, amount] : columns) {
            out_ += (amount ? "<th class=\"n\">" : "<th>") + escaped(name) + "</th>";
        }
        out_ += "</tr>\n";
    }

    void amount(Amount value, const std::string& target = {}) {
        const std::string shown = value.text();
        out_ +=
            "<td class=\"n\">" + (target.empty() ? shown : "<a href=\"#" + target + "\">" + shown + "</a>") + "</td>";
    }

    void flow(const Flow& flow, const std::string& target) {
        amount(flow.receipts, target);
        amount(flow.payments, target);
        amount(flow.net(), target);
    }

    void writeProof() {
        const bool proven = statement_.proven();
        out_ += "<p class=\"" + std::string(proven ? "proved" : "open") + "\">" +
                escaped(text(proven ? HostText::statementProven : HostText::statementOpen,
                             {statement_.cash.flow.net().text(), statement_.total.total.net().text(),
                              statement_.difference().text(), std::to_string(statement_.gaps.size())})) +
                "</p>\n";
    }

    /// The anchor of an item's vouchers in one column of the statement; they are adjacent.
    static std::string columnAnchor(const std::string& target, std::size_t column) {
        return target + "." + std::to_string(column);
    }

    /// Writes a line of the statement. For an item, the figures of its columns link to their own vouchers.
    void itemRow(const StatementLine& line, const char* style, const std::string& target, bool isItem) {
        out_ += "<tr" + std::string(style) + "><td>" + escaped(line.code) + "</td><td>" + escaped(line.name) + "</td>";
        if (statement_.columns.size() > 1) {
            for (std::size_t i = 0; i < line.columns.size(); ++i) {
                const Flow& column = line.columns[i];
                const bool moved = !column.receipts.isZero() || !column.payments.isZero();
                amount(column.net(), moved ? (isItem ? columnAnchor(target, i) : target) : std::string());
            }
        }
        flow(line.total, target);
        out_ += "</tr>\n";
    }

    void writeItems() {
        std::vector<std::pair<std::string, bool>> columns{{text(HostText::item), false},
                                                          {text(HostText::itemName), false}};
        if (statement_.columns.size() > 1) {
            for (const StatementColumn& column : statement_.columns) {
                columns.emplace_back(columnName(column), true);
            }
        }
        for (const HostText id : {HostText::receipts, HostText::payments, HostText::net}) {
            columns.emplace_back(text(id), true);
        }
        heading(columns);
        for (const StatementLine& group : statement_.groups) {
            itemRow(group, " class=\"group\"", anchor('g', group.code), false);
            for (const StatementLine& item : statement_.items) {
                if (item.group == group.code) {
                    itemRow(item, "", anchor('i', item.code), true);
                }
            }
        }
        StatementLine total = statement_.total;
        total.name = text(HostText::total);
        itemRow(total, " class=\"total\"", "items", false);
        out_ += "</table>\n";
    }

    /// Draws bars for the receipts (up) and payments (down) of each period and a line for the cash balance,
    /// each on its own scale.
    void writePicture() {
        const auto& months = source_.months;
        constexpr double width = 720;
        constexpr double height = 240;
        constexpr double middle = height / 2;
        double most = 1;
        double mostBalance = 1;
        Amount balance = months.cash.opening;
        std::vector<double> balances;
        for (std::size_t i = 0; i < months.columns.size(); ++i) {
            balance += months.cashColumns[i].net();
            balances.push_back(balance.value());
            mostBalance = std::max(mostBalance, std::fabs(balances.back()));
            const Flow& flow = months.total.columns[i];
            most = std::max({most, std::fabs(flow.receipts.value()), std::fabs(flow.payments.value())});
        }
        const double step = width / static_cast<double>(std::max<std::size_t>(months.columns.size(), 1));
        const auto number = [](double value) { return format(value, "0.0"); };
        out_ += "<h2>" + escaped(text(HostText::statementPicture)) +
                "</h2>\n<svg viewBox=\"0 0 720 270\" role=\"img\">" +
                "<line x1=\"0\" y1=\"120\" x2=\"720\" y2=\"120\" stroke=\"#888\"/>\n";
        std::string line;
        for (std::size_t i = 0; i < months.columns.size(); ++i) {
            const Flow& flow = months.total.columns[i];
            const double left = step * static_cast<double>(i);
            const auto bar = [&](double value, double offset, const char* color, HostText what) {
                const double size = std::fabs(value) / most * (middle - 5);
                const double top = offset < 0.5 ? middle - size : middle;
                out_ += "<rect x=\"" + number(left + step * 0.2) + "\" y=\"" + number(top) + "\" width=\"" +
                        number(step * 0.6) + "\" height=\"" + number(size) + "\" fill=\"" + color + "\"><title>" +
                        columnName(months.columns[i]) + " " + escaped(text(what)) + " " +
                        (offset < 0.5 ? flow.receipts : flow.payments).text() + "</title></rect>\n";
            };
            bar(flow.receipts.value(), 0, "#3a7", HostText::receipts);
            bar(flow.payments.value(), 1, "#c64", HostText::payments);
            out_ += "<text x=\"" + number(left + step / 2) + "\" y=\"258\" font-size=\"12\" text-anchor=\"middle\">" +
                    columnName(months.columns[i]) + "</text>\n";
            line += (line.empty() ? "" : " ") + number(left + step / 2) + "," +
                    number(middle - balances[i] / mostBalance * (middle - 5));
        }
        out_ +=
            "<polyline points=\"" + line + "\" fill=\"none\" stroke=\"#247\" stroke-width=\"2\"/></svg>\n<p>" +
            escaped(text(HostText::statementPictureKey, {Amount::of(most).text(), Amount::of(mostBalance).text()})) +
            "</p>\n";
    }

    void writeAccounts() {
        out_ += "<h2>" + escaped(text(HostText::cashAccounts)) + "</h2>\n";
        heading({{text(HostText::account), false},
                 {text(HostText::accountName), false},
                 {text(HostText::opening), true},
                 {text(HostText::receipts), true},
                 {text(HostText::payments), true},
                 {text(HostText::closing), true}});
        const auto row = [this](const CashAccount& account, const std::string& name, const char* style,
                                const std::string& target) {
            out_ +=
                "<tr" + std::string(style) + "><td>" + escaped(account.code) + "</td><td>" + escaped(name) + "</td>";
            amount(account.opening);
            amount(account.flow.receipts, target);
            amount(account.flow.payments, target);
            amount(account.closing());
            out_ += "</tr>\n";
        };
        for (const CashAccount& account : statement_.accounts) {
            row(account, account.name, "", anchor('a', account.code));
        }
        row(statement_.cash, text(HostText::total), " class=\"total\"", "accounts");
        out_ += "</table>\n";
    }

    void writeGaps() {
        if (statement_.gaps.empty()) {
            return;
        }
        out_ += "<h2>" + escaped(text(HostText::vouchersOfDifference)) + "</h2>\n";
        heading({{text(HostText::voucher), false},
                 {text(HostText::cashSum), true},
                 {text(HostText::allocated), true},
                 {text(HostText::difference), true},
                 {text(HostText::message), false}});
        for (const VoucherGap& gap : statement_.gaps) {
            out_ += "<tr><td>" + escaped(source_.kinds.keyText(keyIn(statement_, gap))) + "</td>";
            amount(gap.cash);
            amount(gap.rows);
            amount(gap.difference());
            out_ += "<td>" + escaped(gapText(gap.gap, source_.language)) + "</td></tr>\n";
        }
        out_ += "</table>\n";
    }

    /// Writes the vouchers that make up the figures of the items, group by group.
    void writeItemDetails() {
        const auto ranges = rangesOf(source_.itemVouchers);
        out_ += "<div id=\"items\">\n";
        for (const StatementLine& group : statement_.groups) {
            out_ += "<div id=\"" + anchor('g', group.code) + "\">\n";
            for (const StatementLine& item : statement_.items) {
                if (item.group == group.code) {
                    writeDetails(anchor('i', item.code), text(HostText::vouchersOfItem, {item.code, item.name}), ranges,
                                 item.code);
                }
            }
            out_ += "</div>\n";
        }
        out_ += "</div>\n";
    }

    void writeAccountDetails() {
        const auto ranges = rangesOf(source_.accountVouchers);
        out_ += "<div id=\"accounts\">\n";
        for (const CashAccount& account : statement_.accounts) {
            writeDetails(anchor('a', account.code), text(HostText::vouchersOfAccount, {account.code, account.name}),
                         ranges, account.code);
        }
        out_ += "</div>\n";
    }

    using Vouchers = std::span<const VoucherFlow>;

    /// The vouchers of each code; they are adjacent in the list.
    static std::map<std::string, Vouchers> rangesOf(const std::vector<VoucherFlow>& flows) {
        std::map<std::string, Vouchers> ranges;
        for (std::size_t first = 0; first < flows.size();) {
            std::size_t end = first + 1;
            while (end < flows.size() && flows[end].code == flows[first].code) {
                ++end;
            }
            ranges.emplace(flows[first].code, Vouchers(flows).subspan(first, end - first));
            first = end;
        }
        return ranges;
    }

    [[nodiscard]] std::size_t columnOf(std::uint8_t period) const {
        std::size_t column = 0;
        while (column + 1 < statement_.columns.size() && period > statement_.columns[column].last) {
            ++column;
        }
        return column;
    }

    void writeDetails(const std::string& target, const std::string& title,
                      const std::map<std::string, Vouchers>& ranges, const std::string& code) {
        out_ += "<details open id=\"" + target + "\"><summary>" + escaped(title) + "</summary>\n";
        heading({{text(HostText::voucher), false},
                 {text(HostText::receipts), true},
                 {text(HostText::payments), true},
                 {text(HostText::net), true}});
        const auto found = ranges.find(code);
        std::size_t columns = 0; // columns whose first voucher has been written
        for (const VoucherFlow& voucher : found == ranges.end() ? Vouchers() : found->second) {
            const std::size_t column = columnOf(voucher.period);
            out_ += column < columns ? "<tr>" : "<tr id=\"" + columnAnchor(target, column) + "\">";
            columns = column + 1;
            out_ += "<td>" + escaped(source_.kinds.keyText(keyIn(statement_, voucher))) + "</td>";
            flow(voucher.flow, "");
            out_ += "</tr>\n";
        }
        out_ += "</table></details>\n";
    }

    const StatementPage& source_;
    const CashFlowStatement& statement_;
    std::string out_;
};

} // namespace

std::string statementHtml(const StatementPage& page) { return Page(page).write(); }

} // namespace z7::cashflow::host
