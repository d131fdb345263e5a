#include "adapters/ado/AdoOverEmbedded.h"

#include "adapters/ado/Connection.h"
#include "adapters/sqlite/database.h"
#include "standins/AdoConnection.h"

namespace z7::cashflow::test {

AdoOverEmbedded::AdoOverEmbedded() : file_(folder_.path() / "company.db"), classes_(ado_) {
    sqlite::createDatabase(file_);
    ado_->makeConnection = [] { return std::make_unique<sqlite::Connection>(); };
    ado_->makeRecordset = [this] { return pool_.createRecordset(); };
}

std::unique_ptr<Connection> AdoOverEmbedded::makeConnection() const { return std::make_unique<ado::Connection>(); }

std::string AdoOverEmbedded::connectionString(std::optional<std::int16_t> year, int timeout) const {
    return sqlite::connectionString(file_, year) + ";timeout=" + std::to_string(timeout);
}

ComPtr<IDispatch> AdoOverEmbedded::openHostConnection() {
    auto session = std::make_shared<sqlite::Connection>();
    session->Open(connectionString(std::int16_t{2013}, 0));
    return {makeObject<AdoConnection>(ado_, session).get()};
}

} // namespace z7::cashflow::test

namespace z7::cashflow::conformance {

std::vector<Adapter> databasesUnderTest() {
    return {{"ado", [] { return std::make_unique<test::AdoOverEmbedded>(); }}};
}

} // namespace z7::cashflow::conformance
