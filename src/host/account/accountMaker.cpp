#include "host/account/accountMaker.h"

#include "adapters/sqlite/AccountTables.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/NewDatabase.h"
#include "adapters/sqlite/database.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/text/joined.h"
#include "host/text/reasonText.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace z7::cashflow::host {

namespace fs = std::filesystem;

namespace {

/// The account options that the library reads; all are true or false.
constexpr std::array<std::string_view, 3> accountOptionNames{"bCashCode", "bAutoDisplay", "bXJLL"};
constexpr const char* ledgerSystem = "GL";

void requireFree(const std::optional<fs::path>& taken) {
    if (taken) {
        throw Failure(exit_code::usage, HostText::fileExists, {sqlite::utf8Of(*taken)});
    }
}

/// Runs a step that writes the account's files; an Error, such as one of the disk, becomes a Failure that names the
/// account.
template <class Step> auto onDisk(const fs::path& account, Language language, Step&& step) {
    try {
        return step();
    } catch (const Error& error) {
        throw Failure(exit_code::database, HostText::moveFailed, {sqlite::utf8Of(account), reasonText(language, error)})
            .because({error, {}});
    }
}

void setOption(Connection& connection, LoadableTables& tables, const AccountOption& option) {
    const std::string where = std::string(" where csysid=N'") + ledgerSystem + "' and cname=N'" + option.name + "'";
    std::optional<std::string> defaultValue;
    const auto present = connection.Execute("select cdefault from accinformation" + where);
    if (!present->atEnd()) {
        const Variant value = present->Fields().Item("cdefault");
        defaultValue = value.isNull() ? std::nullopt : std::optional(toText(value));
    }
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

} // namespace

std::vector<AccountOption> readAccountOptions(const std::vector<std::string>& texts) {
    std::vector<AccountOption> options;
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        if (equals == std::string::npos || equals == 0) {
            throw Failure(exit_code::usage, HostText::setNeedsValue, {text});
        }
        const std::string name = text.substr(0, equals);
        const std::string value = text.substr(equals + 1);
        const auto known = std::find_if(accountOptionNames.begin(), accountOptionNames.end(),
                                        [&name](auto candidate) { return asciiLower(candidate) == asciiLower(name); });
        if (known == accountOptionNames.end()) {
            throw Failure(exit_code::usage, HostText::setUnknown, {name, joined(accountOptionNames, ", ")});
        }
        if (std::any_of(options.begin(), options.end(),
                        [&known](const auto& option) { return option.name == *known; })) {
            throw Failure(exit_code::usage, HostText::setTwice, {std::string(*known)});
        }
        const std::string truth = asciiLower(value);
        if (truth != "true" && truth != "false") {
            throw Failure(exit_code::usage, HostText::setBadValue, {std::string(*known), value});
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
    requireFree(sqlite::NewDatabase::takenName(path));
    const auto database = onDisk(path, language, [&path] { return std::make_unique<sqlite::NewDatabase>(path); });
    const LoadedTables loaded = fill(database->file(), files, options, language, stopRequested);
    requireFree(onDisk(path, language, [&database] { return database->publish(); }));
    return loaded;
}

} // namespace z7::cashflow::host
