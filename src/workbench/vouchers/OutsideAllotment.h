#pragma once

#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/VoucherResult.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <string>

namespace z7::cashflow::workbench {

/// What became of a voucher of another subsystem.
struct OutsideResult {
    std::string table; ///< its table
    std::string key;   ///< its outside key
    Outcome outcome = Outcome::refused;
    std::int32_t rows = 0; ///< the rows that were stored; 0 unless the outcome is stored
    std::optional<Refusal> refusal;
    bool changed = false; ///< the ledger voucher has other rows than before
};

/// Stores the rows of vouchers of other subsystems, each in a transaction of its own, which is rolled back unless a
/// reader finds what was stored. A refused voucher is a result; an error of the database as a whole is not, it comes
/// out.
class OutsideAllotment {
public:
    /// The connection, the data access, the provider and the log outlive it; the connection is in no transaction. The
    /// thread's login must be set. Without a log nothing is noted.
    OutsideAllotment(Connection& connection, DataProvider& data, VoucherProvider& provider, RunLog* log = nullptr)
        : connection_(connection), data_(data), provider_(provider), judge_(connection, data, provider.Gl()),
          log_(log != nullptr && log->available() ? log : nullptr) {}

    /// Stores the rows of a collection document in place of those of a voucher of that year; an empty document stands
    /// for the stored rows or, where there are none, for generated ones. Refused where the ledger has no voucher with
    /// this key in the year, because rows belong to a ledger voucher.
    [[nodiscard]] OutsideResult save(std::int16_t year, const std::string& table, const std::string& key,
                                     std::string document);

private:
    [[nodiscard]] std::optional<VoucherKey> ledgerVoucher(std::int16_t year, const std::string& key);
    [[nodiscard]] std::optional<Voucher> lockLedgerVoucher(std::int16_t year, const std::string& key);

    Connection& connection_;
    DataProvider& data_;
    VoucherProvider& provider_;
    Judge judge_;
    RunLog* log_;
};

} // namespace z7::cashflow::workbench
