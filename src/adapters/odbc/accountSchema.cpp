#include "adapters/odbc/accountSchema.h"

#include "adapters/odbc/quoting.h"
#include "adapters/odbc/scripts.h"
#include "adapters/tsql/tokens.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <cstddef>

namespace z7::cashflow::odbc {
namespace {

/// The end of the line that begins here, without its line break.
std::size_t endOfLine(std::string_view text, std::size_t at) { return std::min(text.find('\n', at), text.size()); }

/// Whether a line consists of "go".
bool isSeparator(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return false;
    }
    return asciiLower(line.substr(first, line.find_last_not_of(" \t\r") - first + 1)) == "go";
}

/// The position after the element that begins here: a text, a quoted name, a comment, or one byte.
std::size_t skipPiece(std::string_view text, std::size_t at) {
    if (text[at] == '\'') {
        tsql::Literal ignored;
        return tsql::scanText(text, at, at, ignored);
    }
    if (text[at] == '[' || text[at] == '"') {
        return tsql::skipQuotedName(text, at);
    }
    const std::size_t behind = tsql::skipComment(text, at);
    return behind == at ? at + 1 : behind;
}

/// The single value that a query returns; null if it returns no record.
Variant answer(Connection& connection, const std::string& question) {
    const auto records = connection.Execute(question);
    return records->State() == ObjectState::closed || records->atEnd() ? Variant() : records->Fields().Item(0);
}

/// The tables and views that batches create.
std::vector<std::string> namesMade(const std::vector<std::string>& batches) {
    std::vector<std::string> names;
    for (const std::string& batch : batches) {
        const tsql::Tokens source(batch);
        const auto& tokens = source.tokens;
        if (tokens.size() > 3 && tokens[0].lower == "create" &&
            (tokens[1].lower == "table" || tokens[1].lower == "view")) {
            names.emplace_back(tokens[2].text);
        }
    }
    return names;
}

std::vector<std::string> accountBatches() {
    std::vector<std::string> batches = scriptBatches(scripts::accountTables);
    for (const char* script : {scripts::accountViews, scripts::logTables}) {
        const std::vector<std::string> more = scriptBatches(script);
        batches.insert(batches.end(), more.begin(), more.end());
    }
    return batches;
}

void runBatches(Connection& connection, const std::vector<std::string>& batches) {
    for (const std::string& batch : batches) {
        connection.Execute(batch);
    }
}

} // namespace

std::vector<std::string> scriptBatches(std::string_view script) {
    std::vector<std::string> batches;
    std::size_t begin = 0;
    const auto finish = [&](std::size_t end) {
        const std::string_view batch = script.substr(begin, end - begin);
        if (const tsql::Tokens source(batch); source.tokens.size() > 1) { // one token is the end
            batches.emplace_back(batch);
        }
    };
    bool lineBegins = true;
    for (std::size_t at = 0; at < script.size();) {
        const std::size_t end = endOfLine(script, at);
        if (lineBegins && isSeparator(script.substr(at, end - at))) {
            finish(at);
            at = std::min(end + 1, script.size());
            begin = at;
            continue;
        }
        at = skipPiece(script, at);
        lineBegins = script[at - 1] == '\n';
    }
    finish(script.size());
    return batches;
}

std::vector<std::string> accountNames() { return namesMade(accountBatches()); }

std::vector<std::string> systemNames() { return namesMade(scriptBatches(scripts::systemTables)); }

std::string currentDatabase(Connection& connection) {
    return toTextOrEmpty(answer(connection, "select db_name() as name"));
}

void workIn(Connection& connection, const std::string& database) { connection.Execute("use " + serverName(database)); }

bool databaseExists(Connection& connection, const std::string& database) {
    return !answer(connection, "select db_id(" + serverText(database) + ") as id").isNull();
}

void makeDatabase(Connection& connection, const std::string& database) {
    const std::string collation = ignoresLetterCase(connection) ? "" : " collate Chinese_PRC_CI_AS";
    connection.Execute("create database " + serverName(database) + collation);
}

void dropDatabase(Connection& connection, const std::string& database) {
    connection.Execute("drop database " + serverName(database));
}

bool ignoresLetterCase(Connection& connection) {
    return !answer(connection, "select 1 as same where N'a' = N'A'").isNull();
}

std::vector<std::string> namesThere(Connection& connection, const std::vector<std::string>& names) {
    std::vector<std::string> there;
    std::copy_if(names.begin(), names.end(), std::back_inserter(there), [&connection](const std::string& name) {
        return !answer(connection, "select object_id(" + serverText(name) + ") as id").isNull();
    });
    return there;
}

void makeAccountSchema(Connection& connection) {
    runBatches(connection, accountBatches());
    const std::string own = currentDatabase(connection);
    workIn(connection, systemDatabase);
    if (namesThere(connection, systemNames()).empty()) {
        runBatches(connection, scriptBatches(scripts::systemTables));
    }
    workIn(connection, own);
}

void addLogTables(Connection& connection) { runBatches(connection, scriptBatches(scripts::logTables)); }

} // namespace z7::cashflow::odbc
