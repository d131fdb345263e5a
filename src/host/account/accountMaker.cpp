#include "host/account/accountMaker.h"

#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/TableLoader.h"
#include "adapters/sqlite/database.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"
#include "host/text/joined.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/guid.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace z7::cashflow::host {

namespace fs = std::filesystem;

namespace {

/// The account options that the library reads, all of them true or false.
constexpr std::array<std::string_view, 3> accountOptionNames{"bCashCode", "bAutoDisplay", "bXJLL"};
constexpr const char* ledgerSystem = "GL";

/// A folder beside the account's place that holds the database while it is made, and goes with everything in it.
class WorkFolder {
public:
    explicit WorkFolder(const fs::path& target) {
        path_ = target.parent_path() /
                ("." + target.filename().string() + ".new-" + guidText(systemGuidSource()).substr(0, 12));
        std::error_code failure;
        if (!fs::create_directory(path_, failure)) {
            throw Failure(exitCode::database, HostText::moveFailed, {target.string(), failure.message()});
        }
    }
    ~WorkFolder() {
        std::error_code ignored; // what cannot be removed now cannot be removed better later
        fs::remove_all(path_, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    [[nodiscard]] const fs::path& path() const noexcept { return path_; }

private:
    fs::path path_;
};

bool isTaken(const fs::path& path) {
    std::error_code failure;
    return fs::exists(fs::symlink_status(path, failure));
}

void requireFree(const fs::path& account) {
    const sqlite::DatabaseFiles files = sqlite::databaseFiles(account);
    for (const fs::path& path : {files.account, files.system, files.temp}) {
        if (isTaken(path)) {
            throw Failure(exitCode::usage, HostText::fileExists, {path.string()});
        }
    }
}

void setOption(Connection& connection, LoadableTables& tables, const AccountOption& option) {
    const std::string where = std::string(" where csysid=N'") + ledgerSystem + "' and cname=N'" + option.name + "'";
    std::optional<std::string> defaultValue;
    const auto present = connection.Execute("select cdefault from accinformation" + where);
    if (!present->EndOfFile()) {
        const Variant value = present->Fields().Item("cdefault");
        defaultValue = value.isNull() ? std::nullopt : std::optional(toText(value));
    }
    present->Close();
    connection.Execute("delete from accinformation" + where);
    const auto loader = tables.loader("accinformation", {"csysid", "cname", "cvalue", "cdefault"});
    loader->add({ledgerSystem, option.name, option.value, defaultValue});
}

LoadedTables fill(const fs::path& account, const std::vector<TableFile>& files,
                  const std::vector<AccountOption>& options, Language language,
                  const std::function<bool()>& stopRequested) {
    sqlite::Connection connection;
    connection.Open(sqlite::connectionString(account));
    connection.BeginTrans();
    sqlite::AccountTables tables(connection);
    const LoadedTables loaded = fillAccount(connection, tables, files, options, language, stopRequested);
    connection.CommitTrans();
    connection.Close();
    return loaded;
}

/// Moves the files of the new database to their place, the account's own file last: once it is there, all is there.
void moveInto(const fs::path& from, const fs::path& to) {
    const sqlite::DatabaseFiles sources = sqlite::databaseFiles(from);
    const sqlite::DatabaseFiles targets = sqlite::databaseFiles(to);
    const std::array<std::pair<fs::path, fs::path>, 3> moves{
        std::pair{sources.system, targets.system}, {sources.temp, targets.temp}, {sources.account, targets.account}};
    std::vector<fs::path> moved;
    for (const auto& [source, target] : moves) {
        std::error_code failure;
        fs::rename(source, target, failure);
        if (failure) {
            for (const fs::path& path : moved) {
                std::error_code ignored; // the first failure is the one to tell
                fs::remove(path, ignored);
            }
            throw Failure(exitCode::database, HostText::moveFailed, {target.string(), failure.message()});
        }
        moved.push_back(target);
    }
}

} // namespace

std::vector<AccountOption> readAccountOptions(const std::vector<std::string>& texts) {
    std::vector<AccountOption> options;
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        if (equals == std::string::npos || equals == 0) {
            throw Failure(exitCode::usage, HostText::setNeedsValue, {text});
        }
        const std::string name = text.substr(0, equals);
        const std::string value = text.substr(equals + 1);
        const auto known = std::find_if(accountOptionNames.begin(), accountOptionNames.end(),
                                        [&name](auto candidate) { return asciiLower(candidate) == asciiLower(name); });
        if (known == accountOptionNames.end()) {
            throw Failure(exitCode::usage, HostText::setUnknown, {name, joined(accountOptionNames, ", ")});
        }
        if (std::any_of(options.begin(), options.end(),
                        [&known](const auto& option) { return option.name == *known; })) {
            throw Failure(exitCode::usage, HostText::setTwice, {std::string(*known)});
        }
        const std::string truth = asciiLower(value);
        if (truth != "true" && truth != "false") {
            throw Failure(exitCode::usage, HostText::setBadValue, {std::string(*known), value});
        }
        options.push_back({std::string(*known), truth == "true" ? "True" : "False"});
    }
    return options;
}

LoadedTables fillAccount(Connection& connection, LoadableTables& tables, const std::vector<TableFile>& files,
                         const std::vector<AccountOption>& options, Language language,
                         const std::function<bool()>& stopRequested) {
    const LoadedTables loaded = loadTableFiles(connection, tables, files, language, stopRequested);
    for (const AccountOption& option : options) {
        setOption(connection, tables, option);
    }
    return loaded;
}

LoadedTables makeAccount(const fs::path& path, const std::vector<TableFile>& files,
                         const std::vector<AccountOption>& options, Language language,
                         const std::function<bool()>& stopRequested) {
    requireFree(path);
    const WorkFolder folder(path);
    const fs::path made = folder.path() / path.filename();
    sqlite::createDatabase(made);
    const LoadedTables loaded = fill(made, files, options, language, stopRequested);
    requireFree(path); // somebody may have made it meanwhile
    moveInto(made, path);
    return loaded;
}

} // namespace z7::cashflow::host
