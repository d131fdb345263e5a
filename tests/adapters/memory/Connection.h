#pragma once

#include "adapters/memory/Session.h"
#include "adapters/shared/session/PooledConnection.h"

#include <memory>
#include <utility>

namespace z7::cashflow::memory {

/// A session on tables in memory, with a pool for the recordsets that open their own. Any connection string opens it.
class Connection final : public shared::PooledConnection {
public:
    explicit Connection(std::shared_ptr<Tables> tables)
        : Connection(std::move(tables), std::make_shared<shared::Observers>()) {}

private:
    Connection(std::shared_ptr<Tables> tables, const std::shared_ptr<shared::Observers>& observers)
        : PooledConnection(std::make_shared<shared::SessionPool>([tables, observers](const std::string&, int number) {
                               return std::make_shared<Session>(number, tables, observers);
                           }),
                           observers) {}
};

} // namespace z7::cashflow::memory
