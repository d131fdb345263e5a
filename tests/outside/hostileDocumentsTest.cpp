// Hostile documents: each is refused with the error of its kind, leaves the rows unchanged, and needs limited
// memory.

#include "doubles/ChildProcess.h"
#include "outside/CompanyTest.h"
#include "z7cashflow/data/DataProvider.h"

#include <sys/resource.h>

#include <algorithm>
#include <functional>

namespace z7::cashflow::test {
namespace {

constexpr bool underSanitizer =
#if defined(__SANITIZE_ADDRESS__)
    true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    true;
#else
    false;
#endif
#else
    false;
#endif

/// The peak memory of a separate process, in MiB beyond that of this one; -1 if it failed.
long peakOf(const std::function<bool()>& action) {
    test::ChildProcess child([&] {
        rusage before{};
        getrusage(RUSAGE_SELF, &before);
        const bool ended = action();
        rusage after{};
        getrusage(RUSAGE_SELF, &after);
        const long grown = (after.ru_maxrss - before.ru_maxrss) / 1024;
        return ended ? static_cast<int>(std::min(grown / 8, 200L)) : test::ChildProcess::raised;
    });
    const int code = child.wait();
    return code < 0 || code == test::ChildProcess::raised ? -1 : code * 8L;
}

std::string repeated(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

std::string laughs() {
    std::string text = "<!DOCTYPE r [<!ENTITY e0 'lollollollol'>";
    for (int i = 1; i <= 12; ++i) {
        text += "<!ENTITY e" + std::to_string(i) + " '" + repeated("&e" + std::to_string(i - 1) + ";", 10) + "'>";
    }
    return text + "]><r><rows><row a='&e12;'/></rows></r>";
}

std::string attributes(std::size_t count) {
    std::string text = "<r><rows><row ";
    for (std::size_t i = 0; i < count; ++i) {
        text += "a" + std::to_string(i) + "='' ";
    }
    return text + "/></rows></r>";
}

/// A hostile document and the memory that refusing it may take, in MiB, not counting its text.
struct Hostile {
    const char* name;
    std::function<std::string()> make;
    long mostMiB = 64;
};

std::vector<Hostile> hostileDocuments() {
    return {
        {"a billion laughs", laughs},
        {"a quadratic blowup",
         [] {
             return "<!DOCTYPE r [<!ENTITY e '" + std::string(1000000, 'x') + "'>]><r>" + repeated("&e;", 100000) +
                    "</r>";
         }},
        {"entities of markup",
         [] {
             return "<!DOCTYPE r [<!ENTITY e '" + repeated("<a/>", 100) + "'>]><r>" + repeated("&e;", 1000) + "</r>";
         }},
        {"markup hidden in a reference", [] { return std::string("<!DOCTYPE r [<!ENTITY e '&#60;a/>'>]><r>&e;</r>"); }},
        {"parameter entities",
         [] { return std::string("<!DOCTYPE r [<!ENTITY % p \"<!ENTITY e 'x'>\">%p;]><r>&e;</r>"); }},
        {"attributes that come by themselves",
         [] {
             return "<!DOCTYPE r [<!ATTLIST row a CDATA '" + std::string(1000000, 'x') + "'>]><r><rows>" +
                    repeated("<row/>", 30000) + "</rows></r>";
         }},
        {"100 MB of attributes", [] { return "<r " + repeated("a='0123456789' ", 7000000) + "/>"; }},
        {"60 MB of attributes of different names", [] { return attributes(5000000); }},
        {"10,000 attributes of different names", [] { return attributes(10000); }},
        {"10,000 prefixes",
         [] {
             std::string text = "<r>";
             for (int i = 0; i < 100; ++i) {
                 text += "<e";
                 for (int k = 0; k < 100; ++k) {
                     text += " xmlns:p" + std::to_string(i * 100 + k) + "='u'";
                 }
                 text += ">";
             }
             return text + repeated("<p0:a/>", 1000) + repeated("</e>", 100) + "</r>";
         }},
        {"an attribute of 20 MB", [] { return "<r><rows><row a='" + std::string(20000000, 'x') + "'/></rows></r>"; },
         128},
        {"an entity of a file",
         [] { return std::string("<!DOCTYPE r [<!ENTITY f SYSTEM 'file:///etc/hostname'>]><r>&f;</r>"); }},
        {"an entity of a file that is not used",
         [] { return std::string("<!DOCTYPE r [<!ENTITY f SYSTEM 'file:///etc/hostname'>]><r/>"); }},
        {"a parameter entity of a host",
         [] { return std::string("<!DOCTYPE r [<!ENTITY % f SYSTEM 'http://localhost/x'>%f;]><r/>"); }},
        {"a document type elsewhere", [] { return std::string("<!DOCTYPE r SYSTEM 'http://localhost/x'><r/>"); }},
        {"bytes that are no UTF-8", [] { return std::string("<r><rows><row a='\xFF\xFE\xC0\x80'/></rows></r>"); }},
        {"an encoded surrogate", [] { return std::string("<r a='\xED\xA0\x80'/>"); }},
        {"a null byte", [] { return std::string("<r><rows><row a='x\0y'/></rows></r>", 32); }},
        {"a null byte behind the document", [] { return std::string("<r/>\0", 5); }},
        {"a null by reference", [] { return std::string("<r a='&#0;'/>"); }},
        {"deep nesting", [] { return repeated("<e>", 1000000) + repeated("</e>", 1000000); }},
        {"nesting without an end", [] { return repeated("<e>", 1000000); }},
        {"millions of elements", [] { return "<r>" + repeated("<e/>", 5000000) + "</r>"; }},
        {"millions of remarks", [] { return "<r>" + repeated("<!---->", 5000000) + "</r>"; }},
        {"a remark without an end", [] { return "<r><!--" + std::string(30000000, '-'); }, 128},
        {"an error in every byte", [] { return "<r>" + std::string(30000000, '&') + "</r>"; }, 128},
        {"a quote without an end", [] { return "<r a='" + std::string(30000000, ' '); }, 128},
        {"a name of 30 MB", [] { return "<" + std::string(30000000, 'n') + "/>"; }, 128},
        {"markup without markup", [] { return repeated("<", 5000000); }},
    };
}

class HostileDocuments : public CompanyTest {};

TEST_F(HostileDocuments, AreNoCollectionAndLeaveTheRows) {
    for (const Hostile& hostile : hostileDocuments()) {
        const std::string text = hostile.make();
        const auto rows = CashFlowCollection::Create();
        const auto old = rows->CreateCFObject();
        rows->Add(old);
        const Error error = errorOf([&] { rows->Load(text); });
        EXPECT_EQ(error.number(), 1002) << hostile.name;
        EXPECT_EQ(error.source(), "CashFlow") << hostile.name;
        EXPECT_EQ(rows->Count(), 1) << hostile.name;
        EXPECT_EQ(rows->Item(1), old) << hostile.name;
    }
}

TEST_F(HostileDocuments, AreNoVoucherAndReachNoDatabase) {
    for (const Hostile& hostile : hostileDocuments()) {
        std::uint8_t iPeriod = 9;
        std::int16_t iSignSeq = 8;
        std::int32_t iNo_id = 7;
        Date date;
        std::string outsideKey;
        EXPECT_ERROR(DataProvider().VoucherXmlToDB(connection, hostile.make(), iPeriod, iSignSeq, iNo_id, date,
                                                   outsideKey, true),
                     1005)
            << hostile.name;
        EXPECT_EQ(iPeriod, 9) << hostile.name;
        EXPECT_EQ(outsideKey, "") << hostile.name;
    }
    EXPECT_EQ(company.takeStatements(), Lines{});
    EXPECT_EQ(company.temporaryTables(), 0);
}

TEST_F(HostileDocuments, ChangeNothingOnTheWayThroughASave) {
    storeRow();
    for (const Hostile& hostile : hostileDocuments()) {
        std::string xml = hostile.make();
        EXPECT_ERROR(out.SaveCashFlowCol(connection, "GL_accvouch", "OUT", &xml), 1002) << hostile.name;
        EXPECT_ERROR(gl.SaveCashFlowColFromXml(connection, "gl_accvouch", 1, 1, 6, &xml), 1002) << hostile.name;
    }
    EXPECT_EQ(company.storedRows(), Lines{stored("02", "250.5")});
}

TEST_F(HostileDocuments, TakeLittleMemoryToRefuse) {
    if (underSanitizer) {
        GTEST_SKIP() << "a sanitizer keeps freed memory, so the peak tells nothing";
    }
    for (const Hostile& hostile : hostileDocuments()) {
        const std::string text = hostile.make();
        const long peak = peakOf([&] { return !XmlDocument::load(text).has_value(); });
        EXPECT_GE(peak, 0) << hostile.name;
        EXPECT_LE(peak, hostile.mostMiB) << hostile.name;
    }
}

TEST_F(HostileDocuments, RunningOutOfMemoryIsNotAVerdictOnTheDocument) {
    if (underSanitizer) {
        GTEST_SKIP() << "a sanitizer takes more memory than the limit leaves";
    }
    const std::string text = "<r>" + repeated("<row a='1' b='2' c='3' d='4'/>\r\n", 400000) + "</r>";
    const long peak = peakOf([&] {
        // From here on, allocations of more than a few pages fail.
        const rlimit none{1, 1};
        setrlimit(RLIMIT_AS, &none);
        try {
            return !XmlDocument::load(text).has_value() && false;
        } catch (const std::bad_alloc&) {
            return true;
        }
    });
    EXPECT_GE(peak, 0) << "the text was judged, or the process ended";
}

TEST_F(HostileDocuments, TheLargestHonestOnesAreTaken) {
    const auto rows = CashFlowCollection::Create();
    rows->UpdateCol(1, 1, 6, Date(41279.0));
    const std::string head = rows->Save();
    const std::string row = rows->CreateCFObject()->Save();
    std::string text = head.substr(0, head.find("</rows>"));
    constexpr int mostLines = 32767;
    for (int i = 0; i < mostLines; ++i) {
        text += row;
    }
    text += "</rows></root>";
    rows->Load(text);
    EXPECT_EQ(rows->Count(), mostLines);
    EXPECT_EQ(rows->Item(mostLines)->Fields().size(), 42U);
    rows->Load(attributes(500));
    EXPECT_EQ(rows->Item(1)->Count(), 500);
    rows->Load("<r><rows><row a='" + std::string(5000000, 'x') + "'/></rows></r>");
    EXPECT_EQ(toText(rows->Item(1)->Item("a")).size(), 5000000U);
    rows->Load("<!DOCTYPE r><r><rows>" + repeated("<row a='x &amp; y' b=\"='='\"/>", 1000) + "</rows></r>");
    EXPECT_EQ(rows->Item(1000)->Item("a"), Variant("x & y"));
    rows->Load("<r xmlns:p='u'>" + repeated("<e xmlns:q='u'/>", 10000) + "<rows><row p:a='1'/></rows></r>");
    EXPECT_EQ(rows->Item(1)->Item("a"), Variant("1"));
}

TEST_F(HostileDocuments, BeginWhereTheLimitsSay) {
    const auto taken = [](const std::string& text) { return XmlDocument::load(text).has_value(); };
    EXPECT_TRUE(taken(attributes(512)));
    EXPECT_FALSE(taken(attributes(513)));
    const auto prefixes = [](int count) {
        std::string text = "<r";
        for (int i = 0; i < count; ++i) {
            text += " xmlns:p" + std::to_string(i) + "='u'";
        }
        return text + "/>";
    };
    EXPECT_TRUE(taken(prefixes(64)));
    EXPECT_FALSE(taken(prefixes(65)));
    constexpr std::size_t mostTags = std::size_t{1} << 20U;
    EXPECT_TRUE(taken("<r>" + repeated("<e/>", mostTags - 2) + "</r>"));
    EXPECT_FALSE(taken("<r>" + repeated("<e/>", mostTags - 1) + "</r>"));
}

} // namespace
} // namespace z7::cashflow::test
