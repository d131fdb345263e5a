#include "adapters/ado/ConnectionFactory.h"

#include "adapters/ado/Connection.h"

namespace z7::cashflow::ado {

std::unique_ptr<cashflow::Connection> ConnectionFactory::create(const std::string& /*connectionString*/) {
    return std::make_unique<Connection>();
}

} // namespace z7::cashflow::ado
