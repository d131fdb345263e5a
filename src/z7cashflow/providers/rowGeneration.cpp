#include "z7cashflow/providers/rowGeneration.h"

#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/model/ItemSource.h"
#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/settingStatements.h"
#include "z7cashflow/statements/voucherStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace z7::cashflow {

namespace {

constexpr const char* cashItemClass = "98";

bool isTrue(const Variant& flag) { return !flag.isNull() && toBool(flag); }

/// The origin of records, according to the text of their statement.
struct Origin {
    bool storedRows = false;       ///< cash-flow rows, not voucher lines
    bool storedRowsOfView = false; ///< read through the view without a year, whose rows keep their identity

    explicit Origin(const std::string& source) {
        const std::string text = asciiLower(source);
        storedRowsOfView = text.find("gl_v_cashtable") != std::string::npos;
        storedRows = storedRowsOfView || text.find("gl_cashtable") != std::string::npos;
    }
};

// Sets a row's field to the value of the column with that name. If the column does not exist, or on failure, the
// field is unchanged.
void copyField(CashFlow& row, const std::string& name, FieldList& record) {
    if (record.has(name)) {
        ignoringErrors([&] { row.SetValue(name, record.Item(name)); });
    }
}

bool lacksItem(const CashFlow& row) { return isNullOrEmpty(row.Item("cCashItem")); }

// Creates one row from one record and finds its item.
class RowMaker {
public:
    RowMaker(Connection& objCon, Recordset& records, CashFlowCollection& collection, bool bFromDraft)
        : objCon_(objCon), record_(records.Fields()), collection_(collection), origin_(records.Source()),
          bFromDraft_(bFromDraft) {}

    // Stored rows are always accepted; voucher lines only on the side where the account records its cash flow.
    [[nodiscard]] bool givesRow() const {
        if (origin_.storedRows) {
            return true;
        }
        const Variant cashAccount = record_.Item("bCashItem");
        return !cashAccount.isNull() && toBool(cashAccount) == modPublic::context().bCashCode;
    }

    void makeRow(Date dbill_date) {
        const auto row = collection_.CreateCFObject();
        for (const std::string& name : row->Fields()) {
            if (name != "RowGuid" || origin_.storedRowsOfView) {
                copyField(*row, name, record_);
            }
        }
        findItem(*row);
        row->SetValue("dbill_date", dbill_date);
        if (!lacksItem(*row) || modPublic::context().bAutoDisplay) {
            collection_.Add(row);
            if (isObserved()) {
                modPublic::context().itemObserver(*row, source_);
            }
        }
    }

private:
    [[nodiscard]] static bool isObserved() { return modPublic::context().itemObserver != nullptr; }

    // The row's own item, otherwise that of the user's draft, the voucher line, or the template of account and
    // side.
    void findItem(CashFlow& row) {
        const Variant debit = row.Item("md");
        const bool bDir = !debit.isNull() && toDouble(debit) != 0.0;
        std::string itemCode;
        source_ = ItemSource{};
        source_.kind = ItemSource::Kind::record;
        if (bFromDraft_ && lacksItem(row)) {
            data_.GetCashFlowFromDraft(objCon_, toInt16(row.Item("inid")), itemCode);
            allot(row, itemCode);
            source_.kind = ItemSource::Kind::draft;
            source_.user = isObserved() ? modPublic::requiredLogin().userId() : std::string();
        }
        if (lacksItem(row)) {
            takeItemOfLine(row);
        }
        if (lacksItem(row)) {
            source_ = {ItemSource::Kind::itemTemplate, {}, toText(row.Item("ccode")), bDir, {}};
            data_.GetCashFlowTemplate(objCon_, source_.account, bDir, toDate(row.Item("dbill_date")), itemCode,
                                      isObserved() ? &source_.start : nullptr);
            allot(row, itemCode);
            if (lacksItem(row)) {
                source_ = ItemSource{};
            }
        } else {
            // Names of items may change; the row shows the present one.
            row.SetValue("cCashItemName", data_.GetCFItemName(objCon_, toText(row.Item("cCashItem"))));
        }
    }

    void allot(CashFlow& row, const std::string& itemCode) {
        row.SetValue("cCashItem", itemCode);
        row.SetValue("cCashItemName", data_.GetCFItemName(objCon_, itemCode));
    }

    // An auxiliary item of the cash-flow class is the item; an item on the line itself takes precedence over it.
    // A column that the lines do not have passes the tests but has no code.
    void takeItemOfLine(CashFlow& row) {
        std::string itemCode;
        const auto read = [&](const char* column, auto&& use) {
            if (record_.has(column)) {
                ignoringErrors([&] { use(record_.Item(column)); });
            }
        };
        const auto takeCode = [&](const Variant& code) { itemCode = toTextOrEmpty(code); };
        bool holdsClass = true;
        bool isCashItem = true;
        read("citem_class", [&](const Variant& itemClass) {
            holdsClass = !itemClass.isNull();
            isCashItem = holdsClass && toText(itemClass) == cashItemClass;
        });
        if (holdsClass) {
            modPublic::debugText("111");
            if (isCashItem) {
                read("citem_id", takeCode);
            }
        }
        bool holdsItem = true;
        read("ccashitem_id", [&](const Variant& item) { holdsItem = !item.isNull(); });
        source_ = ItemSource{};
        source_.kind = ItemSource::Kind::auxiliary;
        if (holdsItem) {
            modPublic::debugText("222");
            read("ccashitem_id", [&](const Variant& code) {
                takeCode(code);
                source_.kind = ItemSource::Kind::line;
            });
        }
        modPublic::debugText("itemCode:" + itemCode);
        ignoringErrors([&] { row.SetValue("cCashItem", itemCode); });
        ignoringErrors([&] { row.SetValue("cCashItemName", data_.GetCFItemName(objCon_, itemCode)); });
    }

    Connection& objCon_;
    FieldList& record_;
    CashFlowCollection& collection_;
    Origin origin_;
    bool bFromDraft_;
    DataProvider data_;
    ItemSource source_; ///< of the current row
};

// The sign of the voucher's kind, read on a separate session; empty if the kind is unknown.
std::string kindText(Connection& objCon, std::int16_t isignseq) {
    const auto kinds = objCon.createRecordset();
    kinds->CursorLocation(CursorLocation::client);
    kinds->Open(filled(statements::voucherKind, isignseq), objCon.ConnectionString(), CursorType::forwardOnly,
                LockType::readOnly);
    std::string text = kinds->atEnd() ? std::string() : toTextOrEmpty(kinds->Fields().Item("csign"));
    kinds->Close();
    return text;
}

// Fields decided by the user or by generation, which a refresh does not change.
bool isDecided(std::string_view field) {
    constexpr std::array<std::string_view, 5> decided{"RowGuid", "cCashItem", "ccode", "md", "mc"};
    return std::find(decided.begin(), decided.end(), field) != decided.end();
}

} // namespace

double cashSum(Recordset& lines) {
    FieldList& line = lines.Fields();
    double sum = 0.0;
    for (; !lines.atEnd(); lines.MoveNext()) {
        if (isTrue(line.Item("bCashItem"))) {
            const double debit = toDouble(line.Item("md"));
            const double credit = toDouble(line.Item("mc"));
            sum += debit != 0.0 ? debit : -credit;
        }
    }
    return sum;
}

std::shared_ptr<CashFlowCollection> GetCashFlowColFromRs(Connection& objCon, Recordset& records, Date dbill_date,
                                                         const OutsideKey& outsideKey, bool bFromDraft) {
    modPublic::context().bXJLL = asciiUpper(DataProvider().GetAccInfo(objCon, "GL", "bXJLL")) == "TRUE";
    std::shared_ptr<CashFlowCollection> collection;
    if (!records.atEnd()) {
        collection = CashFlowCollection::Create();
        if (!outsideKey.empty()) {
            collection->coutNo_id(outsideKey.text);
        }
        FieldList& first = records.Fields();
        ignoringErrors([&] { // records without a complete key leave that of the collection unchanged
            collection->UpdateCol(DatedVoucherKey{
                {toByte(first.Item("iPeriod")), toInt16(first.Item("isignseq")), toInt32(first.Item("iNo_id"))},
                toDate(first.Item("dbill_date"))});
        });
        RowMaker maker(objCon, records, *collection, bFromDraft);
        for (; !records.atEnd(); records.MoveNext()) {
            if (maker.givesRow()) {
                maker.makeRow(dbill_date);
            }
        }
    }
    records.Close();
    return collection;
}

void filterToLineOf(const CashFlow& row, Recordset& lines, const CashFlowCollection& collection, bool keyed) {
    const std::string inid = toTextOrEmpty(row.Item("inid"));
    lines.Filter(keyed ? filled(statements::lineFilter, collection.voucherKey(), inid)
                       : filled(statements::keylessLineFilter, inid));
}

bool sameAccount(const Variant& a, const Variant& b) { return !a.isNull() && !b.isNull() && toText(a) == toText(b); }

void RefreshColFromVoucher(Connection& objCon, CashFlowCollection& collection) {
    DataProvider data;
    const std::string kind = kindText(objCon, collection.isignseq());
    const bool keyed = data.HaveVoucherKey(objCon, collection.VoucherTable());
    const auto lines = data.GetVoucherTable(objCon, collection.VoucherTable(), collection.voucherKey());
    for (const auto& row : collection) {
        filterToLineOf(*row, *lines, collection, keyed);
        if (lines->atEnd()) {
            continue;
        }
        if (isNullOrEmpty(row->Item("csign"))) {
            row->SetValue("csign", kind);
        }
        FieldList& line = lines->Fields();
        if (!sameAccount(line.Item("ccode"), row->Item("ccode"))) {
            continue;
        }
        for (const std::string& name : row->Fields()) {
            if (!isDecided(name)) {
                copyField(*row, name, line);
            }
        }
    }
    lines->Close();
}

} // namespace z7::cashflow
