#include "com/SqlFace.h"

#include "com/StructObject.h"

namespace z7::com {

SqlFace::SqlFace(Object& object, const cashflow::ISQLSerializable& source)
    : Face(object, L"ISQLSerializable"), source_(source) {}

HRESULT SqlFace::InsertSql(BSTR tableName, _CashFlowStruct* structure, BSTR* sql) noexcept {
    return answer(
        sql, [&] { return source_.InsertSql(text(tableName), objectNeeded<StructObject>(structure).structure()); });
}

} // namespace z7::com
