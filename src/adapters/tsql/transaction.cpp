#include "adapters/tsql/transaction.h"

#include "z7cashflow/support/Error.h"

#include <string_view>

namespace z7::cashflow::tsql {

void beginTransaction(const TextRunner& runner) {
    runner.run("BEGIN");
    // A statement that changes nothing obtains the account's write lock. "BEGIN IMMEDIATE" would also lock
    // zqsystem and tempdb, and a separate session could then not fill its temporary table.
    try {
        runner.run("DELETE FROM main.accinformation WHERE 0");
    } catch (const Error&) {
        ignoringErrors([&runner] { runner.takeBack("ROLLBACK"); });
        throw;
    }
}

void fillNewTable(const Step& step, const std::vector<std::string>& columns, const TextRunner& runner,
                  const TextRunner::Run& insert) {
    const std::string table = qualifiedName(step.target);
    std::string create = "CREATE TABLE " + table + " (";
    std::string_view before;
    for (const std::string& column : columns) {
        create.append(before).append(column);
        before = ", ";
    }
    runner.run("SAVEPOINT z7_into");
    try {
        runner.run(create + ")");
        insert("INSERT INTO " + table + ' ' + step.sql);
    } catch (const Error&) {
        ignoringErrors([&runner] { // if the disk was full, the database may already have rolled everything back
            runner.takeBack("ROLLBACK TO z7_into");
            runner.takeBack("RELEASE z7_into");
        });
        throw;
    }
    runner.run("RELEASE z7_into");
}

} // namespace z7::cashflow::tsql
