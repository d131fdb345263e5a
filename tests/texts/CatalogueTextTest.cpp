#include "texts/CatalogueText.h"

#include "texts/translation.h"
#include "z7cashflow/support/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace z7::cashflow::texts {
namespace {

using test::hasChinese;
using test::placesOf;

/// Every key that the library asks for, or will: the list that the catalogue must hold, no more and no less.
const std::set<std::string>& expectedKeys() {
    static const std::set<std::string> keys = [] {
        std::set<std::string> names;
        for (const char* number :
             {"00001", "00002", "00003", "00004", "00005", "00006", "00009", "00010",      "00011",
              "00012", "00013", "00016", "00017", "00018", "00020", "00021", "00022",      "00023",
              "00025", "00032", "00033", "00034", "00035", "00036", "00037", "00038",      "00043",
              "00045", "00049", "00052", "00054", "00056", "00058", "00059", "00060",      "00061",
              "00062", "00063", "00064", "00065", "00207", "00208", "00209", "Z711.00001", "Z790.00001"}) {
            names.insert(std::string("Z7.CW.GL.CashFlow.") + number);
        }
        names.insert({"Z7.CW.APAR.ARAPMain.Add_Line", "Z7.CW.APAR.ARAPMain.Delete_Row",
                      "Z7.CW.GL.ZWSQL.EndItem.frmXmDlmx.Picture1.Toolbar1.Button7_7.Caption", "Z7.GL.USZZPUB.00001",
                      "Z7.GL.USZZPUB.00004", "Z7.GL.USZZPUB.00011", "Z7.GL.USZZPUB.00012", "Z7.GL.USZZPUB.00571",
                      "Z7.GL.ZZPZ.00003", "Z7.GL.ZZPZ.00192", "Z7.GL.ZZPZ.00234", "Z7.GL.ZZPZ.00352",
                      "Z7.GL.ZZPZ.01154", "Z7.GL.ZZPZ.02010"});
        return names;
    }();
    return keys;
}

TEST(CatalogueText, HoldsExactlyTheKeysOfTheLibrary) {
    std::set<std::string> keys;
    for (const ResourceText& text : resourceTexts()) {
        EXPECT_TRUE(keys.emplace(text.key).second) << text.key << " stands twice";
    }
    EXPECT_EQ(keys, expectedKeys());
}

TEST(CatalogueText, HoldsEveryKeyInBothLanguages) {
    CatalogueText chinese(Language::chinese);
    CatalogueText english(Language::english);
    for (const std::string& key : expectedKeys()) {
        const std::string inChinese = chinese.text(key);
        const std::string inEnglish = english.text(key);
        EXPECT_TRUE(hasChinese(inChinese)) << key << ": " << inChinese;
        EXPECT_FALSE(inEnglish.empty()) << key;
        EXPECT_FALSE(hasChinese(inEnglish)) << key << ": " << inEnglish;
        EXPECT_EQ(placesOf(inChinese), placesOf(inEnglish)) << key;
    }
}

TEST(CatalogueText, AnUnknownKeyIsAnErrorThatNamesIt) {
    for (const Language language : {Language::chinese, Language::english}) {
        CatalogueText text(language);
        try {
            static_cast<void>(text.text("Z7.CW.GL.CashFlow.99999"));
            ADD_FAILURE() << "no error was raised";
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), errors::badArgument);
            EXPECT_THAT(error.description(), testing::HasSubstr("Z7.CW.GL.CashFlow.99999"));
        }
        CatalogueFormattedText formatted(language);
        EXPECT_THROW(static_cast<void>(formatted.text("", {})), Error);
    }
}

TEST(CatalogueText, ComparesKeysExactly) {
    CatalogueText text(Language::english);
    EXPECT_THROW(static_cast<void>(text.text("z7.cw.gl.cashflow.00001")), Error);
}

TEST(CatalogueText, TheTwoFiguresOfADifferenceReadWell) {
    CatalogueText english(Language::english);
    CatalogueText chinese(Language::chinese);
    const auto sentence = [](CatalogueText& text, const char* label, const char* side) {
        return text.text(std::string("Z7.CW.GL.CashFlow.") + label) +
               text.text(std::string("Z7.CW.GL.CashFlow.") + side) + "50.00";
    };
    EXPECT_EQ(sentence(english, "00003", "00004"), "Cash moved by the voucher: debit 50.00");
    EXPECT_EQ(sentence(english, "00006", "00005"), "Sum of the cash-flow rows: credit 50.00");
    EXPECT_EQ(sentence(chinese, "00003", "00004"), "凭证现金科目净额：借方 50.00");
    EXPECT_EQ(sentence(chinese, "00006", "00005"), "现金流量行净额：贷方 50.00");
}

TEST(CatalogueText, FillsPlacesAndANullWithNothing) {
    CatalogueFormattedText formatted(Language::english);
    EXPECT_EQ(formatted.text("Z7.GL.USZZPUB.00571", {Variant("")}), "The column widths have changed. Save them?");
    EXPECT_EQ(formatted.text("Z7.GL.USZZPUB.00571", {Variant()}), "The column widths have changed. Save them?");
    EXPECT_EQ(formatted.text("Z7.GL.USZZPUB.00571", {Variant(std::int32_t{7})}),
              "The column widths have changed. Save them7?");
}

TEST(CatalogueText, TheQuestionWhetherToReplaceATemplateReadsWell) {
    CatalogueText english(Language::english);
    EXPECT_EQ(english.text("Z7.CW.GL.CashFlow.00065") + english.text("Z7.CW.GL.CashFlow.00038"),
              "A template for this account and side already exists. Replace it?");
    CatalogueText chinese(Language::chinese);
    EXPECT_EQ(chinese.text("Z7.CW.GL.CashFlow.00065") + chinese.text("Z7.CW.GL.CashFlow.00038"),
              "该科目在此方向上已有取数关系，是否覆盖？");
}

TEST(CatalogueText, DirectionWordsInChineseAreTheWordsOfTheLedger) {
    CatalogueText chinese(Language::chinese);
    EXPECT_EQ(chinese.text("Z7.GL.USZZPUB.00011"), "借");
    EXPECT_EQ(chinese.text("Z7.GL.USZZPUB.00012"), "贷");
    EXPECT_EQ(chinese.text("Z7.GL.USZZPUB.00001"), "平");
}

TEST(CatalogueText, CaptionsThatGoIntoXmlNeedNoEscape) {
    for (const ResourceText& text : resourceTexts()) {
        if (text.key >= "Z7.CW.GL.CashFlow.00058" && text.key <= "Z7.CW.GL.CashFlow.00062") {
            EXPECT_EQ(text.chinese.find_first_of("&<>'\""), std::string_view::npos) << text.key;
            EXPECT_EQ(text.english.find_first_of("&<>'\""), std::string_view::npos) << text.key;
        }
    }
}

// docs/texts.md has a section for each key: the English and the Chinese text between bars, and then where it is used.
TEST(CatalogueText, IsListedInTheDocumentsAsItIs) {
    std::ifstream file(std::string(Z7_SOURCE_DIR) + "/docs/texts.md");
    ASSERT_TRUE(file);
    const std::string document((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::size_t position = document.find("\n### ");
    for (const ResourceText& text : resourceTexts()) {
        const std::string section = "\n### " + std::string(text.key) + "\n\n    |" + std::string(text.english) +
                                    "|\n    |" + std::string(text.chinese) + "|\n\n";
        ASSERT_EQ(document.compare(position, section.size(), section), 0)
            << "expected" << section << "found" << document.substr(position, section.size());
        EXPECT_NE(document.substr(position + section.size(), 1), "\n") << text.key << " has no explanation";
        position = document.find("\n### ", position + 1);
    }
    EXPECT_EQ(position, std::string::npos) << "the document lists more than the catalogue";
}

} // namespace
} // namespace z7::cashflow::texts
