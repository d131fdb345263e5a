#pragma once

#include "adapters/sqlite/Connection.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

struct sqlite3;

namespace z7::cashflow::bench {

/// A temporary folder for the files of a benchmark, removed at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    [[nodiscard]] std::filesystem::path file(const std::string& name) const { return folder_ / name; }

private:
    std::filesystem::path folder_;
};

/// Copies an account that is not open, with the files beside it.
void copyAccount(const std::filesystem::path& from, const std::filesystem::path& to);

/// An account opened in one year, with a user logged in, as in a host.
class Account {
public:
    Account(const std::filesystem::path& file, std::int16_t year);
    ~Account();
    Account(const Account&) = delete;
    Account& operator=(const Account&) = delete;
    [[nodiscard]] sqlite::Connection& connection() noexcept { return connection_; }
    [[nodiscard]] IGlVoucherProvider& gl() noexcept { return provider_.gl(); }

private:
    sqlite::Connection connection_;
    VoucherProvider provider_;
};

/// A statement as passed to the database library, and the number of its session.
struct RecordedStatement {
    int session = 0;
    std::string text;
};

/// The floor: statements on bare sessions of the database library, each prepared and executed separately.
class BareReplay {
public:
    BareReplay(const std::filesystem::path& file, std::int16_t year, const std::vector<RecordedStatement>& statements);
    ~BareReplay();
    BareReplay(const BareReplay&) = delete;
    BareReplay& operator=(const BareReplay&) = delete;
    /// Runs all of them; ends the program if one fails.
    void run();

private:
    const std::vector<RecordedStatement>& statements_;
    std::map<int, sqlite3*> sessions_;
};

/// Opens a bare session of the database library on an account, with what the schema needs. The caller closes it.
[[nodiscard]] sqlite3* openBare(const std::filesystem::path& file, std::int16_t year);
/// The result of a query for one number, on a separate session.
[[nodiscard]] double number(const std::filesystem::path& file, const std::string& query);
/// Runs statements in the database library's own dialect.
void runBare(const std::filesystem::path& file, const std::string& statements);

} // namespace z7::cashflow::bench
