// The statements of docs/sql-server.md that find and remove doubled rows, as printed there. Its script of
// permissions needs a server with users, so no test runs it.

#include "adapters/sqlite/EmbeddedDatabase.h"
#include "z7cashflow/support/conversions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

using testing::ElementsAre;
using Lines = std::vector<std::string>;

/// The code blocks below a heading of the page, each with its lines.
std::vector<Lines> blocksBelow(const std::string& heading) {
    std::ifstream page(std::string(Z7_SOURCE_DIR) + "/docs/sql-server.md");
    std::vector<Lines> blocks;
    bool below = false;
    bool inBlock = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("#")) {
            below = line == heading;
        }
        const bool code = below && line.starts_with("    ");
        if (code && !inBlock) {
            blocks.emplace_back();
        }
        if (code) {
            blocks.back().push_back(line.substr(4));
        }
        inBlock = code;
    }
    return blocks;
}

class DoubledRowsTest : public testing::Test {
protected:
    DoubledRowsTest() : connection_(database_.open(std::int16_t{2024})), blocks_(blocksBelow("### Doubled rows")) {
        if (blocks_.size() != 2) {
            throw std::runtime_error("the page has other blocks than a query and a repair");
        }
        store("0A", 15, 1, "0111", "100.00"); // each row of the voucher twice, as two desks leave them
        store("0B", 15, 1, "0111", "100.00");
        store("0C", 15, 2, "0112", "-20.50");
        store("0D", 15, 2, "0112", "-20.50");
        store("0E", 16, 1, "0111", "100.00"); // a neighbour, and a line split over two items
        store("0F", 16, 1, "0112", "100.00");
        store("1A", 17, 1, "0111", "50.00"); // halves of a line
        store("1B", 17, 1, "0111", "50.00");
    }

    void store(const std::string& guid, int number, int line, const std::string& item, const std::string& amount) {
        connection_->Execute(
            "insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,csign,iNo_id,inid,cCashItem,ccode,md,mc) "
            "values(N'" +
            guid + "',2024,1,2,N''," + std::to_string(number) + "," + std::to_string(line) + ",N'" + item +
            "',N'6601'," + amount + ",0)");
    }

    [[nodiscard]] Lines texts(const std::string& query, const std::vector<const char*>& fields) {
        const auto records = connection_->Execute(query);
        Lines texts;
        for (; !records->atEnd(); records->MoveNext()) {
            std::string text;
            for (const char* field : fields) {
                text += (text.empty() ? "" : " ") + toTextOrEmpty(records->Fields().Item(field));
            }
            texts.push_back(text);
        }
        return texts;
    }
    [[nodiscard]] Lines doubled() {
        std::string query;
        for (const std::string& line : blocks_[0]) {
            query += line + "\n";
        }
        Lines found = texts(query, {"iNo_id", "inid", "cCashItem", "times"});
        std::sort(found.begin(), found.end());
        return found;
    }
    /// Runs the repair: a line that is not indented begins the next statement.
    void repair() {
        Lines statements;
        for (const std::string& line : blocks_[1]) {
            const bool goesOn = line.starts_with(" ");
            goesOn ? statements.back() += "\n" + line : statements.emplace_back(line);
        }
        ASSERT_EQ(statements.size(), 4U);
        ASSERT_EQ(statements.front(), "begin transaction");
        ASSERT_EQ(statements.back(), "commit");
        connection_->BeginTrans();
        connection_->Execute(statements[1]);
        connection_->Execute(statements[2]);
        connection_->CommitTrans();
    }

    EmbeddedDatabase database_;
    std::unique_ptr<Connection> connection_;
    std::vector<Lines> blocks_;
};

TEST_F(DoubledRowsTest, AreFoundByTheQueryOfThePage) {
    EXPECT_THAT(doubled(), ElementsAre("15 1 0111 2", "15 2 0112 2", "17 1 0111 2"));
}

TEST_F(DoubledRowsTest, AreRemovedFromOneVoucherByTheRepairOfThePage) {
    repair();
    EXPECT_THAT(doubled(), ElementsAre("17 1 0111 2")) << "another voucher's stay";
    EXPECT_THAT(texts("select RowGuid from gl_cashtable order by RowGuid", {"RowGuid"}),
                ElementsAre("0A", "0C", "0E", "0F", "1A", "1B"));
    repair();
    EXPECT_THAT(texts("select RowGuid from gl_cashtable where iNo_id=15 order by RowGuid", {"RowGuid"}),
                ElementsAre("0A", "0C"))
        << "a second run changes nothing";
}

} // namespace
} // namespace z7::cashflow::sqlite
