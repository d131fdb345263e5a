#pragma once

#include "adapters/shared/cache/LruCache.h"
#include "adapters/tsql/Rewriting.h"
#include "adapters/tsql/Shape.h"
#include "z7cashflow/support/visibility.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::tsql {

/// Whether the rewriting of a text can be used for later statements of its shape.
[[nodiscard]] bool isWorthKeeping(std::string_view text, const Rewriting& rewriting);

/// The rewritings of a session's statements, found by the statements' shapes: for a known shape, one pass over the
/// text is enough. KnownStep is what an adapter keeps with a step to run it again; it has a member "step" of type
/// Step, which is filled here.
template <class KnownStep> class RewritingCache {
public:
    using Steps = std::vector<KnownStep>;

    /// Keeps at most this number of shapes and evicts the least recently used.
    explicit RewritingCache(std::size_t capacity) : entries_(capacity) {}

    /// The steps of a statement or a batch: the same object for all texts of one shape as long as it is cached.
    /// Shared with the caller, who may still run them after they were evicted. Errors of shapeOf and rewrite
    /// pass through.
    [[nodiscard]] std::shared_ptr<Steps> stepsOf(std::string_view text) {
        shapeOf(text, shape_);
        if (const Entry* known = entries_.find(shape_.key); known != nullptr && hasSameTexts(known->inlined)) {
            return known->steps;
        }
        Rewriting rewriting = rewrite(text);
        const bool keep = isWorthKeeping(text, rewriting);
        auto steps = std::make_shared<Steps>();
        for (Step& step : rewriting.steps) {
            steps->emplace_back().step = std::move(step);
        }
        if (keep) {
            Entry entry{steps, {}};
            for (const int literal : rewriting.inlined) {
                entry.inlined.push_back({literal, std::string(textOf(literal))});
            }
            entries_.insert(shape_.key, std::move(entry));
        }
        return steps;
    }
    /// The literals of the last text passed to stepsOf. They point into that text.
    [[nodiscard]] const std::vector<Literal>& literals() const noexcept { return shape_.literals; }

    /// The number of cached shapes.
    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }
    void clear() { entries_.clear(); }

private:
    /// A literal that is part of the rewritten text, with its value.
    struct Inlined {
        int literal = 0;
        std::string text;
    };
    struct Entry {
        std::shared_ptr<Steps> steps;
        std::vector<Inlined> inlined;
    };

    [[nodiscard]] std::string_view textOf(int literal) const {
        return shape_.literals[static_cast<std::size_t>(literal)].source;
    }
    [[nodiscard]] bool hasSameTexts(const std::vector<Inlined>& inlined) const {
        return std::all_of(inlined.begin(), inlined.end(),
                           [this](const Inlined& was) { return textOf(was.literal) == was.text; });
    }

    Shape shape_; ///< of the last text
    shared::LruCache<Entry> entries_;
};

} // namespace z7::cashflow::tsql

Z7_PUBLIC_END
