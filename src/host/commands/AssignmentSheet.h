#pragma once

#include "host/commands/ItemLookup.h"
#include "host/text/Language.h"
#include "host/work/Session.h"
#include "workbench/changes/Assignment.h"

#include <optional>
#include <string>
#include <vector>

namespace z7::cashflow::host {

/// The assignments of a spreadsheet to the lines of one voucher.
struct AssignedVoucher {
    workbench::VoucherKey key;
    std::vector<workbench::LineWish> lines;
};

/// A completed spreadsheet of open lines: CSV with the columns voucher, line and item, and optionally account, side
/// and amount, which are compared with the voucher. Other columns, and records without an item, are ignored.
class AssignmentSheet {
public:
    /// Reads a sheet; name is its name in messages. Failure (usage) with all faults of form: in the CSV itself,
    /// a missing column, an invalid key, line or amount, vouchers of several years.
    AssignmentSheet(const std::string& text, std::string name, Language language);

    /// The accounting year of its vouchers; empty if no record has an item.
    [[nodiscard]] std::optional<std::int16_t> year() const;
    /// The assignments by voucher, in the order of their first records. Failure (usage) with all faults: an
    /// unknown item or sign of a kind, a voucher or line that does not exist, another account or side than the
    /// voucher has, amounts that exceed a line.
    [[nodiscard]] std::vector<AssignedVoucher> check(Session& session, const ItemLookup& items) const;

private:
    struct Record {
        std::size_t at = 0; ///< line in the file
        std::string key;    ///< as it is written, valid in form, maybe with the sign of a kind
        std::int16_t year = 0;
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
