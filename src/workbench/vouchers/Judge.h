#pragma once

#include "workbench/vouchers/Verdict.h"
#include "workbench/vouchers/Voucher.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/providers/IGlVoucherProvider.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::workbench {

/// Name of the table that holds the ledger's vouchers.
inline constexpr const char* voucherTable = "gl_accvouch";

/// Where the rows under judgement come from.
enum class RowsOrigin { stored, generated, document };

/// Finds the rows of ledger vouchers, compares them with their vouchers and says what is wrong with them. The thread's
/// login must be set. Errors of the library and the database come out unless a result is said to hold them.
class Judge {
public:
    using Rows = std::shared_ptr<CashFlowCollection>;

    /// The connection, the data access and the provider outlive it.
    Judge(Connection& connection, DataProvider& data, IGlVoucherProvider& gl)
        : connection_(connection), data_(data), gl_(gl) {}

    /// Reads a voucher; it has no lines if it is not there.
    [[nodiscard]] Voucher read(const VoucherKey& key);

    /// Why the library must not be asked about a voucher: it has no line, no date, or a date outside its year, so that
    /// the library would work in another year; or a cash line lacks an amount, so that there is no sum. Nothing for any
    /// other voucher.
    [[nodiscard]] std::optional<Refusal> unworkable(const Voucher& voucher);
    /// The first three of these reasons, which keep even stored rows from being looked for in the right year.
    [[nodiscard]] std::optional<Refusal> outsideYear(const Voucher& voucher);

    /// The rows that readers find stored, or a null pointer if there are none.
    [[nodiscard]] Rows storedRows(const Voucher& voucher);
    /// Freshly generated rows; empty if the voucher needs none.
    [[nodiscard]] Rows generatedRows(const Voucher& voucher);

    /// Compares rows with their voucher, which must be workable. A null pointer stands for no rows.
    [[nodiscard]] Verdict compare(const Voucher& voucher, Rows rows, RowsOrigin origin);
    /// The verdict on what is stored for a voucher, workable or not.
    [[nodiscard]] Verdict standing(const Voucher& voucher);

    /// Why stored rows are out of the readers' sight; nothing if readers find all of them.
    [[nodiscard]] static std::optional<Refusal> hidden(const std::vector<StoredRow>& rows);
    /// Reads the rows of a voucher back as every reader does, after a save of these rows. Nothing if the reader gets
    /// exactly them, else which of them it does not get, and why.
    [[nodiscard]] std::optional<Refusal> readBack(const Voucher& voucher, const CashFlowCollection& saved,
                                                  RowsOrigin origin);

    /// What is wrong in detail where a save of rows raised an error. The rows may be missing.
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
    std::map<double, std::int32_t> years_; ///< accounting years by day, since vouchers of one day are many
};

} // namespace z7::cashflow::workbench
