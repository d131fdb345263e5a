#include "z7cashflow/model/CashFlow.h"

#include "z7cashflow/model/CashFlowCollection.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/statements/rowStatements.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <utility>

namespace z7::cashflow {

namespace {

[[noreturn]] void raiseUnknownField(const std::string& name) {
    modPublic::raiseCashFlowError(errors::unknownRowField, modPublic::GetText("Z7.CW.GL.CashFlow.00018"),
                                  {Reason::rowFieldUnknown, {shortened(name)}});
}

} // namespace

std::shared_ptr<CashFlowCollection> CashFlow::objParent() const noexcept { return objParent_.lock(); }

void CashFlow::objParent(const std::shared_ptr<CashFlowCollection>& value) noexcept { objParent_ = value; }

void CashFlow::key(const std::string& value) {
    key_ = value;
    SetValue("key", value);
}

const Variant* CashFlow::find(const std::string& Field) const noexcept {
    const auto position = shape_->position(Field);
    return position ? &values_[*position] : nullptr;
}

const Variant& CashFlow::Item(const std::string& Field) const {
    const Variant* value = find(Field);
    if (value == nullptr) {
        raiseUnknownField(Field);
    }
    return *value;
}

void CashFlow::SetValue(const std::string& Field, const Variant& vdata) {
    const auto position = shape_->position(Field);
    if (!position) {
        raiseUnknownField(Field);
    }
    markParent();
    values_[*position] = vdata;
}

void CashFlow::markParent() const noexcept {
    if (const auto parent = objParent_.lock()) {
        parent->Changed_ = true;
    }
}

std::int32_t CashFlow::Count() const noexcept { return static_cast<std::int32_t>(values_.size()); }

const std::vector<std::string>& CashFlow::Fields() const noexcept { return shape_->names(); }

bool CashFlow::CheckCashFlow(std::string& strInfo) const {
    const auto fail = [&](const char* textKey, int column) {
        std::string text = modPublic::GetText(textKey) + "\t";
        text += toTextOrEmpty(Item("inid")) + "\t" + std::to_string(column);
        strInfo = std::move(text);
        return false;
    };
    if (isNullOrEmpty(Item("cCashItem"))) {
        return fail("Z7.CW.GL.CashFlow.00020", 4);
    }
    if (isNullOrEmpty(Item("ccode"))) {
        return fail("Z7.CW.GL.CashFlow.00021", 1);
    }
    const bool noDebit = Item("md").isNull();
    const bool noCredit = Item("mc").isNull();
    if (noDebit && noCredit) {
        return fail("Z7.CW.GL.CashFlow.00022", 3);
    }
    return true;
}

void CashFlow::takeShape(std::shared_ptr<const FieldShape> shape) {
    values_.assign(shape->size(), Variant());
    shape_ = std::move(shape);
}

namespace {

bool isFirstOfJanuary1900(Date date) { return isValidDate(date) && dayText(date) == "1900-01-01"; }

// Whether a value means "no date". Only dates and texts can: the number 2 stays a number.
bool isNoDate(const Variant& value) {
    if (const auto* date = value.get<Date>()) {
        return isFirstOfJanuary1900(*date);
    }
    const auto* text = value.get<std::string>();
    if (text == nullptr || text->find("1900") == std::string::npos) {
        return false;
    }
    const auto date = readDate(*text);
    return date && isFirstOfJanuary1900(*date);
}

std::string numberText(const CashFlowStructItem& field, const Variant& value) {
    if (value.isNull()) {
        return toText(field.DefaultValue);
    }
    std::string number = toText(value);
    if (!field.DataCanNull) {
        number.erase(std::remove(number.begin(), number.end(), ','), number.end());
    }
    return number;
}

std::string yearText(const Variant& value) {
    const std::string year = toTextOrEmpty(value);
    return year.empty() || year == "0" ? toText(modPublic::GetIYear()) : year;
}

bool isNamed(const std::string& name, std::string_view lowerName) {
    return name.size() == lowerName.size() && asciiLower(name) == lowerName;
}

// A number of which nothing is known becomes Null, a text may be empty.
void addValue(statements::RowValues& values, const CashFlowStructItem& field, bool isYear, const Variant& value) {
    if (isNoDate(value) || (value.isNull() && field.DataCanNull && !isYear)) {
        values.addNull();
    } else if (isYear || field.DataType == "num") {
        const std::string number = isYear ? yearText(value) : numberText(field, value);
        if (number.empty()) {
            values.addNull();
        } else {
            values.addNumber(field.FieldName, number);
        }
    } else {
        values.addText(field.FieldName, toText(value.isNull() ? field.DefaultValue : value));
    }
}

} // namespace

void CashFlow::appendInsertSql(std::string& out, const std::string& tableName, const CashFlowStruct& structure) const {
    const statements::LiteralPolicy policy = modPublic::context().literalPolicy;
    statements::ColumnList columns(policy, statements::insertRow.name());
    statements::RowValues values(policy, statements::insertRow.name());
    const auto& names = structure.Fields();
    for (std::size_t at = 0; at < names.size(); ++at) {
        const std::string& name = names[at];
        const CashFlowStructItem& field = *structure.items()[at];
        // The item on the voucher's line is read by generation and stays the voucher's.
        if (!field.isSave || isNamed(name, "ccashitem_id")) {
            continue;
        }
        // A row has its fields in the schema's order, unless it came from a document of another one.
        const bool inPlace = at < values_.size() && shape_->names()[at] == name;
        columns.add(name);
        addValue(values, field, isNamed(name, "iyear"), inPlace ? values_[at] : Item(name));
    }
    if (columns.empty()) {
        statements::insertNoField.appendTo(out, policy, tableName);
    } else {
        statements::insertRow.appendTo(out, policy, tableName, columns, values);
    }
}

std::string CashFlow::InsertSql(const std::string& tableName, const CashFlowStruct& structure) const {
    std::string text;
    appendInsertSql(text, tableName, structure);
    return text;
}

void CashFlow::appendXml(std::string& out) const {
    out += "<row ";
    const std::string_view attributes = shape_->emptyAttributes();
    std::size_t written = 0;
    for (std::size_t at = 0; at < values_.size(); ++at) {
        if (!values_[at].isNull()) {
            const std::size_t place = shape_->valuePlace(at);
            out += attributes.substr(written, place - written);
            modPublic::appendXmlEscaped(out, values_[at]);
            written = place;
        }
    }
    out += attributes.substr(written);
    out += "/>\r\n";
}

std::string CashFlow::Save() const {
    std::string text;
    appendXml(text);
    return text;
}

void CashFlow::Load(const XmlSource& xml) {
    const auto* element = std::get_if<XmlNode>(&xml);
    if (element == nullptr) {
        raisePlatformError(Reason::rowNotElement);
    }
    loadElement(*element, FieldShape::empty());
}

void CashFlow::loadElement(const XmlNode& element, const std::shared_ptr<const FieldShape>& likely) {
    takeShape(FieldShape::empty());
    values_.reserve(likely->size());
    // The names are those of the likely shape until one departs from it; only then the row makes a shape of its own.
    std::shared_ptr<FieldShape> own;
    const auto depart = [&] {
        own = std::make_shared<FieldShape>();
        for (std::size_t at = 0; at < values_.size(); ++at) {
            own->add(likely->names()[at]);
        }
        shape_ = own;
    };
    element.eachAttribute([&](std::string_view baseName, std::string_view text) {
        markParent();
        const std::size_t at = values_.size();
        if (!own && (at >= likely->size() || likely->names()[at] != baseName)) {
            depart();
        }
        if (own && !own->add(std::string(baseName))) {
            raisePlatformError(Reason::fieldExists, {std::string(baseName)});
        }
        values_.push_back(text.empty() ? Variant() : Variant(text));
    });
    if (!own && values_.size() == likely->size()) {
        shape_ = likely;
    } else if (!own) {
        depart();
    }
}

} // namespace z7::cashflow
