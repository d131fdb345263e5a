#include "adapters/sqlite/spellings.h"

#include "adapters/sqlite/functions.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>

namespace z7::cashflow::sqlite {

const std::vector<std::string> spellings{"1001",
                                         "1001  ",
                                         "1002",
                                         "1002 ",
                                         "A",
                                         "a ",
                                         "k",
                                         "\u212A", // kelvin
                                         "K ",
                                         "\u017F",
                                         "s",
                                         "S  ",
                                         "\u212B ",
                                         "\u00E5",
                                         "\u1E9E",
                                         "\u00DF", // ß
                                         "ss",
                                         "\u5E93\u5B58",
                                         "\u5E93\u5B58 ",
                                         "\u0130",
                                         "i\u0307"};

bool equalTexts(const std::string& a, const std::string& b) { return compareTexts(a, b) == 0; }

std::vector<std::string> distinctSpellings(bool longestFirst) {
    std::vector<std::string> texts = spellings;
    std::stable_sort(texts.begin(), texts.end(), [longestFirst](const auto& a, const auto& b) {
        return longestFirst ? a.size() > b.size() : a.size() < b.size();
    });
    std::vector<std::string> distinct;
    for (const std::string& text : texts) {
        if (std::none_of(distinct.begin(), distinct.end(),
                         [&](const auto& known) { return equalTexts(known, text); })) {
            distinct.push_back(text);
        }
    }
    return distinct;
}

void prepareStatistics(const std::filesystem::path& file, Statistics statistics) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.string().c_str(), &handle), SQLITE_OK);
    prepareSession(handle, std::int16_t{2013});
    const char* text = statistics == Statistics::none       ? "delete from sqlite_stat1"
                       : statistics == Statistics::gathered ? "analyze"
                                                            : "select 1";
    EXPECT_EQ(sqlite3_exec(handle, text, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
    sqlite3_close(handle);
}

std::vector<std::string> rowsOf(cashflow::Connection& connection, const std::string& query) {
    std::vector<std::string> rows;
    const auto found = connection.Execute(query);
    for (; !found->atEnd(); found->MoveNext()) {
        std::string row;
        for (int i = 0; i < found->Fields().Count(); ++i) {
            row += toTextOrEmpty(found->Fields().Item(i)) + "|";
        }
        rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

} // namespace z7::cashflow::sqlite
