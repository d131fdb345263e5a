#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The names and the order of a row's fields. Rows of the same shape share one, and hold only values themselves.
/// Names are compared exactly, case included.
class FieldShape {
public:
    /// The shape without fields.
    [[nodiscard]] static std::shared_ptr<const FieldShape> empty();

    /// Adds a name at the end. False, without any change, if the shape already has it.
    bool add(const std::string& name);
    /// The position of a name, from 0; empty if the shape does not have it.
    [[nodiscard]] std::optional<std::size_t> position(const std::string& name) const noexcept;
    /// The names in their order.
    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }
    /// The number of names.
    [[nodiscard]] std::size_t size() const noexcept { return names_.size(); }

    /// All names as XML attributes without a value: "a='' b='' ". Most fields of a row are empty, so a row is written
    /// as this text with its few values inserted.
    [[nodiscard]] std::string_view emptyAttributes() const noexcept { return attributes_; }
    /// Where in that text the value of the field at a position (from 0 to below size()) belongs.
    [[nodiscard]] std::size_t valuePlace(std::size_t position) const { return valuePlaces_[position]; }

private:
    std::vector<std::string> names_;
    std::string attributes_;
    std::vector<std::size_t> valuePlaces_;
    std::unordered_map<std::string, std::size_t> positions_;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
