#pragma once

#include "standins/AdoRecordset.h"
#include "standins/AutomationObject.h"

#include <memory>

namespace z7::cashflow::test {

/// The Fields collection of an ADO recordset: Count, and Item by name or position, which is its default member. A field
/// has Name and Value; Value is the default member and that of the record that is current when it is read.
class AdoFields final : public AutomationObject {
public:
    AdoFields(std::shared_ptr<CallPlan> plan, ComPtr<AdoRecordset> recordset);

private:
    ComPtr<AdoRecordset> recordset_;
};

} // namespace z7::cashflow::test
