#pragma once

#include "z7cashflow/support/Error.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace z7::cashflow {

/// A map from names to values that keeps the order of insertion and compares names exactly, case included.
template <class T> class OrderedMap {
public:
    /// Adds a value under a new name. Error 457 if the name is there already; the map then stays as it was.
    void add(const std::string& name, T value) {
        if (!positions_.try_emplace(name, names_.size()).second) {
            raisePlatformError(Reason::fieldExists, {name});
        }
        names_.push_back(name);
        values_.push_back(std::move(value));
    }

    /// The value of a name, or a null pointer. Owned by the map; valid until the next add.
    [[nodiscard]] const T* find(const std::string& name) const noexcept {
        const auto found = positions_.find(name);
        return found == positions_.end() ? nullptr : &values_[found->second];
    }

    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }
    /// The values in the order of the names. Valid until the next add.
    [[nodiscard]] const std::vector<T>& values() const noexcept { return values_; }
    [[nodiscard]] std::size_t size() const noexcept { return names_.size(); }

private:
    std::vector<std::string> names_;
    std::vector<T> values_;
    std::unordered_map<std::string, std::size_t> positions_;
};

} // namespace z7::cashflow
