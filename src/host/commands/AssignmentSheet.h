#pragma once

#include "host/commands/ItemLookup.h"
#include "host/text/Language.h"
#include "host/work/Session.h"
#include "workbench/changes/Assignment.h"

#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// What a spreadsheet assigns to the lines of one voucher.
struct AssignedVoucher {
    workbench::VoucherKey key;
    std::vector<workbench::LineWish> lines;
};

/// A spreadsheet of open lines that a person has completed: CSV with the columns voucher, line and item, and with
/// account, side and amount where they are to be compared with the voucher; further columns are passed over, and so are
/// records without an item.
class AssignmentSheet {
public:
    /// Reads a sheet; the name stands in messages. Failure (usage) with every fault of form at once: of the CSV itself,
    /// a missing column, a key, a line or an amount that is none, vouchers of several years.
    AssignmentSheet(const std::string& text, std::string name, Language language);

    /// The accounting year of its vouchers; nothing if no record has an item.
    [[nodiscard]] std::optional<std::int16_t> year() const;
    /// What it assigns, voucher by voucher in the order of their first records. Failure (usage) with every fault at
    /// once: an unknown item, a voucher or a line that is not there, another account or side than the voucher has,
    /// amounts that exceed a line.
    [[nodiscard]] std::vector<AssignedVoucher> check(Session& session, const ItemLookup& items) const;

private:
    struct Record {
        std::size_t at = 0; ///< line of the file
        workbench::VoucherKey key;
        std::int32_t line = 0;
        std::string account;
        std::string side;
        std::optional<workbench::Amount> amount;
        std::string item;
    };
    class Faults;

    void take(const std::vector<std::string>& columns, const std::vector<std::string>& fields, std::size_t at,
              Faults& faults);

    static void checkRecord(const Record& record, const workbench::Voucher& voucher, const std::string& item,
                            AssignedVoucher& assigned, Faults& faults);
    static bool addWish(std::vector<workbench::LineWish>& lines, const Record& record,
                        const workbench::VoucherLine& line, const std::string& item);

    std::string name_;
    Language language_;
    std::vector<Record> records_;
};

} // namespace z7::cashflow::host
