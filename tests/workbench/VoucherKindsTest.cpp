#include "workbench/vouchers/VoucherKinds.h"

#include "outside/Company.h"

#include <gtest/gtest.h>

namespace z7::cashflow::workbench {
namespace {

using Numbers = std::vector<std::int16_t>;

const VoucherKey fifth{2024, 1, 2, 5};

TEST(VoucherKinds, AKeyIsShownWithItsSignAndReadBack) {
    const VoucherKinds kinds({{2, " 付 "}, {1, "收"}});
    EXPECT_EQ(kinds.keyText(fifth), "2024/1/付/5");
    const auto written = readWrittenVoucherKey(kinds.keyText(fifth));
    ASSERT_TRUE(written);
    EXPECT_EQ(kinds.resolved(*written), fifth);
    EXPECT_EQ(kinds.all().front().number, 1);
}

TEST(VoucherKinds, ANumberIsTakenWhetherOrNotThereIsSuchAKind) {
    EXPECT_EQ(VoucherKinds().resolved({fifth, ""}), fifth);
    EXPECT_EQ(VoucherKinds().keyText(fifth), "2024/1/2/5");
}

TEST(VoucherKinds, AnUnknownOrAmbiguousSignIsNotAKey) {
    const VoucherKinds kinds({{1, "a"}, {2, "a"}, {3, "b"}});
    EXPECT_EQ(kinds.resolved({fifth, "a"}), std::nullopt);
    EXPECT_EQ(kinds.resolved({fifth, "c"}), std::nullopt);
    EXPECT_EQ(kinds.kindsOf("a"), (Numbers{1, 2}));
    EXPECT_EQ(kinds.kindsOf("c"), Numbers{});
    EXPECT_EQ(kinds.keyText(fifth), "2024/1/2/5") << "its sign would not be understood";
}

TEST(VoucherKinds, ASignThatLooksLikeAnotherPartIsNotShown) {
    for (const char* sign : {"", "7", "a/b"}) {
        EXPECT_EQ(VoucherKinds({{2, sign}}).keyText(fifth), "2024/1/2/5") << sign;
    }
    EXPECT_EQ(VoucherKinds({{2, ""}}).kindsOf(""), Numbers{});
}

TEST(VoucherKinds, AKindThatIsListedTwiceKeepsItsFirstSign) {
    const VoucherKinds kinds({{2, "first"}, {2, "second"}});
    EXPECT_EQ(kinds.sign(2), "first");
    EXPECT_EQ(kinds.kindsOf("second"), Numbers{});
}

TEST(VoucherKinds, AreReadFromTheAccount) {
    test::Company company;
    company.execute("delete from dsign");
    company.execute("insert into dsign (isignseq,csign) values(7,N'转')");
    company.execute("insert into dsign (isignseq,csign) values(3,null)");
    const VoucherKinds kinds = VoucherKinds::read(company.connection());
    ASSERT_EQ(kinds.all().size(), 2U);
    EXPECT_EQ(kinds.sign(7), "转");
    EXPECT_EQ(kinds.sign(3), "");
}

} // namespace
} // namespace z7::cashflow::workbench
