#pragma once

#include "adapters/conformance/DatabaseUnderTest.h"
#include "adapters/sqlite/Connection.h"
#include "doubles/ScratchFolder.h"
#include "standins/AdoClasses.h"
#include "standins/AdoDatabase.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace z7::cashflow::test {

/// An empty account of the embedded database, reached through ADO objects that stand in for those of Windows.
class AdoOverEmbedded final : public conformance::DatabaseUnderTest {
public:
    AdoOverEmbedded();

    [[nodiscard]] std::unique_ptr<Connection> makeConnection() const override;
    [[nodiscard]] std::string connectionString(std::optional<std::int16_t> year, int timeout) const override;
    [[nodiscard]] conformance::Capability keepsRecordsAfterClose() const override {
        return {false, "ADO closes the recordsets of a connection with it"};
    }

    /// What the ADO objects have in common.
    [[nodiscard]] AdoDatabase& ado() { return *ado_; }
    [[nodiscard]] const std::shared_ptr<AdoDatabase>& sharedAdo() { return ado_; }
    /// A connection of the host in the year 2013: an ADO object over an open session.
    [[nodiscard]] ComPtr<IDispatch> openHostConnection();

private:
    ScratchFolder folder_;
    std::filesystem::path file_;
    sqlite::Connection pool_; ///< closed; it makes the recordsets that are opened by connection string
    std::shared_ptr<AdoDatabase> ado_ = std::make_shared<AdoDatabase>();
    AdoClasses classes_;
};

} // namespace z7::cashflow::test
