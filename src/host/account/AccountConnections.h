#pragma once

#include "host/cli/GlobalOptions.h"
#include "z7cashflow/ports/ConnectionFactory.h"

#include <memory>
#include <string>
#include <utility>

namespace z7::cashflow::host {

/// Creates the connections that the library opens itself: to the embedded database for driver=sqlite, otherwise by
/// the host's connection maker.
class AccountConnections final : public ConnectionFactory {
public:
    explicit AccountConnections(ConnectionMaker serverConnection) : serverConnection_(std::move(serverConnection)) {}

    /// Error 5 for a string that the adapter cannot parse; the message contains no value of the string.
    [[nodiscard]] std::unique_ptr<Connection> create(const std::string& connectionString) override;

private:
    ConnectionMaker serverConnection_;
};

} // namespace z7::cashflow::host
