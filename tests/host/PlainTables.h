#pragma once

#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "z7cashflow/support/conversions.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace z7::cashflow::host {

/// An account file, read table by table without the program's own queries.
class PlainTables {
public:
    PlainTables(const std::filesystem::path& file, int year) {
        connection_.Open(sqlite::connectionString(file));
        std::set<std::string> items;
        read("select citemcode from fitemss98", [&](auto&& text) { items.insert(text("citemcode")); });
        std::map<std::string, bool> accounts;
        read("select ccode,bCashItem,bend,bclose from code where iyear=" + std::to_string(year), [&](auto&& text) {
            accounts[text("ccode")] = text("bCashItem") == "True";
            if (text("bCashItem") == "True" && text("bend") == "True" && text("bclose") == "False") {
                cashAccounts.insert(text("ccode"));
            }
        });
        read("select iperiod,isignseq,ino_id,ccode,md,mc from gl_accvouch where iyear=" + std::to_string(year),
             [&](auto&& text) {
                 if (cashAccounts.contains(text("ccode"))) {
                     const std::int64_t moved = units(text("md")) - units(text("mc"));
                     cash += moved;
                     open[key(year, text)] += moved;
                 }
             });
        read("select iPeriod,iSignSeq,iNo_id,ccode,cCashItem,md,mc from gl_cashtable where iyear=" +
                 std::to_string(year),
             [&](auto&& text) {
                 if (!items.contains(text("cCashItem")) || !accounts.contains(text("ccode"))) {
                     return;
                 }
                 std::int64_t effect = units(text("md")) - units(text("mc"));
                 effect = accounts[text("ccode")] ? effect : -effect;
                 (effect > 0 ? receipts : payments)[text("cCashItem")] += std::abs(effect);
                 open[key(year, text)] -= effect;
             });
        std::erase_if(open, [](const auto& each) { return each.second == 0; });
    }

    std::set<std::string> cashAccounts;
    std::int64_t cash = 0; ///< in ten-thousandths, as all amounts here
    std::map<std::string, std::int64_t> receipts;
    std::map<std::string, std::int64_t> payments;
    std::map<std::string, std::int64_t> open; ///< by voucher, without those that are accounted for

    static std::int64_t units(double amount) { return std::llround(amount * 10000); }

private:
    static std::int64_t units(const std::string& amount) { return amount.empty() ? 0 : units(std::stod(amount)); }
    template <class Text> static std::string key(int year, Text&& text) {
        return std::to_string(year) + "/" + text("iperiod") + "/" + text("isignseq") + "/" + text("ino_id");
    }
    template <class Action> void read(const std::string& query, Action&& action) {
        const auto records = connection_.Execute(query);
        for (; !records->atEnd(); records->MoveNext()) {
            action([&](const char* column) { return toTextOrEmpty(records->Fields().Item(column)); });
        }
    }

    sqlite::Connection connection_;
};

} // namespace z7::cashflow::host
