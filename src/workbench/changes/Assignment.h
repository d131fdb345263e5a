#pragma once

#include "workbench/changes/LineSplit.h"
#include "workbench/vouchers/Allotment.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The items that a person assigns to one entry line.
struct LineWish {
    std::int32_t line = 0;       ///< number of the entry line
    std::vector<ItemWish> items; ///< in the order in which the amounts are taken
};

/// What remains on other items of a line after an assignment.
struct LineRest {
    std::int32_t line = 0;       ///< number of the entry line
    std::vector<ItemPart> parts; ///< what is left on each of those items
};

/// Changes the items of stored rows by hand. Each change is saved like any other: the voucher is locked, and its
/// rows are checked, read back and logged. Items are not checked against the list of items here.
class Assignment {
public:
    /// All arguments outlive this object. The allotment decides whether changes are kept and where they are
    /// logged.
    Assignment(Connection& connection, DataProvider& data, IGlVoucherProvider& gl, Allotment& allotment)
        : connection_(connection), judge_(connection, data, gl), allotment_(allotment) {}

    /// Assigns lines of a voucher to items. The other lines keep their stored rows, or get generated ones if
    /// none are stored. Reports what remains on other items. Refused if the voucher does not have a line, an
    /// amount does not fit, a rest has no item, or the rows do not match the voucher although the account
    /// option bXJLL demands it; without that option the mismatch is reported in the result.
    [[nodiscard]] VoucherResult assign(const VoucherKey& key, const std::vector<LineWish>& wishes,
                                       std::vector<LineRest>& rests);
    /// Replaces the stored rows by newly generated ones. With keepItems, a line for which generation finds no
    /// item keeps that of its first stored row that has one, as in the dialog.
    [[nodiscard]] VoucherResult regenerate(const VoucherKey& key, bool keepItems);
    /// Moves the rows of an item, on one account or on all (empty), to another item; amounts stay the same.
    [[nodiscard]] VoucherResult reassign(const VoucherKey& key, const std::string& from, const std::string& to,
                                         const std::string& account);

private:
    [[nodiscard]] Judge::Rows presentRows(const Voucher& voucher, bool stored);
    [[nodiscard]] Judge::Rows proposedRows(const Voucher& voucher);
    [[nodiscard]] bool comparesSums();

    Connection& connection_;
    Judge judge_;
    Allotment& allotment_;
};

/// The vouchers of a year, or of some of its periods, with rows of an item on one account or on any (empty), sorted
/// by key.
[[nodiscard]] std::vector<VoucherKey> vouchersWithItem(Connection& connection, std::int16_t year,
                                                       const std::optional<PeriodRange>& periods,
                                                       const std::string& item, const std::string& account);

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
