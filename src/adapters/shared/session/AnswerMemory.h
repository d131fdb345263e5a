#pragma once

#include "adapters/shared/cache/LruCache.h"
#include "adapters/shared/recordset/Backend.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace z7::cashflow::shared {

/// Which answers a memory keeps, and what ends it. Both routines take a statement's text as it was handed in.
struct AnswerPolicy {
    /// Whether the answer stays the same until endsMemory says otherwise.
    std::function<bool(std::string_view text)> isKept;
    /// Whether a statement, or the writing of its records (forWriting), may change an answer that is kept.
    std::function<bool(std::string_view text, bool forWriting)> endsMemory;
};

/// Remembers answers of a connection for one run, so that a question that comes again is not sent. What other sessions
/// change meanwhile is not seen. The first statement of the run that may change an answer ends the memory: nothing is
/// remembered any more. Its size is bounded whatever the statements are. It is used on one thread.
class AnswerMemory {
public:
    static constexpr std::size_t mostAnswers = 4096;
    static constexpr std::size_t longestStatement = 1024; ///< in bytes, with the place
    static constexpr std::size_t largestAnswer = 8192;    ///< in bytes

    explicit AnswerMemory(AnswerPolicy policy) : policy_(std::move(policy)) {}

    /// The result of a statement: a copy of what is remembered of it for the place, which names the database, else what
    /// the routine returns, which is then remembered if it is to be. What the routine raises comes out and is not
    /// remembered.
    [[nodiscard]] Result answer(const std::string& place, const std::string& text, bool forWriting,
                                const std::function<Result()>& run);

    /// The number of answers that are remembered.
    [[nodiscard]] std::size_t size() const noexcept { return answers_.size(); }

private:
    AnswerPolicy policy_;
    bool ended_ = false;
    LruCache<RowSet> answers_{mostAnswers};
};

} // namespace z7::cashflow::shared
