#include "LedgerSession.h"

#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/Error.h"

#include <sstream>

using namespace z7::cashflow;

namespace {

using Records = std::vector<std::vector<Variant>>;
using enum shared::ColumnType;

shared::Result answer(std::vector<shared::Column> columns, const Records& records) {
    shared::Result result;
    result.rows = std::make_unique<shared::RowSet>(std::make_shared<shared::ColumnList>(std::move(columns)));
    for (const auto& record : records) {
        for (const Variant& value : record) {
            result.rows->add(value);
        }
    }
    return result;
}

// The columns and values of an insert. A text may contain a comma but no quote, because the login has the guard on.
Ledger::Row rowOf(const std::string& insert) {
    const std::size_t values = insert.find(") values(");
    std::istringstream names(insert.substr(0, values).substr(insert.find('(') + 1));
    std::istringstream texts(insert.substr(values + 9, insert.size() - values - 10));
    Ledger::Row row;
    for (std::string name, value, rest; std::getline(names, name, ',') && std::getline(texts, value, ',');) {
        while (value.starts_with("N'") && !value.ends_with('\'') && std::getline(texts, rest, ',')) {
            value += ',' + rest;
        }
        row[name] = value;
    }
    return row;
}

} // namespace

shared::Result LedgerSession::run(const std::string& statement, bool) {
    const auto is = [&statement](const auto& known) { return statement.starts_with(known.beginning()); };
    if (is(statements::accountOption)) { // bCashCode: rows belong to the lines on accounts other than cash accounts
        return answer({{"cvalue", text}, {"cdefault", text}}, {{"False", "False"}});
    }
    if (is(statements::accountingPeriod)) {
        return answer({{"iyear", int16}, {"iid", byte}}, {{2024, 3}});
    }
    if (is(statements::voucherKind)) {
        return answer({{"isignseq", int16}, {"csign", text}}, {{1, "收"}});
    }
    Records lines;
    Records cashLines;
    double cash = 0;
    for (const Ledger::Line& line : ledger_->lines) {
        lines.push_back({2024, 3, 1, 5, line.number, line.account, line.debit, line.credit, line.cash});
        if (line.cash) {
            cash += line.debit - line.credit;
            if (!is(statements::cashAccount) || statement.find("N'" + line.account + "'") != std::string::npos) {
                cashLines.push_back({line.account});
            }
        }
    }
    if (is(statements::cashLine) || is(statements::cashAccount)) {
        return answer({{"ccode", text}}, cashLines);
    }
    if (is(statements::cashSum)) {
        return answer({{"mysum", money}}, {{cash}});
    }
    if (is(statements::deleteRows)) {
        ledger_->rows.clear();
        return {};
    }
    if (is(statements::insertRow)) {
        ledger_->rows.push_back(rowOf(statement));
        return {};
    }
    if (is(statements::takeCurrencyNames)) { // the ledger has one currency
        return {};
    }
    if (statement.find(",bCashItem from gl_accvouch as TempVoucher") != std::string::npos) { // voucherLines
        return answer({{"iYear", int16},
                       {"iPeriod", byte},
                       {"iSignSeq", int16},
                       {"iNo_id", int32},
                       {"inid", int16},
                       {"ccode", text},
                       {"md", money},
                       {"mc", money},
                       {"bCashItem", boolean}},
                      lines);
    }
    throw Error(errors::badSyntax, "Ledger", "this database does not know the statement: " + statement, "42000");
}
