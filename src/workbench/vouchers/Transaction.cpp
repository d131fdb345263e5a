#include "workbench/vouchers/Transaction.h"

#include "workbench/vouchers/databaseFailure.h"

namespace z7::cashflow::workbench {

Transaction::~Transaction() {
    if (open_) {
        ignoringErrors([this] { connection_.RollbackTrans(); }); // the original error is the one to report
    }
}

void Transaction::end(bool keep) {
    if (keep) {
        connection_.CommitTrans();
    } else {
        connection_.RollbackTrans();
    }
    open_ = false;
}

std::optional<Refusal> saveInTransaction(Connection& connection, const std::function<bool()>& keep,
                                         const std::function<std::optional<Refusal>()>& save,
                                         const std::function<Refusal(const Error&)>& explain) {
    std::optional<Transaction> transaction;
    std::optional<Refusal> refusal;
    try {
        transaction.emplace(connection);
        refusal = save();
    } catch (const Error& error) {
        if (isHeldElsewhere(error)) {
            transaction.reset();
        } else if (isDatabaseFailure(error)) {
            throw;
        }
        return explain(error);
    }
    transaction->end(!refusal && keep());
    return refusal;
}

} // namespace z7::cashflow::workbench
