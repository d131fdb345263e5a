#include "host/commands/AssignmentSheet.h"

#include "host/account/csvReader.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/commands/VoucherArgument.h"
#include "host/text/amountText.h"
#include "workbench/vouchers/openLineColumns.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace z7::cashflow::host {

namespace columns = workbench::openLineColumns;

using workbench::Amount;
using workbench::LineWish;
using workbench::Voucher;
using workbench::VoucherKey;
using workbench::VoucherLine;

namespace {

constexpr std::size_t mostFaults = 50;

std::string trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

std::optional<std::int32_t> readLine(const std::string& text) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

std::optional<Amount> readAmount(const std::string& text) {
    std::optional<Amount> amount;
    ignoringErrors([&] { amount = Amount::read(text); });
    return amount;
}

} // namespace

/// Collects faults with their lines, to report them together.
class AssignmentSheet::Faults {
public:
    Faults(const std::string& name, Language language) : name_(name), language_(language) {}
    void add(std::size_t at, HostText text, const std::vector<std::string>& arguments) {
        add(at, Failure(exit_code::usage, text, arguments));
    }
    void add(std::size_t at, const Failure& failure) {
        ++count_;
        if (faults_.size() < mostFaults) {
            faults_.push_back({failure.code(), hostText(language_, HostText::csvAt,
                                                        {name_, std::to_string(at), failure.message(language_)})});
        }
    }
    void raise() const {
        if (count_ > 0) {
            throw Failure(exit_code::usage, HostText::sheetFaults, {name_, std::to_string(count_)}, faults_);
        }
    }

private:
    const std::string& name_;
    Language language_;
    std::size_t count_ = 0;
    std::vector<Failure::Fault> faults_;
};

AssignmentSheet::AssignmentSheet(const std::string& text, std::string name, Language language)
    : name_(std::move(name)), language_(language) {
    Faults faults(name_, language);
    std::vector<std::string> names;
    std::istringstream stream(text);
    try {
        readCsv(stream, [&](const CsvRecord& record) {
            std::vector<std::string> fields;
            for (const auto& field : record.fields) {
                fields.push_back(trimmed(field.value_or(std::string())));
            }
            if (!names.empty()) {
                take(names, fields, record.line, faults);
                return;
            }
            for (std::string& field : fields) {
                field = asciiLower(field);
            }
            names = std::move(fields);
            for (const std::string_view needed : {columns::voucher, columns::line, columns::item}) {
                if (std::find(names.begin(), names.end(), needed) == names.end()) {
                    faults.add(record.line, HostText::sheetNoColumn, {std::string(needed)});
                }
            }
            faults.raise();
        });
    } catch (const CsvError& error) {
        faults.add(error.line(), HostText::sheetNoCsv, {});
    }
    faults.raise();
}

void AssignmentSheet::take(const std::vector<std::string>& names, const std::vector<std::string>& fields,
                           std::size_t at, Faults& faults) {
    const auto field = [&](std::string_view column) {
        const auto place = std::find(names.begin(), names.end(), column) - names.begin();
        const auto index = static_cast<std::size_t>(place);
        return index < names.size() && index < fields.size() ? fields[index] : std::string();
    };
    Record record;
    record.at = at;
    record.item = field(columns::item);
    if (record.item.empty()) {
        return;
    }
    const std::string keyText = field(columns::voucher);
    const auto line = readLine(field(columns::line));
    const std::string amount = field(columns::amount);
    record.amount = amount.empty() ? std::nullopt : readAmount(amount);
    try {
        record.year = writtenKey(keyText).key.year;
        record.key = keyText;
        if (!records_.empty() && records_.front().year != record.year) {
            faults.add(at, HostText::sheetOtherYear, {keyText, std::to_string(records_.front().year)});
        }
    } catch (const Failure& badKey) {
        faults.add(at, badKey);
    }
    if (!line) {
        faults.add(at, HostText::sheetBadLine, {field(columns::line)});
    }
    if (!amount.empty() && !record.amount) {
        faults.add(at, HostText::sheetBadAmount, {amount});
    }
    if (!record.key.empty() && line) {
        record.line = *line;
        record.account = field(columns::account);
        record.side = asciiLower(field(columns::side));
        records_.push_back(std::move(record));
    }
}

std::optional<std::int16_t> AssignmentSheet::year() const {
    return records_.empty() ? std::nullopt : std::optional(records_.front().year);
}

/// Adds a record to the assignments of its line. Returns false if the amount is 0 or exceeds the rest of the line.
bool AssignmentSheet::addWish(std::vector<LineWish>& lines, const Record& record, const VoucherLine& line,
                              const std::string& item) {
    auto wish =
        std::find_if(lines.begin(), lines.end(), [&record](const LineWish& each) { return each.line == record.line; });
    if (wish == lines.end()) {
        wish = lines.insert(wish, {record.line, {}});
    }
    Amount left = Amount::of(line.amount());
    for (const auto& earlier : wish->items) {
        left -= earlier.amount.value_or(left);
    }
    const Amount wished = record.amount.value_or(left);
    wish->items.push_back({item, wished});
    return !wished.isZero() && (line.amount() < 0.0 ? left - wished : wished - left).value() <= 0.0;
}

void AssignmentSheet::checkRecord(const Record& record, const Voucher& voucher, const std::string& item,
                                  AssignedVoucher& assigned, Faults& faults) {
    const VoucherLine* line = voucher.line(record.line);
    if (voucher.lines.empty()) {
        faults.add(record.at, HostText::noVoucher, {record.key});
        return;
    }
    if (line == nullptr) {
        faults.add(record.at, HostText::sheetNoLine, {record.key, std::to_string(record.line)});
        return;
    }
    const std::string_view side = line->isDebit() ? columns::debit : columns::credit;
    if (!record.account.empty() && record.account != line->account) {
        faults.add(record.at, HostText::sheetOtherAccount, {record.account, line->account});
    } else if (!record.side.empty() && record.side != side) {
        faults.add(record.at, HostText::sheetOtherSide, {record.side});
    } else if (!addWish(assigned.lines, record, *line, item)) {
        faults.add(record.at, HostText::sheetTooMuch,
                   {record.amount ? record.amount->text() : "0.00", amountText(line->amount())});
    }
}

std::vector<AssignedVoucher> AssignmentSheet::check(Session& session, const ItemLookup& items) const {
    Faults faults(name_, language_);
    std::vector<AssignedVoucher> assigned;
    std::vector<Voucher> vouchers; // indexed as the assigned vouchers
    const auto keyIn = [&](const Record& record) -> std::optional<VoucherKey> {
        try {
            return keyOf(record.key, session);
        } catch (const Failure& unknownKind) {
            faults.add(record.at, unknownKind);
            return std::nullopt;
        }
    };
    for (const Record& record : records_) {
        const std::string item = items.codeOf(record.item);
        if (item.empty()) {
            const std::string near = items.nearTo(record.item);
            faults.add(record.at, near.empty() ? HostText::itemMissing : HostText::itemNear, {record.item, near});
        }
        const auto key = keyIn(record);
        if (!key) {
            continue;
        }
        const auto known = std::find_if(assigned.begin(), assigned.end(),
                                        [&key](const AssignedVoucher& each) { return each.key == *key; });
        const auto place = static_cast<std::size_t>(known - assigned.begin());
        if (known == assigned.end()) {
            assigned.push_back({*key, {}});
            vouchers.push_back(session.judge().read(*key));
        }
        checkRecord(record, vouchers[place], item, assigned[place], faults);
    }
    faults.raise();
    return assigned;
}

} // namespace z7::cashflow::host
