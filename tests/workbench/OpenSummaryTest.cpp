#include "workbench/open/OpenSummary.h"

#include <gtest/gtest.h>

namespace z7::cashflow::workbench {
namespace {

using Kind = Finding::Kind;

Finding lineFinding(Kind kind, const std::string& account, bool debit, double amount) {
    Finding finding;
    finding.kind = kind;
    finding.line = 1;
    finding.account = account;
    finding.debit = debit;
    finding.amount = amount;
    return finding;
}

Finding sums(double voucher, double rows) {
    Finding finding;
    finding.kind = Kind::sumsDiffer;
    finding.voucherSum = voucher;
    finding.rowsSum = rows;
    return finding;
}

VoucherKey key(int number) { return {2024, 1, 2, number}; }

TEST(OpenSummary, CountsVouchersOnceAndAmountsByAccountAndSide) {
    OpenSummary summary;
    summary.add(key(1), ownRefusal(10009, {sums(-30, 0), lineFinding(Kind::noTemplate, "6602", true, 10),
                                           lineFinding(Kind::noTemplate, "6602", true, 20)}));
    summary.add(key(2), ownRefusal(10009, {sums(5, 0), lineFinding(Kind::noTemplate, "6602", false, 5)}));
    summary.add(key(3), ownRefusal(10009, {sums(-2.5, 0), lineFinding(Kind::noTemplate, "6602", true, -2.5)}));
    const auto groups = summary.groups();
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].debit, false);
    EXPECT_EQ(groups[0].vouchers, 1U);
    EXPECT_EQ(groups[1].account, "6602");
    EXPECT_EQ(groups[1].debit, true);
    EXPECT_EQ(groups[1].vouchers, 2U);
    EXPECT_EQ(groups[1].amount.text(), "32.50") << "an amount in red counts as any other";
    EXPECT_EQ(groups[1].first, key(1));
    EXPECT_EQ(summary.vouchers(), 3U);
}

TEST(OpenSummary, AFindingWithoutALineCountsTheUnallocatedCash) {
    OpenSummary summary;
    Finding notStored;
    notStored.kind = Kind::notStoredYet;
    summary.add(key(1), ownRefusal(10009, {sums(-30, 0), notStored}));
    summary.add(key(2), ownRefusal(10009, {sums(10, 2), notStored}));
    ASSERT_EQ(summary.groups().size(), 1U);
    EXPECT_EQ(summary.groups()[0].vouchers, 2U);
    EXPECT_EQ(summary.groups()[0].amount.text(), "38.00");
    EXPECT_EQ(summary.groups()[0].account, "");
    EXPECT_EQ(summary.groups()[0].debit, std::nullopt);
}

TEST(OpenSummary, WithoutAFindingTheNumberOfTheRefusalIsTheGroup) {
    OpenSummary summary;
    summary.add(key(1), ownRefusal(10020, {}));
    summary.add(key(2), ownRefusal(6, {}));
    summary.add(key(3), ownRefusal(10020, {}));
    ASSERT_EQ(summary.groups().size(), 2U);
    EXPECT_EQ(summary.groups()[0].number, 6);
    EXPECT_EQ(summary.groups()[1].number, 10020);
    EXPECT_EQ(summary.groups()[1].vouchers, 2U);
    EXPECT_EQ(summary.groups()[1].kind, std::nullopt);
}

TEST(OpenSummary, DifferentSumsAreAGroupOnlyWhereNothingElseIsKnown) {
    OpenSummary summary;
    summary.add(key(1), ownRefusal(10009, {sums(3, 1)}));
    ASSERT_EQ(summary.groups().size(), 1U);
    EXPECT_EQ(summary.groups()[0].kind, Kind::sumsDiffer);
    EXPECT_EQ(summary.groups()[0].amount.text(), "2.00");
}

} // namespace
} // namespace z7::cashflow::workbench
