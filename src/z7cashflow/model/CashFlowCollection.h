#pragma once

#include "z7cashflow/model/CashFlow.h"
#include "z7cashflow/model/CashFlowStruct.h"
#include "z7cashflow/model/ISQLSerializable.h"
#include "z7cashflow/model/IXmlSerializable.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/Date.h"
#include "z7cashflow/support/KeyedList.h"

#include <cstdint>
#include <memory>
#include <string>

namespace z7::cashflow {

/// The cash-flow rows of one voucher, with the voucher's key and date.
///
/// A ledger voucher is known by iPeriod, isignseq and iNo_id, the year coming from the login context; a voucher of
/// another subsystem is known by coutNo_id. The collection makes its own rows and knows whether anything was changed.
/// It is always held by shared pointers; Create makes one.
class CashFlowCollection final : public ISQLSerializable,
                                 public IXmlSerializable,
                                 public std::enable_shared_from_this<CashFlowCollection> {
    struct Private {
        explicit Private() = default;
    };

public:
    using Rows = KeyedList<std::shared_ptr<CashFlow>>;

    /// A new, empty collection with its schema. Error 1001 if the schema document cannot be parsed.
    [[nodiscard]] static std::shared_ptr<CashFlowCollection> Create();
    explicit CashFlowCollection(Private);
    CashFlowCollection(const CashFlowCollection&) = delete;
    CashFlowCollection& operator=(const CashFlowCollection&) = delete;

    /// Whether rows were added, removed or given values since creation. Nothing sets it back but the dialog.
    [[nodiscard]] bool Changed() const noexcept { return Changed_; }

    /// A new row with all fields of the schema, a fresh RowGuid and key, and the voucher's key and date. It is not yet
    /// in the list.
    [[nodiscard]] std::shared_ptr<CashFlow> CreateCFObject();

    /// Changes the voucher key and date of the collection and all its rows.
    void UpdateCol(std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date);
    void UpdateCol(const DatedVoucherKey& voucher);

    /// The field schema. Owned by the collection.
    [[nodiscard]] const CashFlowStruct& CFStruct() const noexcept { return CFStruct_; }

    // The voucher's header. Setters change the collection alone; only UpdateCol reaches the rows.
    [[nodiscard]] std::uint8_t iPeriod() const noexcept { return key_.period; }
    /// The ledger voucher's key as statements take it. Error 6 as for iNo_id.
    [[nodiscard]] VoucherKey voucherKey() const;
    [[nodiscard]] Date dbill_date() const noexcept { return dbill_date_; }
    void dbill_date(Date value) noexcept { dbill_date_ = value; }
    /// Name of the table or view that holds the voucher's lines, such as "gl_accvouch".
    [[nodiscard]] const std::string& VoucherTable() const noexcept { return VoucherTable_; }
    void VoucherTable(const std::string& value) { VoucherTable_ = value; }
    void iPeriod(std::uint8_t value) noexcept { key_.period = value; }
    /// Sequence number of the voucher's kind in dsign.
    [[nodiscard]] std::int16_t isignseq() const noexcept { return key_.kind; }
    void isignseq(std::int16_t value) noexcept { key_.kind = value; }
    /// The voucher's number. It is kept in 32 bits and read in 16: error 6 outside -32768 to 32767.
    [[nodiscard]] std::int16_t iNo_id() const;
    void iNo_id(std::int16_t value) noexcept { key_.number = value; }
    /// The number that the voucher had before, 0 for none. Error 6 as for iNo_id.
    [[nodiscard]] std::int16_t ibackno_id() const;
    void ibackno_id(std::int16_t value) noexcept { ibackno_id_ = value; }
    /// Key of a voucher of another subsystem; empty for a ledger voucher.
    [[nodiscard]] const std::string& coutNo_id() const noexcept { return coutNo_id_; }
    void coutNo_id(const std::string& value) { coutNo_id_ = value; }

    /// Appends a row under its key; nothing happens without a row. Error 457 if the key is in the list; the row's
    /// objParent is set all the same.
    void Add(const std::shared_ptr<CashFlow>& objItem);
    /// Puts a row in front of the one whose key is BeforeItem. Where that cannot be done nothing is raised, and the row
    /// is not in the list, yet its objParent is set and the collection counts as changed.
    void Insert(const std::shared_ptr<CashFlow>& objItem, const std::string& BeforeItem);
    /// The row at an index from 1 (error 9 outside the list) or of a key (error 5 if there is none).
    [[nodiscard]] std::shared_ptr<CashFlow> Item(std::int32_t vntIndexKey) const;
    [[nodiscard]] std::shared_ptr<CashFlow> Item(const std::string& vntIndexKey) const;
    [[nodiscard]] std::int32_t Count() const noexcept;
    /// Takes a row out of the list. Errors as for Item; nothing has changed then.
    void Remove(std::int32_t vntIndexKey);
    void Remove(const std::string& vntIndexKey);
    /// Always 0. Kept for hosts that ask.
    [[nodiscard]] double GetCashFlowSum() const noexcept { return 0.0; }
    /// The rows in list order. The list must not change while it is walked this way.
    [[nodiscard]] const Rows& NewEnum() const noexcept { return rows_; }
    [[nodiscard]] Rows::const_iterator begin() const noexcept { return rows_.begin(); }
    [[nodiscard]] Rows::const_iterator end() const noexcept { return rows_.end(); }
    /// Follows a change of the voucher's lines: line CurInid was inserted (bInsert) or deleted, so the rows of the
    /// lines after it move by one, and the rows of a deleted line go. Touches only rows of the voucher of that key, or
    /// of that period and kind without a number.
    void UpdateInid(std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id, std::int16_t CurInid,
                    bool bInsert);

    /// A delete of the voucher's stored rows, whatever their year, and an insert for each row, joined by ";".
    /// Error 6 where iNo_id is beyond 16 bits.
    [[nodiscard]] std::string InsertSql(const std::string& tableName, const CashFlowStruct& structure) const override;
    /// The collection's XML document.
    [[nodiscard]] std::string Save() const override;
    /// Replaces the rows with those of a document; the header stays. A text that Save has made is read back whatever
    /// its length. Error 1002 if the text is not an XML document; the rows stay then. Error 457 where two attributes of
    /// a row differ in their prefix alone; the list then holds the document's rows before that one.
    void Load(const XmlSource& xml) override;

private:
    friend class CashFlow;
    /// The dialog's way to Changed: true after it has filled the rows anew, false after they were put back.
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
