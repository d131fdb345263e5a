#pragma once

#include "com/DualObject.h"
#include "com/Z7CashFlow.h"

namespace z7::com {

/// The class ISQLSerializable, the contract alone. Hosts can create it, as they can create any class; its members
/// succeed, do nothing and return the zero of their type.
class SqlContractObject final : public DualObject<_ISQLSerializable> {
public:
    HRESULT STDMETHODCALLTYPE InsertSql(BSTR /*tableName*/, _CashFlowStruct* /*structure*/,
                                        BSTR* sql) noexcept override {
        return storeNothing(sql);
    }
};

} // namespace z7::com
