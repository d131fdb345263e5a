#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace z7::cashflow {

/// The names of a row's fields and their order, which rows of one shape share: a row itself holds values only.
/// Names are compared exactly, case included.
class FieldShape {
public:
    /// The shape without fields.
    [[nodiscard]] static std::shared_ptr<const FieldShape> empty();

    /// Adds a name at the end. False, and no change, if the shape has it already.
    bool add(const std::string& name);
    /// The place of a name, from 0, or nothing.
    [[nodiscard]] std::optional<std::size_t> position(const std::string& name) const noexcept;
    /// The names in their order.
    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }
    /// The number of names.
    [[nodiscard]] std::size_t size() const noexcept { return names_.size(); }

private:
    std::vector<std::string> names_;
    std::unordered_map<std::string, std::size_t> positions_;
};

} // namespace z7::cashflow
