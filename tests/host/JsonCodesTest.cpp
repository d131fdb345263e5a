#include "host/cli/jsonText.h"
#include "host/text/ChineseReason.h"
#include "host/text/codeText.h"
#include "host/text/enumWord.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>

namespace z7::cashflow::host {
namespace {

using Json = nlohmann::ordered_json;
using workbench::Finding;

const std::filesystem::path codesFile = std::filesystem::path(Z7_SOURCE_DIR) / "docs" / "schemas" / "codes.json";

Json listed() {
    std::ifstream stream(codesFile);
    return Json::parse(stream);
}

/// Codes with what they mean. One that several rooms have names each of their texts.
class Codes {
public:
    void add(const std::string& code, std::string_view meaning) {
        std::string& text = meanings_[code];
        if (text.find(meaning) == std::string::npos) {
            text += (text.empty() ? "" : "; or: ") + std::string(meaning);
        }
    }
    [[nodiscard]] bool has(const std::string& code) const { return meanings_.contains(code); }
    [[nodiscard]] Json json() const {
        Json list = Json::array();
        for (const auto& [code, meaning] : meanings_) {
            list.push_back({{"const", code}, {"description", meaning}});
        }
        return list;
    }

private:
    std::map<std::string, std::string> meanings_;
};

/// Every reason of every room, every finding, and those texts of the program that the file lists.
Codes expectedCodes(const Json& file) {
    Codes codes;
    for (const ReasonRoom& room : reasonRooms()) {
        for (std::size_t place = 0; place < room.english.size(); ++place) {
            if (const std::string_view name = room.names[place]; name != "none" && name != "verbatim") {
                codes.add(wordOf(name), room.english[place].english);
            }
        }
    }
    for (int kind = 0; kind <= static_cast<int>(Finding::Kind::noLedgerVoucher); ++kind) {
        codes.add(findingWord(static_cast<Finding::Kind>(kind)), "the first of the findings");
    }
    std::map<std::string, std::string_view> texts;
    for (const HostTextEntry& entry : hostTexts()) {
        if (const std::string code = codeText(entry.id); !texts.contains(code)) {
            texts.emplace(code, entry.english);
        }
    }
    for (const Json& entry : file.at("$defs").at("code").at("anyOf")) {
        if (const auto text = texts.find(entry.at("const")); text != texts.end()) {
            codes.add(text->first, text->second);
        }
    }
    return codes;
}

TEST(JsonCodes, AreListedWithTheirMeaning) {
    Json file = listed();
    const Json expected = expectedCodes(file).json();
    Json& found = file["$defs"]["code"]["anyOf"];
    const char* renew = std::getenv("Z7_RENEW_GOLDEN");
    if (renew != nullptr && std::string_view(renew) == "1") {
        found = expected;
        std::ofstream(codesFile) << file.dump(1) << '\n';
    }
    EXPECT_EQ(found.dump(1), expected.dump(1)) << "Z7_RENEW_GOLDEN=1 rewrites " << codesFile;
}

TEST(JsonCodes, AreTheNamesInTheSources) {
    EXPECT_EQ(codeText(HostText::fileMissing), "file-missing");
    EXPECT_EQ(codeText(ReasonId(Reason::xmlNotWellFormed)), "xml-not-well-formed");
    EXPECT_EQ(codeText(ReasonId(Reason::none)), "");
    EXPECT_EQ(codeText(ReasonId(Reason::verbatim)), "");
}

TEST(JsonCodes, ASuggestionDoesNotChangeTheCode) {
    EXPECT_EQ(codeText(HostText::optionUnknownNear), codeText(HostText::optionUnknown));
    EXPECT_EQ(codeText(HostText::commandUnknownNear), codeText(HostText::commandUnknown));
    EXPECT_EQ(codeText(HostText::itemNear), codeText(HostText::itemMissing));
}

TEST(JsonCodes, AnErrorHasThatOfItsReason) {
    EXPECT_EQ(codeText(Error("x", {Reason::notADate, {"1"}})), "not-a-date");
    EXPECT_EQ(codeText(Error(1222, "ODBC", "locked", "HYT00")), "database-failed");
    EXPECT_EQ(codeText(Error(10009, "CashFlow", "differs")), "voucher-failed");
}

} // namespace
} // namespace z7::cashflow::host
