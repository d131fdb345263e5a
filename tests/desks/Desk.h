#pragma once

#include "desks/Office.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/providers/VoucherProvider.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::desks {

/// A desk of an office: its own session, its own login. One at a time in a thread.
class Desk {
public:
    /// Opens its session by the connection string of that office.
    Desk(const Office& office, const std::string& connectionString);
    explicit Desk(const Office& office) : Desk(office, office.connectionString(60000)) {}
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    [[nodiscard]] Connection& connection() { return *connection_; }
    [[nodiscard]] IGlVoucherProvider& gl() { return provider_.Gl(); }

    /// Puts the desk's mark on the voucher's lines.
    void mark(const workbench::VoucherHead& voucher, const std::string& mark);
    /// Locks the voucher as the program does, generates its rows, gives all of them one item, saves them, and then
    /// marks lines and rows, in the transaction that is open. Errors as they come.
    void edit(const workbench::VoucherHead& voucher, const std::string& mark, const std::string& item);
    /// The same in a transaction of its own, again and again while another desk is in the way. False if the voucher is
    /// refused, which leaves it as it was.
    bool save(const workbench::VoucherHead& voucher, const std::string& mark, const std::string& item);

    /// Allots a voucher just as the program does, again and again while another desk is in the way. False if it is
    /// refused.
    bool allot(const workbench::VoucherKey& key);

    [[nodiscard]] std::vector<workbench::VoucherHead> vouchers();
    /// What is stored of each voucher that has rows: "rows:debit:credit".
    [[nodiscard]] std::map<std::string, std::string> stored();
    /// The marks on the lines of each voucher, and the marks with the items of its rows, each once: "1", "1/0102".
    [[nodiscard]] std::map<std::string, std::vector<std::string>> marksOfLines();
    [[nodiscard]] std::map<std::string, std::vector<std::string>> marksOfRows();

private:
    std::map<std::string, std::vector<std::string>> marks(const std::string& query);

    std::unique_ptr<Connection> connection_;
    VoucherProvider provider_;
    DataProvider data_;
};

/// A voucher as the maps name it: "period/kind/number".
[[nodiscard]] std::string nameOf(const workbench::VoucherKey& key);

} // namespace z7::cashflow::desks
