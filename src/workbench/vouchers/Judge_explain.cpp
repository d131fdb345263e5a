#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/databaseFailure.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace z7::cashflow::workbench {

namespace {

using Kind = Finding::Kind;

constexpr double tolerance = 0.001; // that of the library
constexpr const char* cashItemClass = "98";

std::string textOf(const CashFlow& row, const char* field) {
    const auto& fields = row.Fields();
    return std::find(fields.begin(), fields.end(), field) == fields.end() ? std::string()
                                                                          : toTextOrEmpty(row.Item(field));
}

double amountOf(const CashFlow& row, const char* field) { return readNumber(textOf(row, field)).value_or(0.0); }

std::int32_t lineOf(const CashFlow& row) { return static_cast<std::int32_t>(leadingNumber(textOf(row, "inid"))); }

Finding findingOn(Kind kind, std::int32_t line, const std::string& account) {
    Finding finding;
    finding.kind = kind;
    finding.line = line;
    finding.account = account;
    return finding;
}

Finding findingOn(Kind kind, const VoucherLine& line) {
    Finding finding = findingOn(kind, line.number, line.account);
    finding.debit = line.isDebit();
    finding.amount = line.amount();
    return finding;
}

Kind kindOf(VoucherLine::Account state) {
    return state == VoucherLine::Account::missing  ? Kind::accountNotInYear
           : state == VoucherLine::Account::notEnd ? Kind::accountNotEnd
                                                   : Kind::accountClosed;
}

// Whether a row for this line would reduce the difference of the sums; otherwise its absence is intentional.
bool helps(const VoucherLine& line, const Finding& sums) {
    const double amount = line.debit.value_or(0.0) - line.credit.value_or(0.0);
    return (line.cash ? amount : -amount) * (sums.voucherSum - sums.rowsSum) > 0.0;
}

ItemOrigin originOf(const VoucherLine* line, const std::string& item, RowsOrigin origin) {
    if (origin != RowsOrigin::generated) {
        return origin == RowsOrigin::document ? ItemOrigin::document : ItemOrigin::storedRow;
    }
    const bool onLine = line != nullptr && line->itemClass == cashItemClass && line->auxiliaryItem == item;
    return onLine ? ItemOrigin::auxiliaryItem : ItemOrigin::templateOfAccount;
}

/// The stored rows that readers do not find; each line and item once.
std::vector<Finding> hiddenIn(const std::vector<StoredRow>& rows, const Voucher* voucher, RowsOrigin origin) {
    std::vector<Finding> hidden;
    for (const StoredRow& row : rows) {
        if (row.itemKnown && row.accountKnown) {
            continue;
        }
        Finding finding = findingOn(row.itemKnown ? Kind::accountUnknown : Kind::itemUnknown, row.line, row.account);
        finding.debit = row.debit != 0.0;
        finding.amount = finding.debit ? row.debit : row.credit;
        finding.item = row.item;
        finding.origin = originOf(voucher == nullptr ? nullptr : voucher->line(row.line), row.item, origin);
        const bool known = std::any_of(hidden.begin(), hidden.end(), [&](const Finding& other) {
            return other.line == finding.line && other.item == finding.item;
        });
        if (!known) {
            hidden.push_back(std::move(finding));
        }
    }
    return hidden;
}

} // namespace

std::optional<Refusal> Judge::hidden(const std::vector<StoredRow>& rows) {
    auto hidden = hiddenIn(rows, nullptr, RowsOrigin::stored);
    return hidden.empty() ? std::nullopt : std::optional(ownRefusal(errors::rowsNotReadable, std::move(hidden)));
}

std::optional<Refusal> Judge::readBack(const Voucher& voucher, const CashFlowCollection& saved, RowsOrigin origin) {
    const VoucherKey& key = voucher.key;
    enterYear(voucher);
    const auto records = data_.GetCashTable(connection_, key.period, key.kind, key.number);
    std::multiset<std::string> found;
    for (; !records->atEnd(); records->MoveNext()) {
        found.insert(toTextOrEmpty(records->Fields().Item("RowGuid")));
    }
    std::multiset<std::string> wanted;
    for (const auto& row : saved) {
        wanted.insert(textOf(*row, "RowGuid"));
    }
    if (found == wanted) {
        return std::nullopt;
    }
    auto hidden = hiddenIn(readStoredRows(connection_, key), &voucher, origin);
    if (hidden.empty()) {
        Finding unexplained;
        unexplained.kind = Kind::rowsNotFound;
        unexplained.rows = static_cast<std::int32_t>(found.size());
        hidden.push_back(std::move(unexplained));
    }
    return ownRefusal(errors::rowsNotReadable, std::move(hidden));
}

Refusal Judge::explained(const Error& error, const Voucher& voucher, const Rows& rows, RowsOrigin origin) {
    Refusal refusal{error, {}};
    if (isHeldElsewhere(error)) {
        refusal.findings.push_back(findingOn(Kind::heldElsewhere, 0, {}));
    } else if (!error.sqlState().empty()) {
        return refusal; // the number comes from a database and has no meaning here
    } else if (error.number() == errors::invalidNull) {
        refusal.findings = missingAmounts(voucher, true);
    } else if (error.number() == errors::rowsDoNotFit && rows) {
        refusal.findings = misplacedRow(voucher, *rows, origin);
    } else if (error.number() == errors::sumsDiffer && rows) {
        refusal.findings = differentSums(voucher, rows, origin);
    }
    const bool compared = error.number() == errors::rowsDoNotFit || error.number() == errors::sumsDiffer;
    if (origin == RowsOrigin::stored && rows && compared && newRowsMatch(voucher)) {
        refusal.findings.push_back(findingOn(rows->Count() == 0 ? Kind::notStoredYet : Kind::newRowsMatch, 0, {}));
    }
    return refusal;
}

// The first row that does not belong to its line or has no item, in the order of the library's check.
std::vector<Finding> Judge::misplacedRow(const Voucher& voucher, const CashFlowCollection& rows,
                                         RowsOrigin origin) const {
    for (const auto& row : rows) {
        const std::int32_t number = lineOf(*row);
        const std::string account = textOf(*row, "ccode");
        const VoucherLine* line = voucher.line(number);
        if (line == nullptr || line->state != VoucherLine::Account::counts) {
            return {findingOn(line == nullptr ? Kind::rowWithoutLine : kindOf(line->state), number, account)};
        }
        if (line->account != account) {
            Finding other = findingOn(Kind::rowOnOther, number, account);
            other.otherAccount = line->account;
            return {other};
        }
        if (textOf(*row, "cCashItem").empty() && origin == RowsOrigin::generated) {
            return {findingOn(Kind::noTemplate, *line)};
        }
    }
    return {};
}

double Judge::sumOf(const Voucher& voucher, const CashFlowCollection& rows) const {
    double sum = 0.0;
    for (const auto& row : rows) {
        const VoucherLine* line = voucher.line(lineOf(*row));
        const double amount = amountOf(*row, "md") - amountOf(*row, "mc");
        sum += line != nullptr && line->cash ? amount : -amount; // rows of the other side have the opposite effect
    }
    return sum;
}

std::vector<Finding> Judge::differentSums(const Voucher& voucher, const Rows& rows, RowsOrigin origin) {
    Finding sums;
    sums.kind = Kind::sumsDiffer;
    sums.voucherSum = cashSum(voucher.key);
    sums.rowsSum = sumOf(voucher, *rows);
    std::vector<Finding> findings{sums};
    const bool none = origin == RowsOrigin::stored && rows->Count() == 0;
    const bool generated = origin == RowsOrigin::generated || none;
    Rows present = rows;
    Finding lacking = sums; // the difference that the lines must make up
    if (none) {             // only the lines that would not get a row either
        ignoringErrors([&] {
            present = generatedRows(voucher);
            lacking.rowsSum = sumOf(voucher, *present);
        });
    }
    for (const VoucherLine& line : voucher.lines) {
        const bool hasRow =
            std::any_of(present->begin(), present->end(), [&](const auto& row) { return lineOf(*row) == line.number; });
        if (line.state == VoucherLine::Account::budget || hasRow) {
            continue;
        }
        if (line.state != VoucherLine::Account::counts) {
            findings.push_back(findingOn(kindOf(line.state), line));
        } else if (line.cash == modPublic::context().bCashCode && helps(line, lacking)) {
            findings.push_back(findingOn(generated ? Kind::noTemplate : Kind::lineWithoutRow, line));
        }
    }
    if (origin == RowsOrigin::stored) {
        addDoubledRows(voucher, sums.voucherSum, findings);
    }
    return findings;
}

bool Judge::newRowsMatch(const Voucher& voucher) {
    bool match = false;
    ignoringErrors([&] { // a voucher whose rows cannot be generated has no better rows
        const VoucherKey& key = voucher.key;
        const Rows rows = generatedRows(voucher);
        match = gl_.CheckCFColFromDB(connection_, voucherTable, key.period, key.kind, key.number, rows, nullptr);
    });
    return match;
}

// If two sessions stored a voucher at the same time, each row is there twice.
void Judge::addDoubledRows(const Voucher& voucher, double voucherSum, std::vector<Finding>& findings) {
    std::vector<StoredRow> rows = readStoredRows(connection_, voucher.key); // sorted so that equal rows are adjacent
    std::int32_t doubles = 0;
    double sum = 0.0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i > 0 && rows[i] == rows[i - 1]) {
            ++doubles;
            continue;
        }
        const VoucherLine* line = voucher.line(rows[i].line);
        const double amount = rows[i].debit - rows[i].credit;
        sum += line != nullptr && line->cash ? amount : -amount;
    }
    if (doubles > 0 && std::abs(sum - voucherSum) < tolerance) {
        Finding doubled;
        doubled.kind = Kind::rowsDoubled;
        doubled.rows = doubles;
        findings.push_back(std::move(doubled));
    }
}

} // namespace z7::cashflow::workbench
