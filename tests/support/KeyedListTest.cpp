#include "z7cashflow/support/KeyedList.h"
#include "doubles/ContextGuard.h"

#include <gtest/gtest.h>
#ifndef _WIN32 // Debian has no rapidcheck for Windows
#include <rapidcheck.h>
#endif

#include <algorithm>
#include <vector>

namespace z7::cashflow {
namespace {

std::vector<int> valuesOf(const KeyedList<int>& list) { return {list.begin(), list.end()}; }

TEST(KeyedList, KeepsItsOrderAndCountsFromOne) {
    KeyedList<int> list;
    list.append("b", 10);
    list.append("a", 20);
    list.insertBefore("a", "c", 15);
    list.insertBefore("b", "d", 5);
    EXPECT_EQ(valuesOf(list), (std::vector<int>{5, 10, 15, 20}));
    EXPECT_EQ(list.at(1), 5);
    EXPECT_EQ(list.at(4), 20);
    EXPECT_EQ(list.size(), 4U);
}

TEST(KeyedList, FindsKeysWithoutRegardToCase) {
    KeyedList<int> list;
    list.append("Abc", 1);
    list.append("É", 2);
    EXPECT_EQ(list.at("aBC"), 1);
    EXPECT_EQ(list.at("é"), 2);
    EXPECT_TRUE(list.contains("ABC"));
    EXPECT_FALSE(list.contains("ab"));
    EXPECT_ERROR(list.append("ABC", 3), errors::keyExists);
    list.remove("abc");
    EXPECT_FALSE(list.contains("Abc"));
    EXPECT_EQ(list.size(), 1U);
}

TEST(KeyedList, RefusesIndexesAndKeysThatItDoesNotHold) {
    KeyedList<int> list;
    EXPECT_ERROR(list.at(1), errors::badIndex);
    EXPECT_ERROR(list.at("x"), errors::badArgument);
    list.append("a", 1);
    EXPECT_ERROR(list.at(0), errors::badIndex);
    EXPECT_ERROR(list.at(2), errors::badIndex);
    EXPECT_ERROR(list.at(-1), errors::badIndex);
    EXPECT_ERROR(list.remove(2), errors::badIndex);
    EXPECT_ERROR(list.remove("b"), errors::badArgument);
    EXPECT_ERROR(list.insertBefore("b", "c", 2), errors::badArgument);
    EXPECT_ERROR(list.insertBefore("a", "A", 2), errors::keyExists);
    EXPECT_EQ(valuesOf(list), std::vector<int>{1});
    EXPECT_FALSE(list.contains("c"));
}

TEST(KeyedList, TakesAKeyAgainAfterItWasRemoved) {
    KeyedList<int> list;
    list.append("a", 1);
    list.remove(1);
    list.append("A", 2);
    EXPECT_EQ(list.at("a"), 2);
    list.clear();
    EXPECT_TRUE(list.empty());
    list.append("a", 3);
    EXPECT_EQ(list.at(1), 3);
}

TEST(KeyedList, TakesEmptyKeys) {
    KeyedList<int> list;
    list.append("", 1);
    EXPECT_EQ(list.at(""), 1);
    EXPECT_ERROR(list.append("", 2), errors::keyExists);
}

TEST(KeyedList, HoldsManyElements) {
    KeyedList<int> list;
    constexpr int many = 100000;
    for (int i = 1; i <= many; ++i) {
        list.append("key" + std::to_string(i), i);
    }
    EXPECT_EQ(list.at(many), many);
    EXPECT_EQ(list.at("KEY77777"), 77777);
    for (int i = 1; i <= many; ++i) {
        ASSERT_EQ(list.at(1), i);
        list.remove(1);
    }
    EXPECT_TRUE(list.empty());
}

TEST(KeyedList, TakesManyInsertionsAtOnePlace) {
    KeyedList<int> list;
    list.append("first", 0);
    list.append("last", -1);
    for (int i = 1; i <= 3000; ++i) {
        list.insertBefore("last", "k" + std::to_string(i), i);
    }
    for (int i = 3001; i <= 4000; ++i) {
        list.insertBefore("first", "k" + std::to_string(i), i);
    }
    for (int i = 1; i <= 3000; ++i) {
        ASSERT_EQ(list.at(1001 + i), i);
    }
    for (int i = 1; i <= 4000; ++i) {
        ASSERT_EQ(list.at("K" + std::to_string(i)), i);
    }
    EXPECT_EQ(list.at(1), 3001);
    for (int i = 4001; i <= 5000; ++i) {
        list.insertBefore("k" + std::to_string(i == 4001 ? 3001 : i - 1), "k" + std::to_string(i), i);
        ASSERT_EQ(list.at(1), i);
    }
    EXPECT_EQ(list.at("k4001"), 4001);
    EXPECT_EQ(list.at(static_cast<std::int64_t>(list.size())), -1);
}

#ifndef _WIN32
TEST(KeyedList, BehavesAsAPlainListOverRandomOperations) {
    struct Element {
        std::string key;
        int value;
    };
    EXPECT_TRUE(rc::check("keyed list against a vector", [] {
        KeyedList<int> list;
        std::vector<Element> model;
        const auto find = [&](const std::string& key) {
            return std::find_if(model.begin(), model.end(),
                                [&](const Element& element) { return asciiLower(element.key) == asciiLower(key); });
        };
        const auto steps = *rc::gen::container<std::vector<std::tuple<int, int, int>>>(
            rc::gen::tuple(rc::gen::inRange(0, 5), rc::gen::inRange(0, 40), rc::gen::inRange(0, 40)));
        int value = 0;
        for (const auto& [operation, first, second] : steps) {
            const std::string key = (first % 2 == 0 ? "k" : "K") + std::to_string(first / 2);
            const std::string other = "k" + std::to_string(second / 2);
            ++value;
            int expected = 0;
            int actual = 0;
            if (operation <= 1) {
                expected = find(key) == model.end() ? 0 : errors::keyExists;
                actual = test::errorNumberOf([&] { list.append(key, value); });
                if (expected == 0) {
                    model.push_back({key, value});
                }
            } else if (operation == 2) {
                const auto before = find(other);
                expected = before == model.end()      ? errors::badArgument
                           : find(key) == model.end() ? 0
                                                      : errors::keyExists;
                actual = test::errorNumberOf([&] { list.insertBefore(other, key, value); });
                if (expected == 0) {
                    model.insert(before, {key, value});
                }
            } else if (operation == 3) {
                const auto at = find(key);
                expected = at == model.end() ? errors::badArgument : 0;
                actual = test::errorNumberOf([&] { list.remove(key); });
                if (expected == 0) {
                    model.erase(at);
                }
            } else {
                const int index = second / 4;
                const bool inside = index >= 1 && static_cast<std::size_t>(index) <= model.size();
                expected = inside ? 0 : errors::badIndex;
                actual = test::errorNumberOf([&] { list.remove(index); });
                if (inside) {
                    model.erase(model.begin() + (index - 1));
                }
            }
            RC_ASSERT(actual == expected);
            RC_ASSERT(list.size() == model.size());
        }
        for (std::size_t i = 0; i < model.size(); ++i) {
            RC_ASSERT(list.at(static_cast<std::int64_t>(i + 1)) == model[i].value);
            RC_ASSERT(list.at(model[i].key) == model[i].value);
        }
    }));
}
#endif

} // namespace
} // namespace z7::cashflow
