#pragma once

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace z7::cashflow {

/// A list that keeps its order of insertion, is indexed from 1, and finds an element by a text key without regard to
/// letter case. Neither an index nor a key makes it walk the list, and taking elements from the front costs no more
/// than taking them from the end.
///
/// Each element carries a label that rises along the list; a key leads to the label, and the label to the position by
/// halving. Labels leave room between neighbours, so that an insertion seldom needs to hand out new ones.
template <class T> class KeyedList {
    struct Entry {
        std::uint64_t label;
        const std::string* foldedKey; ///< the key inside labels_, whose nodes stay where they are
        T value;
    };
    using Entries = std::deque<Entry>;

public:
    /// Walks the values in list order. Any change of the list ends its validity.
    class const_iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = const T*;
        using reference = const T&;

        const_iterator() = default;
        explicit const_iterator(typename Entries::const_iterator at) : at_(at) {}
        reference operator*() const { return at_->value; }
        pointer operator->() const { return &at_->value; }
        const_iterator& operator++() {
            ++at_;
            return *this;
        }
        const_iterator operator++(int) {
            auto before = *this;
            ++at_;
            return before;
        }
        friend bool operator==(const const_iterator& a, const const_iterator& b) { return a.at_ == b.at_; }

    private:
        typename Entries::const_iterator at_;
    };

    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }
    [[nodiscard]] bool empty() const noexcept { return entries_.empty(); }
    [[nodiscard]] bool contains(std::string_view key) const { return labels_.count(foldCase(key)) != 0; }
    [[nodiscard]] const_iterator begin() const { return const_iterator(entries_.begin()); }
    [[nodiscard]] const_iterator end() const { return const_iterator(entries_.end()); }

    /// Appends under a key. Error 457 if the key is there already; the list then stays as it was.
    void append(std::string_view key, T value) { insertAt(entries_.size(), key, std::move(value)); }

    /// Inserts an element in front of the one whose key is before. Error 5 if there is no such key, 457 if the new
    /// key is there already; the list then stays as it was.
    void insertBefore(std::string_view before, std::string_view key, T value) {
        insertAt(position(before), key, std::move(value));
    }

    /// The element at an index from 1. Error 9 outside the list.
    [[nodiscard]] const T& at(std::int64_t index) const { return entries_[position(index)].value; }
    /// The element of a key. Error 5 if there is none.
    [[nodiscard]] const T& at(std::string_view key) const { return entries_[position(key)].value; }

    /// Takes out the element at an index from 1. Error 9 outside the list.
    void remove(std::int64_t index) { removeAt(position(index)); }
    /// Takes out the element of a key. Error 5 if there is none.
    void remove(std::string_view key) { removeAt(position(key)); }

    void clear() noexcept {
        entries_.clear();
        labels_.clear();
    }

private:
    static constexpr std::uint64_t gap = std::uint64_t{1} << 24U;

    [[nodiscard]] std::size_t position(std::int64_t index) const {
        if (index < 1 || static_cast<std::uint64_t>(index) > entries_.size()) {
            raisePlatformError(Reason::indexOutOfRange, {std::to_string(index)});
        }
        return static_cast<std::size_t>(index - 1);
    }

    [[nodiscard]] std::size_t position(std::string_view key) const {
        const auto found = labels_.find(foldCase(key));
        if (found == labels_.end()) {
            raisePlatformError(Reason::keyUnknown, {shortened(key)});
        }
        const auto at = std::lower_bound(entries_.begin(), entries_.end(), found->second,
                                         [](const Entry& entry, std::uint64_t label) { return entry.label < label; });
        return static_cast<std::size_t>(at - entries_.begin());
    }

    void insertAt(std::size_t position, std::string_view key, T value) {
        const auto [node, isNew] = labels_.try_emplace(foldCase(key), 0);
        if (!isNew) {
            raisePlatformError(Reason::keyExists, {shortened(key)});
        }
        try {
            entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(position),
                            Entry{0, &node->first, std::move(value)});
        } catch (const std::bad_alloc&) {
            labels_.erase(node);
            throw;
        }
        const std::uint64_t low = position == 0 ? 0 : entries_[position - 1].label;
        const bool last = position + 1 == entries_.size();
        const std::uint64_t high = last ? std::numeric_limits<std::uint64_t>::max() : entries_[position + 1].label;
        if (high - low < 2) {
            relabel();
            return;
        }
        const std::uint64_t label = low + (last ? std::min(gap, (high - low) / 2) : (high - low) / 2);
        entries_[position].label = label;
        node->second = label;
    }

    void relabel() {
        std::uint64_t label = 0;
        for (Entry& entry : entries_) {
            entry.label = label += gap;
            labels_.find(*entry.foldedKey)->second = label;
        }
    }

    void removeAt(std::size_t position) {
        const auto at = entries_.begin() + static_cast<std::ptrdiff_t>(position);
        labels_.erase(*at->foldedKey);
        entries_.erase(at);
    }

    Entries entries_;
    std::unordered_map<std::string, std::uint64_t> labels_;
};

} // namespace z7::cashflow
