#pragma once

#include "host/cli/GlobalOptions.h"
#include "z7cashflow/ports/ConnectionFactory.h"

#include <memory>
#include <string>
#include <utility>

namespace z7::cashflow::host {

/// Makes the connections that the library opens itself: with driver=sqlite to the embedded database, with everything
/// else by the host's way to a server.
class AccountConnections final : public ConnectionFactory {
public:
    explicit AccountConnections(ConnectionMaker serverConnection) : serverConnection_(std::move(serverConnection)) {}

    /// Error 5 for a string that neither adapter can read; it quotes no value.
    [[nodiscard]] std::unique_ptr<Connection> create(const std::string& connectionString) override;

private:
    ConnectionMaker serverConnection_;
};

} // namespace z7::cashflow::host
