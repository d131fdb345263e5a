#include "Account.h"

#include "Measure.h"

#include "adapters/sqlite/TempDatabase.h"
#include "adapters/sqlite/database.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/openFile.h"
#include "host/cli/GlobalOptions.h"
#include "host/work/HostLogin.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/guid.h"

#include <sqlite3.h>

namespace z7::cashflow::bench {

sqlite3* openBare(const std::filesystem::path& file, std::int16_t year) {
    sqlite3* handle = nullptr;
    require(sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK,
            "opening " + file.string());
    sqlite3_busy_timeout(handle, 5000);
    sqlite::prepareSession(handle, year);
    static std::vector<std::shared_ptr<const sqlite::TempDatabase>> kept; // until the program ends
    kept.push_back(sqlite::attachCompanions(handle, file));
    return handle;
}

ScratchFolder::ScratchFolder()
    : folder_(std::filesystem::temp_directory_path() / ("z7bench" + guidText(systemGuidSource()))) {
    std::filesystem::create_directory(folder_);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void copyAccount(const std::filesystem::path& from, const std::filesystem::path& to) {
    const auto source = sqlite::databaseFiles(from);
    const auto target = sqlite::databaseFiles(to);
    constexpr auto overwrite = std::filesystem::copy_options::overwrite_existing;
    for (const std::filesystem::path& file : {target.account, target.system}) {
        for (const char* log : {"-wal", "-shm"}) {
            std::filesystem::remove(file.string() + log);
        }
    }
    std::filesystem::copy_file(source.account, target.account, overwrite);
    std::filesystem::copy_file(source.system, target.system, overwrite);
}

Account::Account(const std::filesystem::path& file, std::int16_t year) {
    const std::string text = sqlite::connectionString(file, year);
    connection_.Open(text);
    modPublic::context() = modPublic::Context{};
    provider_.gl().objLogin(std::make_shared<host::HostLogin>(host::GlobalOptions{}, year, text));
}

Account::~Account() { modPublic::context() = modPublic::Context{}; }

BareReplay::BareReplay(const std::filesystem::path& file, std::int16_t year,
                       const std::vector<RecordedStatement>& statements)
    : statements_(statements) {
    for (const RecordedStatement& statement : statements_) {
        auto& session = sessions_[statement.session];
        session = session != nullptr ? session : openBare(file, year);
    }
}

BareReplay::~BareReplay() {
    for (const auto& [number, handle] : sessions_) {
        sqlite3_close(handle);
    }
}

void BareReplay::run() {
    for (const RecordedStatement& statement : statements_) {
        sqlite3* handle = sessions_[statement.session];
        sqlite3_stmt* prepared = nullptr;
        sqlite3_prepare_v2(handle, statement.text.data(), static_cast<int>(statement.text.size()), &prepared, nullptr);
        int status = SQLITE_ROW;
        while (status == SQLITE_ROW) {
            status = sqlite3_step(prepared);
        }
        require(status == SQLITE_DONE, statement.text + ": " + sqlite3_errmsg(handle));
        sqlite3_finalize(prepared);
    }
}

double number(const std::filesystem::path& file, const std::string& query) {
    sqlite3* handle = openBare(file, 0);
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(handle, query.c_str(), -1, &prepared, nullptr);
    require(sqlite3_step(prepared) == SQLITE_ROW, query);
    const double value = sqlite3_column_double(prepared, 0);
    sqlite3_finalize(prepared);
    sqlite3_close(handle);
    return value;
}

void runBare(const std::filesystem::path& file, const std::string& statements) {
    sqlite3* handle = openBare(file, 0);
    require(sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(handle));
    sqlite3_close(handle);
}

} // namespace z7::cashflow::bench
