#pragma once

#include "adapters/sqlite/Connection.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {

/// A small company on the embedded database, in a folder of its own that goes away with it. Year 2013; 1001 and 1002
/// are cash accounts; the items 01 and 02. Its vouchers, each of two lines:
///   1/2/5      1001 debit 100, 6001 credit 100 whose auxiliary item is the item 01; of no other subsystem
///   1/1/6      1001 debit 250.5, 6001 credit 250.5; made from the outside voucher OUT
///   2/1/40000  1001 debit 7, 6001 credit 7; made from the outside voucher BIG, its number beyond 16 bits
/// Account 6001 has the template 01 for credits. The table sales holds the outside voucher OUT, with the item 02 on its
/// second line; the table costs the outside voucher NOCASH, whose lines are on no cash account. The options bCashCode,
/// bAutoDisplay and bXJLL are False.
class Company {
public:
    Company();
    Company(const Company&) = delete;
    Company& operator=(const Company&) = delete;
    ~Company();

    /// The session that a host would hand in.
    [[nodiscard]] sqlite::Connection& connection() { return *connection_; }
    /// Each statement since the last call: "main: text" on the handed session, "own: text" on another.
    [[nodiscard]] std::vector<std::string> takeStatements();
    void setOption(const std::string& name, const std::string& value);
    void execute(const std::string& statement) { connection_->Execute(statement); }

    /// The records of a query, one a line: "column=text column=text", leaving out what is null.
    [[nodiscard]] std::vector<std::string> records(const std::string& query);
    /// What gl_cashtable holds, without what differs from row to row: "2013/1/2/5 line 2 account 6001 item 01 0 100".
    [[nodiscard]] std::vector<std::string> storedRows();
    /// The number of tables that lie in tempdb.
    [[nodiscard]] int temporaryTables();

private:
    void fill();

    std::filesystem::path folder_;
    std::unique_ptr<sqlite::Connection> connection_;
    std::vector<std::string> statements_;
};

} // namespace z7::cashflow::test
