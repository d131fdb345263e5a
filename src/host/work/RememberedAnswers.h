#pragma once

#include "z7cashflow/ports/Connection.h"

namespace z7::cashflow::shared {

class PooledConnection;

} // namespace z7::cashflow::shared

namespace z7::cashflow::host {

/// While it lives, a connection asks each question that concerns the account and no voucher once (items, templates,
/// options, periods, voucher kinds, accounts), until the run itself changes one of their tables. What others change there
/// meanwhile is not seen.
class RememberedAnswers {
public:
    /// The connection outlives it. One that no adapter of ours made remembers nothing.
    explicit RememberedAnswers(Connection& connection);
    RememberedAnswers(const RememberedAnswers&) = delete;
    RememberedAnswers& operator=(const RememberedAnswers&) = delete;
    ~RememberedAnswers();

private:
    shared::PooledConnection* connection_;
};

} // namespace z7::cashflow::host
