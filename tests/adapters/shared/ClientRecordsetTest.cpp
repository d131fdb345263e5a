#include "adapters/shared/recordset/ClientRecordset.h"

#include "adapters/shared/recordset/fieldValue.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::shared {
namespace {

/// Records what a recordset requests; refuses on demand.
struct RecordingWriter final : RowWriter {
    void insert(const std::vector<Change>& changes) override { record("insert", changes); }
    void update(const RowSet&, std::size_t row, const std::vector<Change>& changes) override {
        record("update " + std::to_string(row), changes);
    }
    void record(const std::string& what, const std::vector<Change>& changes) {
        if (refuse) {
            throw Error(23, "Test", "refused");
        }
        log += what;
        for (const Change& change : changes) {
            log += ' ' + std::to_string(change.column);
        }
        log += ';';
    }
    std::string log;
    bool refuse = false;
};

struct NoBackend final : Backend {
    std::shared_ptr<Runner> runner(Connection&) override { return nullptr; }
    std::shared_ptr<Runner> runner(const std::string&) override { return nullptr; }
};

class ClientRecordsetTest : public ::testing::Test {
protected:
    ClientRecordsetTest() : recordset_(std::make_shared<NoBackend>()), writer_(std::make_shared<RecordingWriter>()) {
        const auto columns = std::make_shared<const ColumnList>(
            std::vector<Column>{{"a", ColumnType::int16, 0}, {"B", ColumnType::text, 3}, {"A", ColumnType::text, 0}});
        Result result;
        result.rows = std::make_unique<RowSet>(columns);
        for (int i = 1; i <= 2; ++i) {
            result.rows->addInteger(i);
            result.rows->addText("x");
            result.rows->addNull();
        }
        result.writer = writer_;
        recordset_.present(std::move(result), "select", std::monostate());
    }
    int errorOf(const std::function<void()>& action) const {
        try {
            action();
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    }

    ClientRecordset recordset_;
    std::shared_ptr<RecordingWriter> writer_;
};

TEST_F(ClientRecordsetTest, FirstOfTwoColumnsWithOneName) {
    EXPECT_EQ(recordset_.Fields().Item("A"), Variant(std::int16_t{1}));
    EXPECT_EQ(recordset_.Fields().Item(2), Variant());
    EXPECT_TRUE(recordset_.Fields().has("b"));
    EXPECT_FALSE(recordset_.Fields().has("c"));
}

TEST_F(ClientRecordsetTest, ChangesAreWrittenOnce) {
    recordset_.Fields().Item("b", Variant("new"));
    recordset_.Fields().Item("B", Variant("two"));
    EXPECT_EQ(recordset_.Fields().Item("b"), Variant("two"));
    recordset_.Update();
    recordset_.Update();
    EXPECT_EQ(writer_->log, "update 0 1;");
    recordset_.MoveNext();
    recordset_.MoveFirst();
    EXPECT_EQ(recordset_.Fields().Item("b"), Variant("two"));
}

TEST_F(ClientRecordsetTest, AnUnfitValueLeavesTheColumn) {
    EXPECT_EQ(errorOf([&] { recordset_.Fields().Item("b", Variant("four")); }), 13);
    EXPECT_EQ(errorOf([&] { recordset_.Fields().Item("a", Variant("40000")); }), 13);
    EXPECT_EQ(errorOf([&] { recordset_.Fields().Item("a", Variant("1x")); }), 13);
    EXPECT_EQ(recordset_.Fields().Item("b"), Variant("x"));
    recordset_.Fields().Item("b", Variant("汉字汉"));
    EXPECT_EQ(recordset_.Fields().Item("b"), Variant("汉字汉"));
    recordset_.Fields().Item("b", Variant());
    EXPECT_EQ(recordset_.Fields().Item("b"), Variant());
}

TEST_F(ClientRecordsetTest, MovingWritesWhatIsPending) {
    recordset_.AddNew();
    EXPECT_FALSE(recordset_.atEnd());
    EXPECT_EQ(recordset_.Fields().Item("b"), Variant());
    recordset_.Fields().Item("a", Variant(3.0));
    recordset_.AddNew();
    recordset_.MoveFirst();
    EXPECT_EQ(writer_->log, "insert 0;insert;");
    EXPECT_EQ(recordset_.RecordCount(), 4);
    recordset_.Filter("a=3");
    EXPECT_EQ(recordset_.RecordCount(), 1);
}

TEST_F(ClientRecordsetTest, ARefusedChangeStaysPending) {
    writer_->refuse = true;
    recordset_.Fields().Item("a", Variant("7"));
    EXPECT_EQ(errorOf([&] { recordset_.MoveNext(); }), 23);
    EXPECT_EQ(errorOf([&] { recordset_.Filter("a=7"); }), 23);
    EXPECT_EQ(recordset_.Filter(), "");
    EXPECT_EQ(recordset_.Fields().Item("a"), Variant(std::int16_t{7}));
    writer_->refuse = false;
    recordset_.Filter("a=7");
    EXPECT_EQ(recordset_.RecordCount(), 1);
}

TEST_F(ClientRecordsetTest, AFilterAndANewRecord) {
    recordset_.Filter("a=2");
    recordset_.AddNew();
    recordset_.Fields().Item("a", Variant(std::int32_t{2}));
    recordset_.Update();
    EXPECT_EQ(recordset_.RecordCount(), 2);
    recordset_.MoveNext();
    EXPECT_TRUE(recordset_.atEnd());
    recordset_.Filter("a=2");
    EXPECT_EQ(recordset_.RecordCount(), 2);
}

TEST_F(ClientRecordsetTest, ClosingDropsWhatIsPending) {
    recordset_.AddNew();
    recordset_.Close();
    EXPECT_EQ(writer_->log, "");
    EXPECT_EQ(recordset_.State(), ObjectState::closed);
}

TEST(FieldValue, ConvertsByTheColumnsType) {
    const auto of = [](ColumnType type, const Variant& value) { return fieldValue({"x", type, 0}, value); };
    EXPECT_EQ(of(ColumnType::boolean, Variant("true")), Variant(true));
    EXPECT_EQ(of(ColumnType::boolean, Variant(std::int32_t{0})), Variant(false));
    EXPECT_EQ(of(ColumnType::byte, Variant(" 255 ")), Variant(std::uint8_t{255}));
    EXPECT_EQ(of(ColumnType::int16, Variant(2.5)), Variant(std::int16_t{2}));
    EXPECT_EQ(of(ColumnType::int32, Variant("1,000")), Variant(std::int32_t{1000}));
    EXPECT_EQ(of(ColumnType::money, Variant("1.23456")), Variant(1.2346));
    EXPECT_EQ(of(ColumnType::real, Variant("1e3")), Variant(1000.0));
    EXPECT_EQ(of(ColumnType::date, Variant("2013.1.5")), Variant(Date::fromCivil(2013, 1, 5)));
    EXPECT_EQ(of(ColumnType::text, Variant(1.50)), Variant("1.5"));
    EXPECT_EQ(of(ColumnType::text, Variant(Date::fromCivil(2013, 1, 5))), Variant("2013-01-05"));
    EXPECT_EQ(of(ColumnType::int16, Variant()), Variant());
}

TEST(FieldValue, RefusesWithOneNumber) {
    for (const auto& [type, value] : std::vector<std::pair<ColumnType, Variant>>{{ColumnType::boolean, "maybe"},
                                                                                 {ColumnType::byte, "256"},
                                                                                 {ColumnType::byte, "-1"},
                                                                                 {ColumnType::int16, 32768.0},
                                                                                 {ColumnType::int32, "2147483648"},
                                                                                 {ColumnType::money, "1e30"},
                                                                                 {ColumnType::real, ""},
                                                                                 {ColumnType::real, "1e999"},
                                                                                 {ColumnType::date, "05.01.2013"},
                                                                                 {ColumnType::date, "2013-02-30"},
                                                                                 {ColumnType::date, 1e9},
                                                                                 {ColumnType::real, Variant("12a")}}) {
        try {
            static_cast<void>(fieldValue({"cname", type, 0}, value));
            ADD_FAILURE() << static_cast<int>(type);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 13);
            EXPECT_NE(error.description().find("cname"), std::string::npos);
        }
    }
}

TEST(RowSet, WidensWhatDoesNotFit) {
    RowSet rows(
        std::make_shared<const ColumnList>(std::vector<Column>{{"a", ColumnType::byte, 0}, {"b", ColumnType::any, 0}}));
    rows.addInteger(300);
    rows.addInteger(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(rows.value(0, 0), Variant(std::int32_t{300}));
    EXPECT_EQ(rows.value(0, 1), Variant(9223372036854775807.0));
}

} // namespace
} // namespace z7::cashflow::shared
