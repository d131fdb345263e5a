#pragma once

#include "adapters/odbc/nativeCalls.h"
#include "adapters/shared/recordset/RowSet.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <optional>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::odbc {

/// How a column's values are requested from the driver.
enum class FetchAs {
    whole,        ///< as a whole number
    real,         ///< as a double
    date,         ///< as the parts of a date
    text,         ///< as a text
    numberOrText, ///< as a text, which is a number if it reads as one
};

/// A column as returned to callers, and how it is fetched.
struct ResultColumn {
    shared::Column column;           ///< name, type and length
    FetchAs fetchAs = FetchAs::text; ///< how its values are requested
};

/// The columns of a result. Immutable, so that all results of one statement can share it.
struct ResultShape {
    std::vector<DriverColumn> described;            ///< as the driver describes them for each result: without origins
    std::vector<DriverColumn> columns;              ///< with everything that is known about them
    std::vector<FetchAs> fetchAs;                   ///< of each column
    std::shared_ptr<const shared::ColumnList> list; ///< as returned to callers
};

/// Reads the current result of a statement.
class ResultReader {
public:
    /// The number of columns, 0 for a statement without a result; empty if the driver reports a failure.
    [[nodiscard]] static std::optional<int> columnCount(Handle statement);
    /// All rows. A null pointer if the driver fails; the statement then holds the reason.
    [[nodiscard]] std::unique_ptr<shared::RowSet> read(Handle statement, const ResultShape& shape);

private:
    [[nodiscard]] bool readValue(Handle statement, int position, FetchAs fetchAs, shared::RowSet& rows);
    [[nodiscard]] bool readDate(Handle statement, int position, shared::RowSet& rows) const;
    [[nodiscard]] bool readText(Handle statement, int position, bool maybeNumber, shared::RowSet& rows);

    TextReader text_;
};

} // namespace z7::cashflow::odbc

Z7_PUBLIC_END
