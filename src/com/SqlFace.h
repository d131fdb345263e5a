#pragma once

#include "com/Face.h"
#include "com/Z7CashFlow.h"
#include "z7cashflow/model/ISQLSerializable.h"

namespace z7::com {

/// The interface ISQLSerializable of a row or a collection.
class SqlFace final : public Face<_ISQLSerializable> {
public:
    /// The interface of an object over its row or collection, which the object owns.
    SqlFace(Object& object, const cashflow::ISQLSerializable& source);

    HRESULT STDMETHODCALLTYPE InsertSql(BSTR tableName, _CashFlowStruct* structure, BSTR* sql) noexcept override;

private:
    const cashflow::ISQLSerializable& source_;
};

} // namespace z7::com
