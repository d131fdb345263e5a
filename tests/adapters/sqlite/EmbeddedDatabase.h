#pragma once

#include "adapters/conformance/DatabaseUnderTest.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "doubles/ScratchFolder.h"

#include <filesystem>
#include <memory>
#include <string>

namespace z7::cashflow::sqlite {

/// An empty account in a temporary folder whose path contains blanks and Chinese characters.
class EmbeddedDatabase final : public conformance::DatabaseUnderTest {
public:
    EmbeddedDatabase();
    [[nodiscard]] std::unique_ptr<cashflow::Connection> makeConnection() const override;
    [[nodiscard]] std::string connectionString(std::optional<std::int16_t> year, int timeout) const override;
    [[nodiscard]] const std::filesystem::path& file() const { return file_; }
    /// An open connection; "more" may hold further keywords such as ";maxpages=100".
    [[nodiscard]] std::unique_ptr<Connection> open(std::optional<std::int16_t> year = std::int16_t{2013},
                                                   const std::string& more = {}) const;

private:
    test::ScratchFolder folder_;
    std::filesystem::path file_;
};

} // namespace z7::cashflow::sqlite
