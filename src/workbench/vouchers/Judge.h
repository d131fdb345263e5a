#pragma once

#include "workbench/vouchers/Verdict.h"
#include "workbench/vouchers/Voucher.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/providers/IGlVoucherProvider.h"
#include "z7cashflow/support/visibility.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The table of the ledger's vouchers.
inline constexpr const char* voucherTable = "gl_accvouch";

/// The origin of the rows to be judged.
enum class RowsOrigin {
    stored,    ///< read from the database
    generated, ///< generated from the voucher's lines
    document   ///< from a document that a person or a subsystem has passed in
};

/// Finds the rows of ledger vouchers, compares them with the vouchers, and explains what is wrong with them. The
/// thread's login must be set. Errors of the library and of the database pass through unless the result holds them.
class Judge {
public:
    /// Rows of one voucher; a null pointer means that there are none.
    using Rows = std::shared_ptr<CashFlowCollection>;

    /// The connection, the data access and the provider outlive this object.
    Judge(Connection& connection, DataProvider& data, IGlVoucherProvider& gl)
        : connection_(connection), data_(data), gl_(gl) {}

    /// Reads a voucher; it has no lines if it does not exist.
    [[nodiscard]] Voucher read(const VoucherKey& key);

    /// Why a voucher cannot be passed to the library: it has no line, no date, or a date outside its year, with
    /// which the library would work in another year; or an amount of a cash line is missing, so that its cash
    /// cannot be added up. Empty if none of this applies.
    [[nodiscard]] std::optional<Refusal> unworkable(const Voucher& voucher);
    /// Only the first three of these reasons, for which not even stored rows can be looked up in the right
    /// year.
    [[nodiscard]] std::optional<Refusal> outsideYear(const Voucher& voucher);

    /// The stored rows that readers find, or a null pointer if there are none.
    [[nodiscard]] Rows storedRows(const Voucher& voucher);
    /// Newly generated rows; empty if the voucher needs none.
    [[nodiscard]] Rows generatedRows(const Voucher& voucher);

    /// Compares rows with their voucher, which must be workable. A null pointer means no rows.
    [[nodiscard]] Verdict compare(const Voucher& voucher, Rows rows, RowsOrigin origin);
    /// The verdict on the stored rows of a voucher, workable or not.
    [[nodiscard]] Verdict standing(const Voucher& voucher);

    /// Why readers do not find some of the stored rows; empty if they find all.
    [[nodiscard]] static std::optional<Refusal> hidden(const std::vector<StoredRow>& rows);
    /// After a save, reads the rows of the voucher as every reader does. Empty if the result is exactly the
    /// saved rows; otherwise which rows are missing, and why.
    [[nodiscard]] std::optional<Refusal> readBack(const Voucher& voucher, const CashFlowCollection& saved,
                                                  RowsOrigin origin);

    /// Explains in detail why saving rows raised an error. rows may be a null pointer.
    [[nodiscard]] Refusal explained(const Error& error, const Voucher& voucher, const Rows& rows, RowsOrigin origin);

private:
    void enterYear(const Voucher& voucher) const;
    [[nodiscard]] std::int32_t yearOf(Date date);
    [[nodiscard]] double cashSum(const VoucherKey& key);
    [[nodiscard]] static std::vector<Finding> missingAmounts(const Voucher& voucher, bool all);
    [[nodiscard]] std::vector<Finding> misplacedRow(const Voucher& voucher, const CashFlowCollection& rows,
                                                    RowsOrigin origin) const;
    [[nodiscard]] std::vector<Finding> differentSums(const Voucher& voucher, const Rows& rows, RowsOrigin origin);
    [[nodiscard]] bool newRowsMatch(const Voucher& voucher);
    void addDoubledRows(const Voucher& voucher, double voucherSum, std::vector<Finding>& findings);
    [[nodiscard]] double sumOf(const Voucher& voucher, const CashFlowCollection& rows) const;

    Connection& connection_;
    DataProvider& data_;
    IGlVoucherProvider& gl_;
    std::map<double, std::int32_t> years_; ///< accounting years by day; many vouchers have the same date
};

} // namespace z7::cashflow::workbench

Z7_PUBLIC_END
