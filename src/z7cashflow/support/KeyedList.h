#pragma once

#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/visibility.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <new>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// A list that keeps the order of insertion, is indexed from 1, and finds elements by a case-insensitive text key.
/// Access by index or key does not iterate over the list, nor does removal from either end; removing by key or
/// inserting in the middle compares the addresses of elements on the way.
template <class T> class KeyedList {
    using Elements = std::unordered_map<std::string, T>;
    using Order = std::deque<const typename Elements::value_type*>; // elements are not moved in memory

public:
    /// Iterates over the values in list order. Any change of the list invalidates it.
    class const_iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = const T*;
        using reference = const T&;

        const_iterator() = default;
        explicit const_iterator(typename Order::const_iterator at) : at_(at) {}
        reference operator*() const { return (*at_)->second; }
        pointer operator->() const { return &(*at_)->second; }
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
        typename Order::const_iterator at_;
    };

    KeyedList() = default;
    KeyedList(const KeyedList&) = delete; // its order refers to its own elements
    KeyedList& operator=(const KeyedList&) = delete;

    /// The number of elements.
    [[nodiscard]] std::size_t size() const noexcept { return order_.size(); }
    /// Whether the list has no elements.
    [[nodiscard]] bool empty() const noexcept { return order_.empty(); }
    /// Whether there is an element with that key.
    [[nodiscard]] bool contains(std::string_view key) const { return elements_.count(foldCase(key)) != 0; }
    /// The first element, for a range-based for loop.
    [[nodiscard]] const_iterator begin() const { return const_iterator(order_.begin()); }
    /// The end of that loop.
    [[nodiscard]] const_iterator end() const { return const_iterator(order_.end()); }

    /// Appends an element with a key. Error 457 if the key already exists; the list is then unchanged.
    void append(std::string_view key, T value) { insertAt(order_.end(), key, std::move(value)); }

    /// Inserts an element in front of the one whose key is before. Error 5 if that key does not exist, 457 if
    /// the new key already exists; the list is then unchanged.
    void insertBefore(std::string_view before, std::string_view key, T value) {
        insertAt(placeOf(element(before)), key, std::move(value));
    }

    /// The element at an index from 1. Error 9 outside the list.
    [[nodiscard]] const T& at(std::int64_t index) const { return order_[position(index)]->second; }
    /// The element of a key. Error 5 if there is none.
    [[nodiscard]] const T& at(std::string_view key) const { return element(key).second; }

    /// Removes the element at an index from 1. Error 9 outside the list.
    void remove(std::int64_t index) { removeAt(order_.begin() + static_cast<std::ptrdiff_t>(position(index))); }
    /// Removes the element with a key. Error 5 if there is none.
    void remove(std::string_view key) { removeAt(placeOf(element(key))); }

    /// Removes all elements.
    void clear() noexcept {
        order_.clear();
        elements_.clear();
    }

private:
    [[nodiscard]] std::size_t position(std::int64_t index) const {
        if (index < 1 || static_cast<std::uint64_t>(index) > order_.size()) {
            raisePlatformError(Reason::indexOutOfRange, {std::to_string(index)});
        }
        return static_cast<std::size_t>(index - 1);
    }

    [[nodiscard]] const typename Elements::value_type& element(std::string_view key) const {
        const auto found = elements_.find(foldCase(key));
        if (found == elements_.end()) {
            raisePlatformError(Reason::keyUnknown, {shortened(key)});
        }
        return *found;
    }

    [[nodiscard]] typename Order::const_iterator placeOf(const typename Elements::value_type& element) const {
        return std::find(order_.begin(), order_.end(), &element);
    }

    void insertAt(typename Order::const_iterator place, std::string_view key, T value) {
        const auto [element, isNew] = elements_.try_emplace(foldCase(key), std::move(value));
        if (!isNew) {
            raisePlatformError(Reason::keyExists, {shortened(key)});
        }
        try {
            order_.insert(place, &*element);
        } catch (const std::bad_alloc&) {
            elements_.erase(element);
            throw;
        }
    }

    void removeAt(typename Order::const_iterator place) {
        const std::string& key = (*place)->first;
        order_.erase(place);
        elements_.erase(elements_.find(key));
    }

    Elements elements_; ///< by their folded keys
    Order order_;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
