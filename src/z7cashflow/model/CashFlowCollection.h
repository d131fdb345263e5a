#pragma once

#include "z7cashflow/model/CashFlow.h"
#include "z7cashflow/model/CashFlowStruct.h"
#include "z7cashflow/model/ISQLSerializable.h"
#include "z7cashflow/model/IXmlSerializable.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/KeyedList.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The cash-flow rows of one voucher, with the voucher's key and date.
///
/// A ledger voucher is identified by iPeriod, isignseq and iNo_id, with the year of the login context; a voucher of
/// another subsystem by coutNo_id. The collection creates its own rows and records whether anything was changed. It
/// is always held by shared pointers; Create creates one.
class CashFlowCollection final : public ISQLSerializable,
                                 public IXmlSerializable,
                                 public std::enable_shared_from_this<CashFlowCollection> {
    struct Private {
        explicit Private() = default;
    };

public:
    /// The rows in their order, found by index from 1 or by key.
    using Rows = KeyedList<std::shared_ptr<CashFlow>>;

    /// A new, empty collection with its schema. Error 1001 if the schema document cannot be parsed.
    [[nodiscard]] static std::shared_ptr<CashFlowCollection> Create();
    /// Only for Create, which alone can make the argument.
    explicit CashFlowCollection(Private);
    CashFlowCollection(const CashFlowCollection&) = delete;
    CashFlowCollection& operator=(const CashFlowCollection&) = delete;

    /// Whether rows were added, removed or given values since creation. Only the dialog resets it.
    [[nodiscard]] bool Changed() const noexcept { return Changed_; }

    /// A new row with all fields of the schema, a new RowGuid and key, and the voucher's key and date. It is
    /// not yet in the list.
    [[nodiscard]] std::shared_ptr<CashFlow> CreateCFObject();

    /// Sets the voucher key and date of the collection and of all its rows.
    void UpdateCol(std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date);
    /// The same for key and date in one piece.
    void UpdateCol(const DatedVoucherKey& voucher);

    /// The field schema. Owned by the collection.
    [[nodiscard]] const CashFlowStruct& CFStruct() const noexcept { return CFStruct_; }

    // The voucher's header. Setters change only the collection; UpdateCol also changes the rows.
    /// The accounting period, 0 to 255.
    [[nodiscard]] std::uint8_t iPeriod() const noexcept { return key_.period; }
    /// The ledger voucher's key as used by statements. Error 6 as for iNo_id.
    [[nodiscard]] VoucherKey voucherKey() const;
    /// The voucher's date; 1899-12-30 at first, 1900-01-01 if it is not known.
    [[nodiscard]] Date dbill_date() const noexcept { return dbill_date_; }
    /// Sets the date.
    void dbill_date(Date value) noexcept { dbill_date_ = value; }
    /// Name of the table or view with the voucher's lines, such as "gl_accvouch".
    [[nodiscard]] const std::string& VoucherTable() const noexcept { return VoucherTable_; }
    /// Sets the name of that table.
    void VoucherTable(const std::string& value) { VoucherTable_ = value; }
    /// Sets the period.
    void iPeriod(std::uint8_t value) noexcept { key_.period = value; }
    /// Number of the voucher's kind in dsign.
    [[nodiscard]] std::int16_t isignseq() const noexcept { return key_.kind; }
    /// Sets the kind.
    void isignseq(std::int16_t value) noexcept { key_.kind = value; }
    /// The voucher's number. It is kept in 32 bits and read in 16: error 6 outside -32768 to 32767.
    [[nodiscard]] std::int16_t iNo_id() const;
    /// Sets the number.
    void iNo_id(std::int16_t value) noexcept { key_.number = value; }
    /// The number that the voucher had before, 0 for none. Error 6 as for iNo_id.
    [[nodiscard]] std::int16_t ibackno_id() const;
    /// Sets the former number.
    void ibackno_id(std::int16_t value) noexcept { ibackno_id_ = value; }
    /// Key of a voucher of another subsystem; empty for a ledger voucher.
    [[nodiscard]] const std::string& coutNo_id() const noexcept { return coutNo_id_; }
    /// Sets that key.
    void coutNo_id(const std::string& value) { coutNo_id_ = value; }

    /// Appends a row with its key; does nothing for a null pointer. Error 457 if the key is already in the
    /// list; the row's objParent is set all the same.
    void Add(const std::shared_ptr<CashFlow>& objItem);
    /// Inserts a row in front of the one whose key is BeforeItem. If that is not possible, no error is raised;
    /// the row is not in the list, but its objParent is set and the collection counts as changed.
    void Insert(const std::shared_ptr<CashFlow>& objItem, const std::string& BeforeItem);
    /// The row at an index from 1 (error 9 outside the list) or of a key (error 5 if there is none).
    [[nodiscard]] std::shared_ptr<CashFlow> Item(std::int32_t vntIndexKey) const;
    /// The row of a key, in any letter case. Error 5 if there is none.
    [[nodiscard]] std::shared_ptr<CashFlow> Item(const std::string& vntIndexKey) const;
    /// The number of rows.
    [[nodiscard]] std::int32_t Count() const noexcept;
    /// Removes a row from the list. Errors as for Item; nothing has changed then.
    void Remove(std::int32_t vntIndexKey);
    /// The same for the row of a key.
    void Remove(const std::string& vntIndexKey);
    /// Always 0. Kept for hosts that call it.
    [[nodiscard]] double GetCashFlowSum() const noexcept { return 0.0; }
    /// The rows in list order. The list must not be changed during the iteration.
    [[nodiscard]] const Rows& NewEnum() const noexcept { return rows_; }
    /// The first row, for a range-based for loop over the rows.
    [[nodiscard]] Rows::const_iterator begin() const noexcept { return rows_.begin(); }
    /// The end of that loop.
    [[nodiscard]] Rows::const_iterator end() const noexcept { return rows_.end(); }
    /// Adapts the rows to a change of the voucher's lines: line CurInid was inserted (bInsert) or deleted, so
    /// that the rows of later lines move by one, and the rows of a deleted line are removed. Affects only rows
    /// of the voucher with that key, or of that period and kind without a number.
    void UpdateInid(std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id, std::int16_t CurInid,
                    bool bInsert);

    /// A delete of the voucher's stored rows, in any year, and an insert for each row, joined by ";". Error 6
    /// if iNo_id does not fit in 16 bits.
    [[nodiscard]] std::string InsertSql(const std::string& tableName, const CashFlowStruct& structure) const override;
    /// The collection's XML document.
    [[nodiscard]] std::string Save() const override;
    /// Replaces the rows by those of a document; the header is unchanged. A text written by Save can be read
    /// whatever its length. Error 1002 if the text is not an XML document; the rows are then unchanged. Error
    /// 457 if two attributes of a row differ only in their prefix; the list then contains the document's rows
    /// before that one.
    void Load(const XmlSource& xml) override;

private:
    friend class CashFlow;
    /// Sets Changed for the dialog: true after it has replaced the rows, false after they were restored.
    friend class DialogAccess;

    void applyHeader(CashFlow& row) const;
    template <class IndexOrKey> void removeRow(const IndexOrKey& vntIndexKey);

    Rows rows_;
    CashFlowStruct CFStruct_;
    std::shared_ptr<const FieldShape> schemaShape_;
    VoucherKey key_;
    std::int32_t ibackno_id_ = 0;
    Date dbill_date_;
    std::string VoucherTable_;
    std::string coutNo_id_;
    bool Changed_ = false;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
