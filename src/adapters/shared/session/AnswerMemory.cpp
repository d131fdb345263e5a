#include "adapters/shared/session/AnswerMemory.h"

namespace z7::cashflow::shared {

Result AnswerMemory::answer(const std::string& place, const std::string& text, bool forWriting,
                            const std::function<Result()>& run) {
    if (ended_) {
        return run();
    }
    if (policy_.endsMemory(text, forWriting)) {
        ended_ = true;
        answers_.clear();
        return run();
    }
    const std::string key = place + '\n' + text;
    if (forWriting || key.size() > longestStatement || !policy_.isKept(text)) {
        return run();
    }
    if (const RowSet* known = answers_.find(key)) {
        return {std::make_unique<RowSet>(*known), nullptr};
    }
    Result result = run();
    if (result.rows != nullptr && result.rows->byteSize() <= largestAnswer) {
        answers_.insert(key, *result.rows);
    }
    return result;
}

} // namespace z7::cashflow::shared
