#pragma once

#include "adapters/conformance/DatabaseUnderTest.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"

#include <filesystem>
#include <memory>
#include <string>

namespace z7::cashflow::sqlite {

/// A folder of its own for one test, which is removed with everything in it.
class TestFolder {
public:
    TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// An empty account in a folder of its own, whose path holds blanks and Chinese.
class EmbeddedDatabase final : public conformance::DatabaseUnderTest {
public:
    EmbeddedDatabase();
    [[nodiscard]] std::unique_ptr<cashflow::Connection> makeConnection() const override;
    [[nodiscard]] std::string connectionString(std::optional<std::int16_t> year, int timeout) const override;
    [[nodiscard]] const std::filesystem::path& file() const { return file_; }
    /// An open connection; more may be further keywords such as ";maxpages=100".
    [[nodiscard]] std::unique_ptr<Connection> open(std::optional<std::int16_t> year = std::int16_t{2013},
                                                   const std::string& more = {}) const;

private:
    TestFolder folder_;
    std::filesystem::path file_;
};

} // namespace z7::cashflow::sqlite
