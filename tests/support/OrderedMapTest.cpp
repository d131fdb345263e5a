#include "z7cashflow/support/OrderedMap.h"
#include "doubles/ContextGuard.h"

#include <gtest/gtest.h>

namespace z7::cashflow {
namespace {

TEST(OrderedMap, KeepsTheOrderOfInsertion) {
    OrderedMap<int> map;
    map.add("z", 1);
    map.add("a", 2);
    map.add("m", 3);
    EXPECT_EQ(map.names(), (std::vector<std::string>{"z", "a", "m"}));
    EXPECT_EQ(map.size(), 3U);
    ASSERT_NE(map.find("a"), nullptr);
    EXPECT_EQ(*map.find("a"), 2);
}

TEST(OrderedMap, ComparesNamesExactly) {
    OrderedMap<int> map;
    map.add("iSignSeq", 1);
    map.add("isignseq", 2);
    EXPECT_EQ(*map.find("iSignSeq"), 1);
    EXPECT_EQ(*map.find("isignseq"), 2);
    EXPECT_EQ(map.find("ISIGNSEQ"), nullptr);
    EXPECT_EQ(map.find(""), nullptr);
}

TEST(OrderedMap, RefusesANameTwiceAndStaysAsItWas) {
    OrderedMap<int> map;
    map.add("a", 1);
    EXPECT_ERROR(map.add("a", 2), errors::keyExists);
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(*map.find("a"), 1);
    EXPECT_EQ(map.names(), std::vector<std::string>{"a"});
}

} // namespace
} // namespace z7::cashflow
