#include "workbench/statement/CashFlowStatement.h"

#include "workbench/forEachRecord.h"
#include "workbench/statement/statementQueries.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow::workbench {

namespace {

constexpr std::uint8_t periodsOfYear = 12;

std::string textOf(const FieldList& fields, const char* column) { return toTextOrEmpty(fields.Item(column)); }

Amount amountOf(const FieldList& fields, const char* column) { return Amount::of(fields.Item(column)); }

/// Receipts and payments of a grouped record, which holds payments as negative sums.
Flow flowOf(const FieldList& fields, const char* receipts, const char* payments) {
    return {amountOf(fields, receipts), -amountOf(fields, payments)};
}

std::uint8_t lastPeriodOf(Connection& connection, std::int16_t year) {
    std::uint8_t last = periodsOfYear;
    forEachRecord(connection, queries::lastPeriod(year), [&last](const FieldList& fields) {
        const Variant period = fields.Item("last_period");
        last = period.isNull() ? last : std::max(last, toByte(period));
    });
    return last;
}

std::vector<StatementColumn> columnsOf(std::uint8_t first, std::uint8_t last, Span span) {
    const int width = span == Span::month ? 1 : span == Span::quarter ? 3 : last - first + 1;
    std::vector<StatementColumn> columns;
    for (int begin = first; begin <= last;) {
        const int end = span == Span::quarter ? (begin - 1) / width * width + width : begin + width - 1;
        columns.push_back({static_cast<std::uint8_t>(begin), static_cast<std::uint8_t>(std::min<int>(end, last))});
        begin = columns.back().last + 1;
    }
    return columns;
}

queries::Range rangeOf(const CashFlowStatement& statement) {
    return {statement.year, statement.firstPeriod, statement.lastPeriod};
}

template <class ReadFlow>
std::vector<VoucherFlow> voucherFlows(Connection& connection, const std::string& query, const char* code,
                                      ReadFlow&& readFlow) {
    std::vector<VoucherFlow> flows;
    forEachRecord(connection, query, [&](const FieldList& fields) {
        flows.push_back({textOf(fields, code), toByte(fields.Item("iperiod")), toInt16(fields.Item("isignseq")),
                         toInt32(fields.Item("ino_id")), readFlow(fields)});
    });
    return flows;
}

bool isInLedger(Connection& connection, std::int16_t year, const VoucherGap& voucher) {
    bool there = false;
    forEachRecord(connection, queries::voucherLines(year, voucher.period, voucher.kind, voucher.number),
                  [&there](const FieldList&) { there = true; });
    return there;
}

/// Why the rows do not cover the voucher's cash; seen is the number of its rows that readers find.
Gap reasonOf(Connection& connection, std::int16_t year, const VoucherGap& voucher, std::int32_t seen) {
    if (voucher.stored == 0) {
        return Gap::unallocated;
    }
    if (voucher.cash.isZero() && !isInLedger(connection, year, voucher)) {
        return Gap::voucherMissing;
    }
    return seen < voucher.stored ? Gap::hiddenRows : Gap::sumsDiffer;
}

/// Draws up one statement, part by part.
class Drawing {
public:
    Drawing(Connection& connection, const StatementRequest& request) : connection_(connection), request_(request) {
        result_.year = request.year;
        result_.firstPeriod = request.firstPeriod;
        result_.lastPeriod = request.lastPeriod != 0 ? request.lastPeriod : lastPeriodOf(connection, request.year);
        if (result_.firstPeriod > result_.lastPeriod) {
            raisePlatformError(Reason::periodsReversed,
                               {std::to_string(result_.firstPeriod), std::to_string(result_.lastPeriod)});
        }
        result_.columns = columnsOf(result_.firstPeriod, result_.lastPeriod, request.span);
        result_.cashColumns.resize(result_.columns.size());
        range_ = rangeOf(result_);
    }

    CashFlowStatement draw() {
        readItems();
        if (request_.byCurrency) {
            readCurrencies();
        }
        formGroups();
        readAccounts();
        result_.gaps = findGaps(connection_, result_.year, result_.firstPeriod, result_.lastPeriod);
        return std::move(result_);
    }

private:
    [[nodiscard]] StatementLine newLine(std::string code, std::string name) const {
        return {std::move(code), std::move(name), {}, {}, std::vector<Flow>(result_.columns.size()), {}};
    }

    [[nodiscard]] std::size_t columnOf(std::uint8_t period) const {
        const auto column = std::find_if(result_.columns.begin(), result_.columns.end(),
                                         [period](const StatementColumn& each) { return period <= each.last; });
        return static_cast<std::size_t>(column - result_.columns.begin());
    }

    void readItems() {
        result_.total = newLine({}, {});
        forEachRecord(connection_, queries::items(range_), [this](const FieldList& fields) {
            const std::string code = textOf(fields, "item_code");
            if (result_.items.empty() || result_.items.back().code != code) {
                result_.items.push_back(newLine(code, textOf(fields, "item_name")));
            }
            const Flow flow = flowOf(fields, "receipts", "payments");
            const std::size_t column = columnOf(toByte(fields.Item("iperiod")));
            for (StatementLine* line : {&result_.items.back(), &result_.total}) {
                line->total += flow;
                line->columns[column] += flow;
            }
        });
    }

    void readCurrencies() {
        auto line = result_.items.begin();
        forEachRecord(connection_, queries::currencies(range_), [&](const FieldList& fields) {
            const std::string code = textOf(fields, "item_code");
            line = std::find_if(line, result_.items.end(),
                                [&code](const StatementLine& each) { return each.code == code; });
            if (line != result_.items.end()) {
                line->currencies.push_back({textOf(fields, "currency"), flowOf(fields, "receipts", "payments")});
            }
        });
    }

    /// The group of an item: the longest group code of the request with which the item's code begins, otherwise
    /// the first characters of the item's code.
    [[nodiscard]] std::string groupOf(const std::string& item) const {
        std::string group;
        for (const auto& [code, name] : request_.groups) {
            group = item.starts_with(code) && code.size() > group.size() ? code : group;
        }
        return group.empty() ? std::string(leftCharacters(item, 2)) : group;
    }

    void formGroups() {
        std::map<std::string, std::string> names;
        forEachRecord(connection_, queries::itemNames(), [&names](const FieldList& fields) {
            names[textOf(fields, "citemcode")] = textOf(fields, "citemname");
        });
        for (const auto& [code, name] : request_.groups) {
            names[code] = name;
        }
        std::map<std::string, StatementLine> groups;
        for (StatementLine& item : result_.items) {
            item.group = groupOf(item.code);
            const auto name = names.find(item.group);
            StatementLine& group =
                groups.try_emplace(item.group, newLine(item.group, name == names.end() ? "" : name->second))
                    .first->second;
            group.total += item.total;
            for (std::size_t column = 0; column < item.columns.size(); ++column) {
                group.columns[column] += item.columns[column];
            }
        }
        for (auto& [code, group] : groups) {
            result_.groups.push_back(std::move(group));
        }
    }

    void readAccounts() {
        std::map<std::string, CashAccount> accounts;
        forEachRecord(connection_, queries::cashAccounts(request_.year), [&accounts](const FieldList& fields) {
            const std::string code = textOf(fields, "ccode");
            accounts[code] = {code, textOf(fields, "ccode_name"), {}, {}};
        });
        for (const auto& [code, amount] : request_.openings) {
            const auto account = accounts.find(code);
            if (account == accounts.end()) {
                raisePlatformError(Reason::notCashAccount, {code});
            }
            account->second.opening += amount;
        }
        forEachRecord(connection_, queries::openingBalances(range_), [&accounts](const FieldList& fields) {
            accounts[textOf(fields, "ccode")].opening += amountOf(fields, "debit") - amountOf(fields, "credit");
        });
        forEachRecord(connection_, queries::cashMovements(range_), [&](const FieldList& fields) {
            const Flow flow{amountOf(fields, "debit"), amountOf(fields, "credit")};
            accounts[textOf(fields, "ccode")].flow += flow;
            result_.cashColumns[columnOf(toByte(fields.Item("iperiod")))] += flow;
        });
        for (auto& [code, account] : accounts) {
            result_.cash.opening += account.opening;
            result_.cash.flow += account.flow;
            if (!account.opening.isZero() || !account.flow.receipts.isZero() || !account.flow.payments.isZero()) {
                result_.accounts.push_back(std::move(account));
            }
        }
    }

    Connection& connection_;
    const StatementRequest& request_;
    queries::Range range_{};
    CashFlowStatement result_;
};

} // namespace

Flow& Flow::operator+=(const Flow& other) {
    receipts += other.receipts;
    payments += other.payments;
    return *this;
}

std::string unknownOpening(Connection& connection, const StatementRequest& request) {
    auto openings = request.openings;
    forEachRecord(connection, queries::cashAccounts(request.year),
                  [&openings](const FieldList& fields) { openings.erase(textOf(fields, "ccode")); });
    return openings.empty() ? std::string() : openings.begin()->first;
}

std::vector<VoucherFlow> vouchersOfItems(Connection& connection, const CashFlowStatement& statement) {
    return voucherFlows(connection, queries::itemVouchers(rangeOf(statement)), "item_code",
                        [](const FieldList& fields) { return flowOf(fields, "receipts", "payments"); });
}

std::vector<VoucherFlow> vouchersOfAccounts(Connection& connection, const CashFlowStatement& statement) {
    return voucherFlows(connection, queries::accountVouchers(rangeOf(statement)), "ccode", [](const FieldList& fields) {
        return Flow{amountOf(fields, "debit"), amountOf(fields, "credit")};
    });
}

std::vector<VoucherGap> findGaps(Connection& connection, std::int16_t year, std::uint8_t first, std::uint8_t last) {
    std::vector<VoucherGap> gaps;
    std::vector<std::int32_t> seen;
    forEachRecord(connection, queries::gaps({year, first, last}), [&](const FieldList& fields) {
        gaps.push_back({toByte(fields.Item("iperiod")), toInt16(fields.Item("isignseq")),
                        toInt32(fields.Item("ino_id")), amountOf(fields, "cash"), amountOf(fields, "effect"),
                        toInt32(fields.Item("stored"))});
        seen.push_back(toInt32(fields.Item("seen")));
    });
    for (std::size_t i = 0; i < gaps.size(); ++i) {
        gaps[i].gap = reasonOf(connection, year, gaps[i], seen[i]);
    }
    return gaps;
}

CashFlowStatement drawUpStatement(Connection& connection, const StatementRequest& request) {
    return Drawing(connection, request).draw();
}

} // namespace z7::cashflow::workbench
