#pragma once

#include "workbench/vouchers/VoucherKey.h"
#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Variant.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow::workbench {

/// The columns of gl_cashtable, in their order.
inline constexpr std::array<std::string_view, 39> rowColumns{
    "RowGuid",    "iYear",     "iPeriod",   "iSignSeq",    "csign",      "iNo_id",    "inid",      "cCashItem",
    "md",         "mc",        "ccode",     "md_f",        "mc_f",       "nd_s",      "nc_s",      "cdept_id",
    "cperson_id", "ccus_id",   "csup_id",   "citem_class", "citem_id",   "cDefine1",  "cDefine2",  "cDefine3",
    "cDefine4",   "cDefine5",  "cDefine6",  "cDefine7",    "cDefine8",   "cDefine9",  "cDefine10", "cDefine11",
    "cDefine12",  "cDefine13", "cDefine14", "cDefine15",   "dbill_date", "cDefine16", "cexch_name"};

/// A stored row as it stands in the database, with every column. Whether readers find it plays no part.
class RowImage {
public:
    /// The values are in the order of rowColumns.
    explicit RowImage(std::vector<Variant> values) : values_(std::move(values)) {}

    /// The value of a column, which must be one of rowColumns.
    [[nodiscard]] const Variant& operator[](std::string_view column) const;
    [[nodiscard]] const Variant& at(std::size_t column) const { return values_.at(column); }
    /// Number of the entry line; 0 for a row without one.
    [[nodiscard]] std::int32_t line() const;
    /// Whether every column is the same to the last digit; without identity the column RowGuid is left out, which a
    /// save gives anew.
    [[nodiscard]] bool equals(const RowImage& other, bool identity) const;

private:
    std::vector<Variant> values_;
};

/// The condition that a table's rows belong to a voucher.
[[nodiscard]] std::string rowsOfVoucher(const VoucherKey& key);

/// The rows stored for a voucher, by line. Errors of the database.
[[nodiscard]] std::vector<RowImage> readRowImages(Connection& connection, const VoucherKey& key);
/// Rows of a query that selects rowColumns in their order.
[[nodiscard]] std::vector<RowImage> readRowImages(Connection& connection, const std::string& query);
/// rowColumns as a statement lists them.
[[nodiscard]] std::string rowColumnList();

/// Whether two sets of rows are the same, whatever their order.
[[nodiscard]] bool sameRows(const std::vector<RowImage>& a, const std::vector<RowImage>& b, bool identity);

/// What became of one row.
struct RowChange {
    enum class Kind {
        kept,    ///< it is as it was; only its identity may be new
        added,   ///< it was not there
        changed, ///< it is still a row of the same line, account and side, with other values
        removed  ///< it is not there any more
    };
    Kind kind = Kind::kept;
    std::optional<RowImage> before; ///< of every kind but added
    std::optional<RowImage> after;  ///< of every kind but removed
    /// The columns that differ, as indexes of rowColumns, RowGuid left out; of a changed row.
    std::vector<std::size_t> columns;
};

/// How the rows of a voucher became others, by line. Equal rows are kept; of the others those of one line, account and
/// side are paired in their order and changed, and what is left over was added or removed.
[[nodiscard]] std::vector<RowChange> compareRows(const std::vector<RowImage>& before,
                                                 const std::vector<RowImage>& after);

} // namespace z7::cashflow::workbench
