#pragma once

#include "z7cashflow/model/FieldShape.h"
#include "z7cashflow/model/ISQLSerializable.h"
#include "z7cashflow/model/IXmlSerializable.h"
#include "z7cashflow/support/Variant.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

class CashFlowCollection;

/// One cash-flow row: this much of one voucher line belongs to one cash-flow item.
///
/// A set of named values whose fields come from the schema; names are case-sensitive. The row's property key is its
/// name in its collection; its field "RowGuid" is its identity in the database; its field "inid" is the number of
/// the voucher line to which it belongs. Rows are created by CashFlowCollection::CreateCFObject.
///
/// A host that fills a row sets "inid", "ccode" (the line's account), "cCashItem" (the item's code), "md" and "mc"
/// (debit and credit); a save takes the other fields from the line. docs/xml.md lists all fields.
class CashFlow final : public ISQLSerializable, public IXmlSerializable {
public:
    CashFlow() = default;
    CashFlow(const CashFlow&) = delete;
    CashFlow& operator=(const CashFlow&) = delete;

    /// The collection to which the row was added, not owned; a null pointer before that, after Remove, and once
    /// the collection is destroyed. Rows dropped by UpdateInid or Load keep it.
    [[nodiscard]] std::shared_ptr<CashFlowCollection> objParent() const noexcept;
    /// Names the collection that is marked as changed by SetValue; called by the collection.
    void objParent(const std::shared_ptr<CashFlowCollection>& value) noexcept;

    /// The row's name in its collection.
    [[nodiscard]] const std::string& key() const noexcept { return key_; }
    /// Also sets the field "key": error 1000 if the row has no such field, after the property has changed.
    void key(const std::string& value);

    /// The value of a field. Error 1000 if the row has no such field.
    [[nodiscard]] const Variant& Item(const std::string& Field) const;
    /// Stores a value unchanged and marks the collection as changed, even if the value is the same. Error 1000
    /// if the row has no such field; nothing has changed then.
    void SetValue(const std::string& Field, const Variant& vdata);
    /// The number of fields.
    [[nodiscard]] std::int32_t Count() const noexcept;
    /// Whether the row is complete: an item, an account and at least one amount. If not, strInfo is set to the
    /// reason, a tab, the line's number, a tab and the column of the dialog's grid whose value is missing;
    /// otherwise it is unchanged. Error 1000 if the row does not have one of the fields tested.
    [[nodiscard]] bool CheckCashFlow(std::string& strInfo) const;
    /// The field names in their order.
    [[nodiscard]] const std::vector<std::string>& Fields() const noexcept;

    /// One insert statement.
    [[nodiscard]] std::string InsertSql(const std::string& tableName, const CashFlowStruct& structure) const override;
    /// One row element.
    [[nodiscard]] std::string Save() const override;
    /// Loads a row element: the row then has exactly the element's attributes as fields, texts or null. The
    /// property key is unchanged. Error 457 if two attributes differ only in their prefix; the row then has
    /// those before the second one.
    void Load(const XmlSource& xml) override;

private:
    friend class CashFlowCollection;

    /// Replaces the row's fields by those of a shape, each null.
    void takeShape(std::shared_ptr<const FieldShape> shape);
    /// Load for one of many rows, which most likely has the same shape as the previous one.
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

Z7_PUBLIC_END
