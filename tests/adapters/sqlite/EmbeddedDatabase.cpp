#include "adapters/sqlite/EmbeddedDatabase.h"

namespace z7::cashflow::sqlite {

namespace fs = std::filesystem;

EmbeddedDatabase::EmbeddedDatabase() : file_(folder_.path() / fs::path(u8"my 公司;x.db")) { createDatabase(file_); }

std::unique_ptr<cashflow::Connection> EmbeddedDatabase::makeConnection() const {
    return std::make_unique<Connection>();
}

std::string EmbeddedDatabase::connectionString(std::optional<std::int16_t> year, int timeout) const {
    return sqlite::connectionString(file_, year) + ";timeout=" + std::to_string(timeout);
}

std::unique_ptr<Connection> EmbeddedDatabase::open(std::optional<std::int16_t> year, const std::string& more) const {
    auto connection = std::make_unique<Connection>();
    connection->Open(connectionString(year, 0) + more);
    return connection;
}

} // namespace z7::cashflow::sqlite

namespace z7::cashflow::conformance {

std::vector<Adapter> databasesUnderTest() {
    return {{"embedded", [] { return std::make_unique<sqlite::EmbeddedDatabase>(); }}};
}

} // namespace z7::cashflow::conformance
