#pragma once

#include "z7cashflow/model/CashFlowStructItem.h"
#include "z7cashflow/model/FieldShape.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The field schema of cash-flow rows: an ordered map from field name to CashFlowStructItem. Names are
/// compared exactly, case included.
class CashFlowStruct {
public:
    /// Adds a field by its FieldName. Error 457 if the name already exists, 91 for a null pointer.
    void Add(std::shared_ptr<const CashFlowStructItem> Item);
    /// The field of that name, or a null pointer if there is none.
    [[nodiscard]] std::shared_ptr<const CashFlowStructItem> Item(const std::string& vntIndexKey) const;
    /// All field names in the order in which they were added.
    [[nodiscard]] const std::vector<std::string>& Fields() const noexcept { return shape_.names(); }
    /// The names as the shape of a row that has these fields.
    [[nodiscard]] const FieldShape& shape() const noexcept { return shape_; }
    /// The fields in the order of their names.
    [[nodiscard]] const std::vector<std::shared_ptr<const CashFlowStructItem>>& items() const noexcept {
        return items_;
    }
    /// The number of fields, a 32-bit integer.
    [[nodiscard]] Variant Count() const;

private:
    FieldShape shape_;
    std::vector<std::shared_ptr<const CashFlowStructItem>> items_; ///< in the order of the shape's names
};

} // namespace z7::cashflow

Z7_PUBLIC_END
