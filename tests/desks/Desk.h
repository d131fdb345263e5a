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

/// A user's desk in an office: its own session and login. At most one per thread.
class Desk {
public:
    /// Opens its session with a connection string of the office.
    Desk(const Office& office, const std::string& connectionString);
    explicit Desk(const Office& office) : Desk(office, office.connectionString(60000)) {}
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    [[nodiscard]] Connection& connection() { return *connection_; }
    [[nodiscard]] IGlVoucherProvider& gl() { return provider_.gl(); }

    /// Writes the desk's mark on the voucher's lines.
    void mark(const workbench::VoucherHead& voucher, const std::string& mark);
    /// Locks the voucher as the program does, generates its rows, assigns all of them to one item, saves them,
    /// and marks lines and rows, all in the open transaction. Errors pass through.
    void edit(const workbench::VoucherHead& voucher, const std::string& mark, const std::string& item);
    /// The same in a transaction of its own, repeated while another desk holds a lock. False if the voucher is
    /// refused, which leaves it unchanged.
    bool save(const workbench::VoucherHead& voucher, const std::string& mark, const std::string& item);

    /// Allocates a voucher as the program does, repeated while another desk holds a lock. False if it is
    /// refused.
    bool allot(const workbench::VoucherKey& key);

    [[nodiscard]] std::vector<workbench::VoucherHead> vouchers();
    /// The stored rows of each voucher with rows: "rows:debit:credit".
    [[nodiscard]] std::map<std::string, std::string> stored();
    /// The marks on the lines of each voucher, and the marks with the items of its rows, without duplicates:
    /// "1", "1/0102".
    [[nodiscard]] std::map<std::string, std::vector<std::string>> marksOfLines();
    [[nodiscard]] std::map<std::string, std::vector<std::string>> marksOfRows();

private:
    std::map<std::string, std::vector<std::string>> marks(const std::string& query);

    std::unique_ptr<Connection> connection_;
    VoucherProvider provider_;
    DataProvider data_;
};

/// The key of a voucher in these maps: "period/kind/number".
[[nodiscard]] std::string nameOf(const workbench::VoucherKey& key);

} // namespace z7::cashflow::desks
