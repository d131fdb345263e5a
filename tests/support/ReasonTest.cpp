#include "z7cashflow/support/Reason.h"

#include "z7cashflow/support/textPlaces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace z7::cashflow {
namespace {

TEST(ReasonTable, SaysSomethingOfItsOwnForEachReason) {
    std::set<std::string_view> texts;
    for (const ReasonEntry& entry : reasonTable().subspan(1)) {
        EXPECT_FALSE(entry.english.empty()) << entry.place;
        EXPECT_TRUE(texts.insert(entry.english).second) << entry.english;
        EXPECT_GE(entry.number, 0) << entry.english;
    }
}

TEST(ReasonTable, GivesNoNumberToReasonsOfADocumentThatIsNotXml) {
    for (ReasonId reason : {ReasonId(Reason::xmlEmpty), ReasonId(Reason::xmlNotXml), ReasonId(Reason::xmlTagMismatch),
                            ReasonId(Reason::xmlEntityUnknown), ReasonId(Reason::xmlPrefixUndeclared)}) {
        EXPECT_EQ(reason.entry().number, 0)
            << reason.entry().english << ": the error has the number of what was to be read";
    }
}

TEST(ReasonTable, CountsThePlacesOfATextFromZeroWithoutAGap) {
    for (const ReasonEntry& entry : reasonTable()) {
        const auto places = placesOf(entry.english);
        const std::set<std::size_t> distinct(places.begin(), places.end());
        EXPECT_TRUE(distinct.empty() || *distinct.rbegin() + 1 == distinct.size()) << entry.english;
    }
}

TEST(FillPlaces, PutsArgumentsWhereTheirNumbersStand) {
    EXPECT_EQ(fillPlaces("a {0} b {1} c {0}", {"x", "7"}), "a x b 7 c x");
    EXPECT_EQ(fillPlaces("{0}{1}", {"{1}", "z"}), "{1}z") << "an argument is not a text with places";
    EXPECT_EQ(fillPlaces("", {}), "");
}

TEST(FillPlaces, LeavesTextThatIsNotAPlaceOrHasNoArgument) {
    EXPECT_EQ(fillPlaces("{2} {x} {} { {-1} {0", {"x"}), "{2} {x} {} { {-1} {0");
    EXPECT_EQ(fillPlaces("{99999999999999999999999} {0}", {"x"}), "{99999999999999999999999} x");
    EXPECT_EQ(fillPlaces("{{0}}", {"x"}), "{x}");
}

TEST(PlacesOf, AreTheNumbersInTheirOrder) {
    EXPECT_EQ(placesOf("{1} and {0}, {x} and {1}"), (std::vector<std::size_t>{1, 0, 1}));
    EXPECT_TRUE(placesOf("none {").empty());
}

} // namespace
} // namespace z7::cashflow
