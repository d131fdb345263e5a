#include "host/account/csvReader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace z7::cashflow::host {
namespace {

using Fields = std::vector<std::optional<std::string>>;

std::vector<CsvRecord> recordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<CsvRecord> records;
    readCsv(stream, [&records](const CsvRecord& record) { records.push_back(record); });
    return records;
}

/// Reason and line of the error that a text raises.
std::pair<ReasonId, std::size_t> errorOf(const std::string& text) {
    try {
        recordsOf(text);
    } catch (const CsvError& error) {
        return {error.why().reason, error.line()};
    }
    ADD_FAILURE() << "no error was raised";
    return {};
}

TEST(CsvReader, ReadsRecordsWithTheirLines) {
    const auto records = recordsOf("a,b\n1,2\n\n3,4\n");
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].fields, (Fields{"a", "b"}));
    EXPECT_EQ(records[1].fields, (Fields{"1", "2"}));
    EXPECT_EQ(records[1].line, 2U);
    EXPECT_EQ(records[2].fields, (Fields{"3", "4"}));
    EXPECT_EQ(records[2].line, 4U) << "a blank line counts, but is no record";
}

TEST(CsvReader, TakesBothLineEndsAndAMissingLastOne) {
    const auto records = recordsOf("a,b\r\n1,2\r\n3,4");
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[1].fields, (Fields{"1", "2"}));
    EXPECT_EQ(records[1].line, 2U);
    EXPECT_EQ(records[2].fields, (Fields{"3", "4"}));
    EXPECT_EQ(records[2].line, 3U);
}

TEST(CsvReader, PassesOverAByteOrderMarkAtTheBeginningOnly) {
    EXPECT_EQ(recordsOf("\xEF\xBB\xBF"
                        "a,b\n")[0]
                  .fields,
              (Fields{"a", "b"}));
    EXPECT_EQ(recordsOf("a\n\xEF\xBB\xBF"
                        "b\n")[1]
                  .fields,
              (Fields{"\xEF\xBB\xBF"
                      "b"}));
}

TEST(CsvReader, DistinguishesNullFromTheEmptyText) {
    EXPECT_EQ(recordsOf("a,,\"\",\n")[0].fields, (Fields{"a", std::nullopt, "", std::nullopt}));
}

TEST(CsvReader, ReadsQuotedFields) {
    const auto records = recordsOf("\"a,b\",\"c\"\"d\",\"e\nf\",\" g \"\nlast\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].fields, (Fields{"a,b", "c\"d", "e\nf", " g "}));
    EXPECT_EQ(records[0].line, 1U);
    EXPECT_EQ(records[1].line, 3U) << "the quoted line break is a line of the file";
}

TEST(CsvReader, KeepsBlanksAtTheEndsOfUnquotedFields) {
    EXPECT_EQ(recordsOf("  a  ,\tb c\t, \n")[0].fields, (Fields{"  a  ", "\tb c\t", " "}));
    EXPECT_EQ(errorOf("\"a\" ,b\n"), (std::pair{ReasonId(CsvReason::strayQuote), std::size_t{1}}));
}

TEST(CsvReader, KeepsChineseAndFourByteCharacters) {
    EXPECT_EQ(recordsOf("借方,𠮷\n")[0].fields, (Fields{"借方", "𠮷"}));
}

TEST(CsvReader, AnEmptyFileHasNoRecord) {
    EXPECT_TRUE(recordsOf("").empty());
    EXPECT_TRUE(recordsOf("\n\r\n  \n").empty());
}

TEST(CsvReader, RefusesBytesThatAreNoUtf8) {
    EXPECT_EQ(errorOf("a\nb\xFFz\n"), (std::pair{ReasonId(CsvReason::invalidUtf8), std::size_t{2}}));
    EXPECT_EQ(errorOf("借\n\xE5\x80\n"), (std::pair{ReasonId(CsvReason::invalidUtf8), std::size_t{2}})) << "cut short";
    EXPECT_EQ(errorOf("\xED\xA0\x80\n"), (std::pair{ReasonId(CsvReason::invalidUtf8), std::size_t{1}}))
        << "a surrogate";
    EXPECT_EQ(errorOf("借\xC0\x80\n"), (std::pair{ReasonId(CsvReason::invalidUtf8), std::size_t{1}}))
        << "an overlong zero";
}

TEST(CsvReader, RecognisesGb18030) {
    EXPECT_EQ(errorOf("a\n1,\xBD\xE8\xB7\xBD\n"), (std::pair{ReasonId(CsvReason::gb18030), std::size_t{2}}));
    EXPECT_EQ(errorOf("\x81\x30\x84\x36\xBD\xE8\n"), (std::pair{ReasonId(CsvReason::gb18030), std::size_t{1}}))
        << "a character of four bytes";
    EXPECT_EQ(errorOf("caf\xE9,1\n"), (std::pair{ReasonId(CsvReason::invalidUtf8), std::size_t{1}})) << "Latin-1";
    EXPECT_EQ(errorOf("a\n1,\xBD"), (std::pair{ReasonId(CsvReason::invalidUtf8), std::size_t{2}})) << "half a pair";
}

TEST(CsvReader, RecognisesUtf16) {
    for (const std::string& text :
         {std::string("\xFF\xFE"
                      "a\0,\0\n\0",
                      8),
          std::string("\xFE\xFF\0a\0\n", 6), std::string("a\0,\0\n\0", 6), std::string("\0a\0\n", 4)}) {
        EXPECT_EQ(errorOf(text), (std::pair{ReasonId(CsvReason::utf16), std::size_t{1}}));
    }
}

TEST(CsvReader, RecognisesSpreadsheetDocuments) {
    EXPECT_EQ(errorOf("PK\x03\x04zip"), (std::pair{ReasonId(CsvReason::spreadsheet), std::size_t{1}}));
    EXPECT_EQ(errorOf("\xD0\xCF\x11\xE0old"), (std::pair{ReasonId(CsvReason::spreadsheet), std::size_t{1}}));
}

TEST(CsvReader, RefusesZeroBytes) {
    EXPECT_EQ(errorOf(std::string("a\nb\0c\n", 6)), (std::pair{ReasonId(CsvReason::zeroByte), std::size_t{2}}));
}

TEST(CsvReader, RefusesQuotesWhereNoneMayBe) {
    EXPECT_EQ(errorOf("x\na\"b,c\n"), (std::pair{ReasonId(CsvReason::strayQuote), std::size_t{2}}));
    EXPECT_EQ(errorOf("x\n\"a\"b,c\n"), (std::pair{ReasonId(CsvReason::strayQuote), std::size_t{2}}));
}

TEST(CsvReader, RefusesAnUnclosedQuoteAtTheLineWhereItsRecordBegins) {
    EXPECT_EQ(errorOf("x\ny\n\"a,b\nc\nd\n"), (std::pair{ReasonId(CsvReason::unclosedQuote), std::size_t{3}}));
}

TEST(CsvReader, RefusesARecordWithoutEnd) {
    std::string text = "x\n\"";
    for (int i = 0; i < 17; ++i) {
        text += std::string(std::size_t{1} << 20, 'a') + "\n";
    }
    EXPECT_EQ(errorOf(text), (std::pair{ReasonId(CsvReason::recordTooLong), std::size_t{2}}));
    EXPECT_EQ(errorOf("x\n" + std::string(std::size_t{17} << 20, 'a')),
              (std::pair{ReasonId(CsvReason::recordTooLong), std::size_t{2}}));
}

TEST(CsvReader, ReadsAcrossItsOwnChunks) {
    const std::string wide(70000, 'a');
    const auto records = recordsOf(wide + "," + wide + "\nlast\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].fields, (Fields{wide, wide}));
    EXPECT_EQ(records[1].line, 2U);
}

TEST(CsvReader, AnExceptionOfTheTakerEndsTheReading) {
    std::istringstream stream("a\nb\nc\n");
    int taken = 0;
    EXPECT_THROW(readCsv(stream,
                         [&taken](const CsvRecord&) {
                             if (++taken == 2) {
                                 throw std::domain_error("enough");
                             }
                         }),
                 std::domain_error);
    EXPECT_EQ(taken, 2);
}

} // namespace
} // namespace z7::cashflow::host
