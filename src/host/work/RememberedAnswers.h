#pragma once

#include "z7cashflow/ports/Connection.h"

namespace z7::cashflow::shared {

class PooledConnection;

} // namespace z7::cashflow::shared

namespace z7::cashflow::host {

/// While it lives, a connection runs each query that concerns the account and not a voucher (items, templates, options,
/// periods, voucher kinds, accounts) only once, until the run itself changes one of their tables. Changes by others are
/// not seen meanwhile.
class RememberedAnswers {
public:
    /// The connection outlives it. For a connection of a foreign adapter nothing is remembered.
    explicit RememberedAnswers(Connection& connection);
    RememberedAnswers(const RememberedAnswers&) = delete;
    RememberedAnswers& operator=(const RememberedAnswers&) = delete;
    ~RememberedAnswers();

private:
    shared::PooledConnection* connection_;
};

} // namespace z7::cashflow::host
