#include "host/work/Transaction.h"

#include "host/work/databaseFailure.h"

namespace z7::cashflow::host {

Transaction::~Transaction() {
    if (open_) {
        ignoringErrors([this] { connection_.RollbackTrans(); }); // the error that led here is the one to tell
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

std::optional<Error> saveInTransaction(Connection& connection, bool keep, const std::function<void()>& save) {
    try {
        Transaction transaction(connection);
        save();
        transaction.end(keep);
    } catch (const Error& error) {
        if (isDatabaseFailure(error)) {
            throw;
        }
        return error;
    }
    return std::nullopt;
}

} // namespace z7::cashflow::host
