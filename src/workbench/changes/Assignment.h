#pragma once

#include "workbench/changes/LineSplit.h"
#include "workbench/vouchers/Allotment.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// What a person puts on the items of one entry line.
struct LineWish {
    std::int32_t line = 0; ///< number of the entry line
    std::vector<ItemWish> items;
};

/// What stays on other items of a line after an assignment.
struct LineRest {
    std::int32_t line = 0;
    std::vector<ItemPart> parts;
};

/// Changes the items of stored rows by hand. Every change is saved by the provider as the other saves are: the voucher
/// locked, the rows checked, read back and noted. Items are not looked up here.
class Assignment {
public:
    /// All outlive it; the allotment says whether changes are kept, and where they are noted.
    Assignment(Connection& connection, DataProvider& data, IGlVoucherProvider& gl, Allotment& allotment)
        : connection_(connection), judge_(connection, data, gl), allotment_(allotment) {}

    /// Puts lines of a voucher on items. The other lines keep their stored rows, or get the generated ones where none
    /// are stored. Fills in what stays on other items. Refused if the voucher lacks a line, an amount does not fit, a
    /// rest finds no item, or the rows do not match the voucher and the account has its sums compared (bXJLL); else a
    /// mismatch is in the result.
    [[nodiscard]] VoucherResult assign(const VoucherKey& key, const std::vector<LineWish>& wishes,
                                       std::vector<LineRest>& rests);
    /// Generates the rows anew in place of the stored ones. With keepItems a line for which the generation finds no
    /// item keeps the one of its first stored row that has one, as in the dialog.
    [[nodiscard]] VoucherResult regenerate(const VoucherKey& key, bool keepItems);
    /// Puts the rows of an item, on one account or on every one (empty), on another item; the amounts stay.
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

/// The vouchers of a year, or of some of its periods, that have rows of an item, on one account or on every one
/// (empty), by key.
[[nodiscard]] std::vector<VoucherKey> vouchersWithItem(Connection& connection, std::int16_t year,
                                                       const std::optional<PeriodRange>& periods,
                                                       const std::string& item, const std::string& account);

} // namespace z7::cashflow::workbench
