#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// A bounded map from texts to values that evicts the least recently used value.
template <class Value> class LruCache {
public:
    explicit LruCache(std::size_t capacity) : capacity_(capacity) {}

    /// The value, which becomes the most recently used, or a null pointer. Valid until the next insert or
    /// clear.
    [[nodiscard]] Value* find(std::string_view key) {
        const auto found = places_.find(key);
        if (found == places_.end()) {
            return nullptr;
        }
        if (found->second != entries_.begin()) {
            entries_.splice(entries_.begin(), entries_, found->second);
        }
        return &found->second->second;
    }
    /// Stores a value for a key, replacing an earlier one.
    Value& insert(std::string key, Value value) {
        erase(key);
        if (entries_.size() >= capacity_) {
            places_.erase(entries_.back().first);
            entries_.pop_back();
        }
        entries_.emplace_front(std::move(key), std::move(value));
        places_.emplace(entries_.front().first, entries_.begin());
        return entries_.front().second;
    }
    void erase(std::string_view key) {
        if (const auto found = places_.find(key); found != places_.end()) {
            const auto entry = found->second;
            places_.erase(found);
            entries_.erase(entry);
        }
    }
    void clear() {
        places_.clear();
        entries_.clear();
    }
    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }

private:
    using Entries = std::list<std::pair<std::string, Value>>;

    std::size_t capacity_;
    Entries entries_;
    std::unordered_map<std::string_view, typename Entries::iterator> places_; ///< the keys are stored in the entries
};

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
