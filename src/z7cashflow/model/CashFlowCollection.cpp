#include "z7cashflow/model/CashFlowCollection.h"

#include "z7cashflow/model/filled.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/model/schemaDocument.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/XmlDocument.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/guid.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace z7::cashflow {

namespace {

std::int16_t narrowed(std::int32_t value) {
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
        raisePlatformError(Reason::numberOutOfRange, {std::to_string(value)});
    }
    return static_cast<std::int16_t>(value);
}

// A line number moved by one, as a number also where it was a text.
Variant moved(const Variant& inid, int by) {
    const double number = toDouble(inid) + by;
    if (inid.is<std::string>() || inid.is<double>()) {
        return number;
    }
    const bool fits =
        number >= std::numeric_limits<std::int16_t>::min() && number <= std::numeric_limits<std::int16_t>::max();
    return fits ? Variant(static_cast<std::int16_t>(number)) : Variant(static_cast<std::int32_t>(number));
}

struct Schema {
    CashFlowStruct fields;
    std::shared_ptr<const FieldShape> shape;
};

Schema parseSchema() {
    Explanation why;
    const auto document = XmlDocument::load("<?xml version='1.0' encoding='gb2312' ?>" + schemaDocument(), &why);
    if (!document) {
        modPublic::raiseCashFlowError(errors::badSchemaDocument, modPublic::GetText("Z7.CW.GL.CashFlow.00016"),
                                      std::move(why));
    }
    Schema schema;
    for (const XmlNode& node : document->documentElement().childNodes()) {
        auto item = std::make_shared<CashFlowStructItem>();
        item->FieldName = node.attribute("name").value_or("");
        item->DataType = node.attribute("type").value_or("");
        item->DataCanNull = node.attribute("isnull") == "true";
        item->DefaultValue = node.attribute("default").value_or("");
        item->isSave = node.attribute("save") == "true";
        schema.fields.Add(std::move(item));
    }
    schema.shape = std::make_shared<const FieldShape>(schema.fields.shape());
    return schema;
}

// The document is a constant, so that one parse serves all collections on all threads. A failed parse is tried again.
const Schema& schema() {
    static const Schema parsed = parseSchema();
    return parsed;
}

} // namespace

std::shared_ptr<CashFlowCollection> CashFlowCollection::Create() {
    return std::make_shared<CashFlowCollection>(Private());
}

CashFlowCollection::CashFlowCollection(Private) : CFStruct_(schema().fields), schemaShape_(schema().shape) {}

std::shared_ptr<CashFlow> CashFlowCollection::CreateCFObject() {
    auto row = std::make_shared<CashFlow>();
    row->takeShape(schemaShape_);
    row->SetValue("RowGuid", guidText(modPublic::context().guidSource));
    row->key(guidText(modPublic::context().guidSource));
    applyHeader(*row);
    return row;
}

void CashFlowCollection::applyHeader(CashFlow& row) const {
    row.SetValue("iPeriod", key_.period);
    row.SetValue("iSignSeq", key_.kind);
    row.SetValue("iNo_id", key_.number);
    row.SetValue("dbill_date", dbill_date_);
}

void CashFlowCollection::UpdateCol(std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id, Date dbill_date) {
    UpdateCol({{iPeriod, isignseq, iNo_id}, dbill_date});
}

void CashFlowCollection::UpdateCol(const DatedVoucherKey& voucher) {
    key_ = voucher.key;
    dbill_date_ = voucher.date;
    for (const auto& row : rows_) {
        applyHeader(*row);
    }
}

std::int16_t CashFlowCollection::iNo_id() const { return narrowed(key_.number); }

VoucherKey CashFlowCollection::voucherKey() const { return {key_.period, key_.kind, iNo_id()}; }

std::int16_t CashFlowCollection::ibackno_id() const { return narrowed(ibackno_id_); }

void CashFlowCollection::Add(const std::shared_ptr<CashFlow>& objItem) {
    if (!objItem) {
        return;
    }
    objItem->objParent(shared_from_this());
    rows_.append(objItem->key(), objItem);
    Changed_ = true;
}

void CashFlowCollection::Insert(const std::shared_ptr<CashFlow>& objItem, const std::string& BeforeItem) {
    if (!objItem) {
        return;
    }
    objItem->objParent(shared_from_this());
    ignoringErrors([&] { rows_.insertBefore(BeforeItem, objItem->key(), objItem); });
    Changed_ = true;
}

std::shared_ptr<CashFlow> CashFlowCollection::Item(std::int32_t vntIndexKey) const {
    return rows_.at(static_cast<std::int64_t>(vntIndexKey));
}

std::shared_ptr<CashFlow> CashFlowCollection::Item(const std::string& vntIndexKey) const {
    return rows_.at(vntIndexKey);
}

std::int32_t CashFlowCollection::Count() const noexcept { return static_cast<std::int32_t>(rows_.size()); }

template <class IndexOrKey> void CashFlowCollection::removeRow(const IndexOrKey& vntIndexKey) {
    const std::shared_ptr<CashFlow> row = rows_.at(vntIndexKey);
    row->objParent(nullptr);
    rows_.remove(vntIndexKey);
    Changed_ = true;
}

void CashFlowCollection::Remove(std::int32_t vntIndexKey) { removeRow(static_cast<std::int64_t>(vntIndexKey)); }

void CashFlowCollection::Remove(const std::string& vntIndexKey) { removeRow(vntIndexKey); }

void CashFlowCollection::UpdateInid(std::uint8_t iPeriod, std::int16_t isignseq, std::int32_t iNo_id,
                                    std::int16_t CurInid, bool bInsert) {
    for (std::int64_t index = 1; index <= static_cast<std::int64_t>(rows_.size());) {
        const std::shared_ptr<CashFlow> row = rows_.at(index);
        ++index;
        const Variant& number = row->Item("iNo_id");
        // A row without a number belongs to a voucher that has none yet.
        const bool concerned = equalByValue(row->Item("iPeriod"), iPeriod) &&
                               equalByValue(row->Item("iSignSeq"), isignseq) &&
                               (equalByValue(number, iNo_id) || equalByValue(number, std::int32_t{0}));
        const Variant inid = concerned ? row->Item("inid") : Variant();
        if (inid.isNull()) {
            continue;
        }
        const double line = toDouble(inid);
        if (bInsert && line >= CurInid) {
            row->SetValue("inid", moved(inid, 1));
        } else if (!bInsert && line > CurInid) {
            row->SetValue("inid", moved(inid, -1));
        } else if (!bInsert && line == CurInid) {
            // The line is gone from the voucher, not taken out by a user: the row keeps its way back.
            rows_.remove(row->key());
            --index;
        }
    }
}

std::string CashFlowCollection::InsertSql(const std::string& tableName, const CashFlowStruct& structure) const {
    std::string text = filled(statements::deleteBeforeInserts, tableName, voucherKey());
    for (const auto& row : rows_) {
        row->appendInsertSql(text, tableName, structure);
        text += ';';
    }
    text.pop_back();
    return text;
}

std::string CashFlowCollection::Save() const {
    std::string text = "<root iperiod='" + std::to_string(key_.period) + "' isignseq='" + std::to_string(key_.kind) +
                       "' ino_id='" + std::to_string(key_.number) + "'>";
    text += schemaDocument();
    text += "<rows>\r\n";
    const std::size_t start = text.size();
    for (const auto& row : rows_) {
        row->appendXml(text);
        if (row == *rows_.begin()) { // the others are most likely about as long
            text.reserve(start + (text.size() - start) * (rows_.size() + rows_.size() / 8 + 1));
        }
    }
    text += "</rows></root>";
    return text;
}

void CashFlowCollection::Load(const XmlSource& xml) {
    const auto* text = std::get_if<std::string>(&xml);
    if (text == nullptr) {
        raisePlatformError(Reason::collectionNotText);
    }
    Explanation why;
    const auto document = XmlDocument::load(*text, &why);
    if (!document) {
        modPublic::raiseCashFlowError(errors::badCollectionXml, modPublic::GetText("Z7.CW.GL.CashFlow.00017"),
                                      std::move(why));
    }
    const auto elements = document->documentElement().selectNodes("rows/row");
    rows_.clear();
    auto shape = schemaShape_;
    for (const XmlNode& element : elements) {
        const auto row = CreateCFObject();
        row->loadElement(element, shape);
        shape = row->shape_;
        Add(row);
    }
}

} // namespace z7::cashflow
