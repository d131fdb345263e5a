#include "z7cashflow/model/FieldShape.h"

namespace z7::cashflow {

std::shared_ptr<const FieldShape> FieldShape::empty() {
    static const auto shape = std::make_shared<const FieldShape>();
    return shape;
}

bool FieldShape::add(const std::string& name) {
    const bool isNew = positions_.try_emplace(name, names_.size()).second;
    if (isNew) {
        names_.push_back(name);
        attributes_ += name;
        attributes_ += "='";
        valuePlaces_.push_back(attributes_.size());
        attributes_ += "' ";
    }
    return isNew;
}

std::optional<std::size_t> FieldShape::position(const std::string& name) const noexcept {
    const auto found = positions_.find(name);
    return found == positions_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace z7::cashflow
