#pragma once

#include "workbench/changes/RunLog.h"
#include "workbench/vouchers/Judge.h"
#include "workbench/vouchers/VoucherResult.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/visibility.h"

#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::workbench {

/// The result for a voucher of another subsystem.
struct OutsideResult {
    std::string table;                  ///< its table
    std::string key;                    ///< its outside key
    Outcome outcome = Outcome::refused; ///< what became of it
    std::int32_t rows = 0;              ///< number of rows stored; 0 unless the outcome is stored
    std::optional<Refusal> refusal;     ///< why it was refused; otherwise empty
    bool changed = false;               ///< the rows of the ledger voucher have changed
};

/// Stores the rows of vouchers of other subsystems, each in its own transaction, which is committed only if readers
/// find the stored rows. A refusal is a result; errors that concern the database as a whole pass through.
class OutsideAllotment {
public:
    /// The connection, the data access, the provider and the log outlive this object; the connection is not in
    /// a transaction. The thread's login must be set. A null log means no logging.
    OutsideAllotment(Connection& connection, DataProvider& data, VoucherProvider& provider, RunLog* log = nullptr)
        : connection_(connection), data_(data), provider_(provider), judge_(connection, data, provider.gl()),
          log_(log != nullptr && log->available() ? log : nullptr) {}

    /// Replaces the rows of a voucher of that year by those of a collection document; an empty document means
    /// the stored rows or, if there are none, generated ones. Refused if the ledger has no voucher with this
    /// key in the year, because rows belong to a ledger voucher.
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

Z7_PUBLIC_END
