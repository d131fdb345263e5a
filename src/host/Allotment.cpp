#include "host/Allotment.h"

#include "host/databaseFailure.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/Error.h"

namespace z7::cashflow::host {

namespace {

/// A transaction that is rolled back unless it was committed.
class Transaction {
public:
    explicit Transaction(Connection& connection) : connection_(connection) { connection_.BeginTrans(); }
    ~Transaction() {
        if (open_) {
            ignoringErrors([this] { connection_.RollbackTrans(); }); // the error that led here is the one to tell
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void end(bool keep) {
        if (keep) {
            connection_.CommitTrans(); // if it fails, the rollback is still to come
        } else {
            connection_.RollbackTrans();
        }
        open_ = false;
    }

private:
    Connection& connection_;
    bool open_ = true;
};

} // namespace

VoucherResult Allotment::allot(const VoucherHead& voucher) {
    const VoucherKey& key = voucher.key;
    VoucherResult result{key, Outcome::refused, 0, std::nullopt};
    modPublic::SetIYear(key.year); // the year of the voucher before this one must not reach it
    try {
        Transaction transaction(connection_);
        std::shared_ptr<CashFlowCollection> rows;
        provider_.SaveCashFlowColEx(connection_, voucherTable, key.period, key.kind, key.number, voucher.date, &rows);
        transaction.end(keep_);
        result.rows = rows ? rows->Count() : 0;
        result.outcome = !rows ? Outcome::noCash : result.rows == 0 ? Outcome::nothing : Outcome::stored;
    } catch (const Error& error) {
        if (isDatabaseFailure(error)) {
            throw;
        }
        result.refusal = Refusal{error.number(), error.description()};
    }
    return result;
}

std::size_t Allotment::allotAll(const std::vector<VoucherHead>& vouchers, const std::function<bool()>& stopRequested,
                                const std::function<void(const VoucherResult&)>& take) {
    std::size_t done = 0;
    for (const VoucherHead& voucher : vouchers) {
        if (stopRequested()) {
            break;
        }
        const VoucherResult result = allot(voucher);
        ++done;
        take(result);
    }
    return done;
}

} // namespace z7::cashflow::host
