// A separate program, because it replaces the XML parser's allocator before the parser is first used.

#include "z7cashflow/support/XmlDocument.h"

#include <gtest/gtest.h>
#include <libxml/xmlmemory.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <ostream>
#include <string>
#include <vector>

namespace z7::cashflow {
namespace {

/// The parser's allocator; one call fails, or all calls from one on.
struct Allocator {
    static inline long calls = 0;
    static inline long failAt = 0; ///< 0 for never
    static inline bool failAfter = false;
    static inline long failures = 0;

    static bool fails() {
        ++calls;
        const bool now = failAt > 0 && (calls == failAt || (failAfter && calls > failAt));
        failures += now ? 1 : 0;
        return now;
    }
    static void* allocate(std::size_t size) { return fails() ? nullptr : std::malloc(size); }
    static void* resize(void* block, std::size_t size) { return fails() ? nullptr : std::realloc(block, size); }
    static char* copy(const char* text) { return fails() ? nullptr : strdup(text); }
    static void begin(long at, bool after) {
        calls = 0;
        failures = 0;
        failAt = at;
        failAfter = after;
    }
};

const bool taken = xmlMemSetup(std::free, Allocator::allocate, Allocator::resize, Allocator::copy) == 0;

/// The elements of a document with their attributes, in order.
std::string writtenOut(const XmlNode& node) {
    std::string text = "<" + node.baseName();
    node.eachAttribute([&text](std::string_view name, std::string_view value) {
        text.append(" ").append(name).append("='").append(value).append("'");
    });
    for (const XmlNode& child : node.childNodes()) {
        text += writtenOut(child);
    }
    return text + ">";
}

std::string outcomeOf(std::string_view text) {
    try {
        Explanation why;
        const auto document = XmlDocument::load(text, &why);
        return document ? writtenOut(document->documentElement()) : "refused: " + englishText(why);
    } catch (const std::bad_alloc&) {
        return "out of memory";
    }
}

struct Case {
    const char* name;
    std::string text;
};

void PrintTo(const Case& given, std::ostream* out) { *out << given.name; }

std::string manyRows() {
    std::string text = "<root iperiod='1'><rows>";
    for (int i = 0; i < 300; ++i) { // more names than fit into the parser's initial tables
        text += "<row inid='" + std::to_string(i) + "' field" + std::to_string(i) + "='&lt;a&#65;'/>";
    }
    return text + "</rows></root>";
}

class XmlMemoryTest : public testing::TestWithParam<Case> {};

TEST_P(XmlMemoryTest, AFailedAllocationIsReportedAsSuch) {
    ASSERT_TRUE(taken);
    const std::string& text = GetParam().text;
    const std::string expected = outcomeOf(text); // also initializes what the parser sets up once
    for (const bool after : {false, true}) {
        long at = 0;
        for (bool failed = true; failed;) {
            Allocator::begin(++at, after);
            const std::string outcome = outcomeOf(text);
            failed = Allocator::failures > 0;
            Allocator::begin(0, false);
            if (outcome != expected) { // the parser may manage without the memory that it requested
                EXPECT_EQ(outcome, "out of memory") << "allocation " << at << (after ? " and all after it" : "");
            }
        }
        EXPECT_GT(at, 10);
    }
    EXPECT_EQ(outcomeOf(text), expected) << "nothing is left behind";
}

// The parser reports lack of memory for this, too, but it is the document that demands too much.
TEST(XmlMemory, NamesBeyondTheParsersBoundAreAVerdict) {
    std::string text = "<r>";
    for (int i = 1000000; i < 1650000; ++i) {
        text += "<a_name_of_a_good_length_for_an_element_" + std::to_string(i) + "/>";
    }
    EXPECT_EQ(outcomeOf(text + "</r>").substr(0, 7), "refused");
}

INSTANTIATE_TEST_SUITE_P(
    Documents, XmlMemoryTest,
    testing::Values(Case{"Rows", manyRows()}, Case{"OneRow", "<root><rows><row a='1' b='2'>text</row></rows></root>"},
                    Case{"Namespaces", "<r xmlns='u' xmlns:p='v' p:a='1'><p:x p:y='2'/><q xmlns:q='w' q:z='3'/></r>"},
                    Case{"References", "<!DOCTYPE r [<!ELEMENT r ANY>]><r a='some &lt;text&gt;'>&#65;&amp;<x/></r>"},
                    Case{"DocumentType", "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST x d (v|w) 'v'>]><r/>"},
                    Case{"OtherNodes",
                         "<?xml version='1.0' encoding='UTF-8'?><!-- c --><r>a<!-- c --><?p i?><![CDATA[<]]></r>"},
                    Case{"LongValue", "<r a='" + std::string(50000, 'x') + "'>" + std::string(50000, 'y') + "</r>"},
                    Case{"NotWellFormed", "<root><rows><row a='1' a='2'/></rows></root>"},
                    Case{"NotFinished", "<root><rows><row a='1'"}, Case{"UnknownEntity", "<r>&nothing;</r>"},
                    Case{"UndeclaredPrefix", "<r><p:x/></r>"}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace z7::cashflow
