#pragma once

#include "z7cashflow/ports/ConnectionFactory.h"

#include <memory>
#include <string>

namespace z7::cashflow::ado {

/// Creates ADO connections of our own, whatever the connection string: ADO finds the provider when it is opened.
class ConnectionFactory final : public cashflow::ConnectionFactory {
public:
    [[nodiscard]] std::unique_ptr<cashflow::Connection> create(const std::string& connectionString) override;
};

} // namespace z7::cashflow::ado
