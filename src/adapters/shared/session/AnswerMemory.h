#pragma once

#include "adapters/shared/cache/LruCache.h"
#include "adapters/shared/recordset/Backend.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace z7::cashflow::shared {

/// Decides which answers are remembered, and when that ends. Both functions take the text of a statement as it was
/// passed in.
struct AnswerPolicy {
    /// Whether the answer stays the same until endsMemory returns true.
    std::function<bool(std::string_view text)> isKept;
    /// Whether a statement, or the writing of its records (forWriting), may change a remembered answer.
    std::function<bool(std::string_view text, bool forWriting)> endsMemory;
};

/// Remembers the results of a connection's statements during one run, so that repeated queries are not sent.
/// Changes by other sessions are not seen meanwhile. The first statement of the run that may change a remembered
/// answer ends this: from then on nothing is remembered. Its size is bounded. It is used on one thread.
class AnswerMemory {
public:
    static constexpr std::size_t mostAnswers = 4096;
    static constexpr std::size_t longestStatement = 1024; ///< in bytes, including the place
    static constexpr std::size_t largestAnswer = 8192;    ///< in bytes

    explicit AnswerMemory(AnswerPolicy policy) : policy_(std::move(policy)) {}

    /// The result of a statement: a copy of what is remembered for it at the place, which names the database;
    /// otherwise the result of the function, which is then remembered if the policy says so. Errors of the
    /// function pass through and are not remembered.
    [[nodiscard]] Result answer(const std::string& place, const std::string& text, bool forWriting,
                                const std::function<Result()>& run);

    /// The number of remembered answers.
    [[nodiscard]] std::size_t size() const noexcept { return answers_.size(); }

private:
    AnswerPolicy policy_;
    bool ended_ = false;
    LruCache<RowSet> answers_{mostAnswers};
};

} // namespace z7::cashflow::shared
