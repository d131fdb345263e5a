#include "adapters/shared/recordset/RowFilter.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::shared {
namespace {

class FilterTest : public ::testing::Test {
protected:
    FilterTest()
        : columns_(std::make_shared<const ColumnList>(std::vector<Column>{{"iPeriod", ColumnType::byte, 0},
                                                                          {"inid", ColumnType::int16, 0},
                                                                          {"md", ColumnType::money, 0},
                                                                          {"ccode", ColumnType::text, 40},
                                                                          {"bend", ColumnType::boolean, 0}})),
          rows_(columns_) {
        add(1, 1, 10.5, "1001", true);
        add(1, 2, 0.0, "x", false);
        add(2, 1, -3.0, "1,001", true);
        rows_.addInteger(2);
        for (int i = 0; i < 4; ++i) {
            rows_.addNull();
        }
    }
    void add(int period, int inid, double md, const char* code, bool end) {
        rows_.addInteger(period);
        rows_.addInteger(inid);
        rows_.addReal(md);
        rows_.addText(code);
        rows_.addInteger(end ? 1 : 0);
    }
    std::vector<std::uint32_t> match(const std::string& text) {
        return filter_.match(rows_, parseFilter(text, *columns_));
    }
    int errorOf(const std::string& text) {
        try {
            match(text);
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    }
    using Rows = std::vector<std::uint32_t>;

    std::shared_ptr<const ColumnList> columns_;
    RowSet rows_;
    RowFilter filter_;
};

TEST_F(FilterTest, FindsRowsByNumbers) {
    EXPECT_EQ(match("inid=1"), (Rows{0, 2}));
    EXPECT_EQ(match("iperiod=1 and INID=2"), Rows{1});
    EXPECT_EQ(match(" INID = 2  AND\tiPeriod =1 "), Rows{1}) << "the order of the conditions does not count";
    EXPECT_EQ(match("inid=3"), Rows{});
    EXPECT_EQ(match("inid=1.0"), (Rows{0, 2}));
    EXPECT_EQ(match("inid=+1"), (Rows{0, 2}));
    EXPECT_EQ(match("inid=1.5"), Rows{});
    EXPECT_EQ(match("md=-3"), Rows{2});
    EXPECT_EQ(match("md=-0"), Rows{1});
    EXPECT_EQ(match("[md]=10.50"), Rows{0});
    EXPECT_EQ(match("ccode=1001"), (Rows{0, 2})) << "texts that are numbers count as such";
    EXPECT_EQ(match("bend=1"), (Rows{0, 2}));
    EXPECT_EQ(match("bend=-1"), (Rows{0, 2}));
}

TEST_F(FilterTest, NullMatchesNothing) {
    EXPECT_EQ(match("iperiod=2"), (Rows{2, 3}));
    EXPECT_EQ(match("iperiod=2 and inid=0"), Rows{});
}

TEST_F(FilterTest, OneColumnTwice) {
    EXPECT_EQ(match("inid=1 and inid=1"), (Rows{0, 2}));
    EXPECT_EQ(match("inid=1 and inid=2"), Rows{});
}

TEST_F(FilterTest, RefusesEveryOtherText) {
    for (const char* text : {"inid=",
                             "inid",
                             "=1",
                             "inid=1 and",
                             "inid=1 and ",
                             "and inid=1",
                             "inid=1 or inid=2",
                             "inid=1and inid=2",
                             "inid=1 andinid=2",
                             "inid>1",
                             "inid=='1'",
                             "inid='1'",
                             "inid=1e3",
                             "inid=0x1",
                             "inid=--1",
                             "inid=+-1",
                             "inid=1,000",
                             "inid=1.2.3",
                             "inid=-",
                             "inid=.",
                             "inid=null",
                             "1=1",
                             "inid=1;",
                             "[inid=1",
                             "nosuch=",
                             " "}) {
        EXPECT_EQ(errorOf(text), 3001) << text;
    }
    EXPECT_EQ(errorOf("nosuch=1"), 3265);
    EXPECT_EQ(errorOf("inid=1 and nosuch=1"), 3265);
}

TEST_F(FilterTest, ForgetsRowsThatChanged) {
    EXPECT_EQ(match("inid=2"), Rows{1});
    rows_.replace(3, 1, Variant(std::int16_t{2}));
    filter_.forget();
    EXPECT_EQ(match("inid=2"), (Rows{1, 3}));
}

} // namespace
} // namespace z7::cashflow::shared
