#pragma once

#include "z7cashflow/model/FieldShape.h"
#include "z7cashflow/model/ISQLSerializable.h"
#include "z7cashflow/model/IXmlSerializable.h"
#include "z7cashflow/support/Variant.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow {

class CashFlowCollection;

/// One cash-flow row: this much of one voucher line belongs to one cash-flow item.
///
/// A bag of named values whose fields come from the schema; names are compared exactly, case included. The row's
/// property key is its name in its collection; its field "RowGuid" is its identity in the database; its field "inid"
/// is the number of the voucher line that it belongs to. Rows are made by CashFlowCollection::CreateCFObject.
class CashFlow final : public ISQLSerializable, public IXmlSerializable {
public:
    CashFlow() = default;
    CashFlow(const CashFlow&) = delete;
    CashFlow& operator=(const CashFlow&) = delete;

    /// The collection that holds the row, or nothing; also nothing once that collection is gone. It is not owned.
    [[nodiscard]] std::shared_ptr<CashFlowCollection> objParent() const noexcept;
    void objParent(const std::shared_ptr<CashFlowCollection>& value) noexcept;

    /// The row's name in its collection.
    [[nodiscard]] const std::string& key() const noexcept { return key_; }
    /// Also sets the field "key": error 1000 if the row has no such field, after the property has changed.
    void key(const std::string& value);

    /// The value of a field. Error 1000 if the row has no such field.
    [[nodiscard]] const Variant& Item(const std::string& Field) const;
    /// Stores a value as it is and marks the collection as changed, also if the value is the same. Error 1000 if the
    /// row has no such field; nothing has changed then.
    void SetValue(const std::string& Field, const Variant& vdata);
    /// The number of fields.
    [[nodiscard]] std::int32_t Count() const noexcept;
    /// Whether the row is complete: an item, an account and at least one amount. If not, strInfo becomes the reason,
    /// a tab, the line's number, a tab and the column of the dialog's grid that lacks its value; if so, strInfo stays.
    /// Error 1000 if the row lacks one of the fields tested.
    [[nodiscard]] bool CheckCashFlow(std::string& strInfo) const;
    /// The field names in their order.
    [[nodiscard]] const std::vector<std::string>& Fields() const noexcept;

    /// One insert statement.
    [[nodiscard]] std::string InsertSql(const std::string& tableName, const CashFlowStruct& structure) const override;
    /// One row element.
    [[nodiscard]] std::string Save() const override;
    /// Takes a row element: the row then has exactly the element's attributes as fields, texts or null. The property
    /// key stays. Error 457 where two attributes differ in their prefix alone; the row then has those before the second
    /// one.
    void Load(const XmlSource& xml) override;

private:
    friend class CashFlowCollection;

    /// Replaces the row's fields by those of a shape, each null.
    void takeShape(std::shared_ptr<const FieldShape> shape);
    /// Load for one of many rows, which most likely has the shape of the one before it.
    void loadElement(const XmlNode& element, const std::shared_ptr<const FieldShape>& likely);
    void markParent() const noexcept;
    void appendInsertSql(std::string& out, const std::string& tableName, const CashFlowStruct& structure) const;
    void appendXml(std::string& out) const;
    [[nodiscard]] const Variant* find(const std::string& Field) const noexcept;

    std::weak_ptr<CashFlowCollection> objParent_;
    std::shared_ptr<const FieldShape> shape_ = FieldShape::empty();
    std::vector<Variant> values_;
    std::string key_;
};

} // namespace z7::cashflow
