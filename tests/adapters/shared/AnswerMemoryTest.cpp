#include "adapters/shared/session/AnswerMemory.h"

#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::shared {
namespace {

/// A memory for a database that counts its queries. Texts with "option" are remembered; texts with "change" end the
/// memory, as does writing records of a text with "option".
class AnswerMemoryTest : public ::testing::Test {
protected:
    [[nodiscard]] static std::unique_ptr<RowSet> rowOf(const std::string& value) {
        auto rows = std::make_unique<RowSet>(std::make_shared<const ColumnList>(std::vector<Column>{{"value"}}));
        rows->addText(value);
        return rows;
    }

    Result ask(const std::string& text, const std::string& place = "account", bool forWriting = false) {
        return memory_.answer(place, text, forWriting, [&]() -> Result {
            ++asked_;
            if (fails_) {
                raisePlatformError(::z7::cashflow::Reason::loginMissing);
            }
            return {answer_.empty() ? nullptr : rowOf(answer_), nullptr};
        });
    }
    [[nodiscard]] static std::string textOf(const Result& result) {
        return *result.rows->value(0, 0).get<std::string>();
    }

    AnswerMemory memory_{{[](std::string_view text) { return text.find("option") != std::string_view::npos; },
                          [](std::string_view text, bool forWriting) {
                              return text.find("change") != std::string_view::npos ||
                                     (forWriting && text.find("option") != std::string_view::npos);
                          }}};
    int asked_ = 0;
    bool fails_ = false;
    std::string answer_ = "TRUE";
};

TEST_F(AnswerMemoryTest, AsksARepeatedQuestionOnce) {
    EXPECT_EQ(textOf(ask("option a")), "TRUE");
    answer_ = "FALSE";
    EXPECT_EQ(textOf(ask("option a")), "TRUE");
    EXPECT_EQ(asked_, 1);
    EXPECT_EQ(textOf(ask("option b")), "FALSE") << "other arguments, another question";
    EXPECT_EQ(textOf(ask("voucher")), "FALSE");
    EXPECT_EQ(textOf(ask("voucher")), "FALSE");
    EXPECT_EQ(asked_, 4) << "what belongs to a voucher is asked each time";
}

TEST_F(AnswerMemoryTest, HandsOutCopies) {
    (void)ask("option");
    const Result taken = ask("option");
    taken.rows->replace(0, 0, Variant("mine"));
    taken.rows->addNullRow();
    EXPECT_EQ(textOf(ask("option")), "TRUE");
    EXPECT_EQ(ask("option").rows->rowCount(), 1U);
}

TEST_F(AnswerMemoryTest, KeepsPlacesApart) {
    (void)ask("option", "year=2013");
    answer_ = "FALSE";
    EXPECT_EQ(textOf(ask("option", "year=2014")), "FALSE");
    EXPECT_EQ(textOf(ask("option", "year=2013")), "TRUE");
    EXPECT_EQ(asked_, 2);
}

TEST_F(AnswerMemoryTest, DoesNotRememberAnError) {
    fails_ = true;
    EXPECT_THROW((void)ask("option"), Error);
    fails_ = false;
    EXPECT_EQ(textOf(ask("option")), "TRUE");
    EXPECT_EQ(asked_, 2);
}

TEST_F(AnswerMemoryTest, DoesNotRememberAStatementWithoutAResult) {
    answer_.clear();
    EXPECT_EQ(ask("option").rows, nullptr);
    EXPECT_EQ(ask("option").rows, nullptr);
    EXPECT_EQ(asked_, 2);
}

TEST_F(AnswerMemoryTest, EndsWithAStatementThatMayChangeAnAnswer) {
    (void)ask("option");
    answer_ = "FALSE";
    (void)ask("change the option");
    EXPECT_EQ(memory_.size(), 0U);
    EXPECT_EQ(textOf(ask("option")), "FALSE");
    answer_ = "TRUE"; // the transaction of the change was rolled back, say
    EXPECT_EQ(textOf(ask("option")), "TRUE") << "nothing is remembered any more";
    EXPECT_EQ(asked_, 4);
}

TEST_F(AnswerMemoryTest, EndsWithAChangeThatFailed) {
    (void)ask("option");
    fails_ = true;
    EXPECT_THROW((void)ask("change", "other"), Error);
    fails_ = false;
    answer_ = "FALSE";
    EXPECT_EQ(textOf(ask("option")), "FALSE");
}

TEST_F(AnswerMemoryTest, EndsWhereRecordsOfAnAnswerAreReadToBeWritten) {
    (void)ask("option");
    (void)ask("option", "account", true);
    EXPECT_EQ(asked_, 2) << "records to be written are read afresh";
    (void)ask("option");
    EXPECT_EQ(asked_, 3);
}

TEST_F(AnswerMemoryTest, StaysBounded) {
    for (std::size_t i = 0; i < 2 * AnswerMemory::mostAnswers; ++i) {
        (void)ask("option " + std::to_string(i));
    }
    EXPECT_EQ(memory_.size(), AnswerMemory::mostAnswers);
    answer_ = std::string(AnswerMemory::largestAnswer, 'x');
    (void)ask("option large");
    asked_ = 0;
    (void)ask("option large");
    EXPECT_EQ(asked_, 1) << "a large answer is not kept";
    answer_ = "TRUE";
    const std::string longText = "option " + std::string(AnswerMemory::longestStatement, 'x');
    (void)ask(longText);
    (void)ask(longText);
    EXPECT_EQ(asked_, 3) << "nor one to a long text";
}

} // namespace
} // namespace z7::cashflow::shared
