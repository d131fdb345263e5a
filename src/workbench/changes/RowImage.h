#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The columns of gl_cashtable, in their order.
inline constexpr std::array<std::string_view, 39> rowColumns{
    "RowGuid",    "iYear",     "iPeriod",   "iSignSeq",    "csign",      "iNo_id",    "inid",      "cCashItem",
    "md",         "mc",        "ccode",     "md_f",        "mc_f",       "nd_s",      "nc_s",      "cdept_id",
    "cperson_id", "ccus_id",   "csup_id",   "citem_class", "citem_id",   "cDefine1",  "cDefine2",  "cDefine3",
    "cDefine4",   "cDefine5",  "cDefine6",  "cDefine7",    "cDefine8",   "cDefine9",  "cDefine10", "cDefine11",
    "cDefine12",  "cDefine13", "cDefine14", "cDefine15",   "dbill_date", "cDefine16", "cexch_name"};

/// A stored row with every column of the table, whether or not readers find it.
class RowImage {
public:
    /// Takes the values in the order of rowColumns.
    explicit RowImage(std::vector<Variant> values) : values_(std::move(values)) {}

    /// The value of a column, which must be one of rowColumns.
    [[nodiscard]] const Variant& operator[](std::string_view column) const;
    /// The value at an index into rowColumns. std::out_of_range for any other index.
    [[nodiscard]] const Variant& at(std::size_t column) const { return values_.at(column); }
    /// Number of the entry line; 0 if the row has none.
    [[nodiscard]] std::int32_t line() const;
    /// Whether all columns are exactly equal; identity says whether to include RowGuid, which changes with
    /// every save.
    [[nodiscard]] bool equals(const RowImage& other, bool identity) const;

private:
    std::vector<Variant> values_;
};

/// A condition that selects the rows of a voucher.
[[nodiscard]] std::string rowsOfVoucher(const VoucherKey& key);

/// The rows stored for a voucher, by line. Errors of the database pass through.
[[nodiscard]] std::vector<RowImage> readRowImages(Connection& connection, const VoucherKey& key);
/// The rows of a query that selects rowColumns in their order.
[[nodiscard]] std::vector<RowImage> readRowImages(Connection& connection, const std::string& query);
/// rowColumns as a comma-separated list for a statement.
[[nodiscard]] std::string rowColumnList();

/// Whether two lists hold the same rows in any order.
[[nodiscard]] bool sameRows(const std::vector<RowImage>& a, const std::vector<RowImage>& b, bool identity);

/// The change of one row.
struct RowChange {
    /// What happened to the row.
    enum class Kind {
        kept,    ///< unchanged; only its RowGuid may be new
        added,   ///< a new row
        changed, ///< still a row of the same line, account and side, but with other values
        removed  ///< no longer stored
    };
    Kind kind = Kind::kept;         ///< which of them
    std::optional<RowImage> before; ///< empty for an added row
    std::optional<RowImage> after;  ///< empty for a removed row
    /// The differing columns of a changed row as indexes into rowColumns, without RowGuid.
    std::vector<std::size_t> columns;
};

/// Compares the rows of a voucher before and after, by line. Equal rows are kept. The others are paired within one
/// line, account and side, in their order, as changed rows; those left over were added or removed.
[[nodiscard]] std::vector<RowChange> compareRows(const std::vector<RowImage>& before,
                                                 const std::vector<RowImage>& after);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
