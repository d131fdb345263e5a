#include "standins/AdoFields.h"

#include "z7cashflow/support/conversions.h"

#include <string>
#include <utility>

namespace z7::cashflow::test {

namespace {

constexpr IID fieldsKind{0x5a370005, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};
constexpr IID fieldKind{0x5a370006, 0x11d0, 0x4c10, {0x9a, 1, 2, 3, 4, 5, 6, 7}};

class AdoField final : public AutomationObject {
public:
    AdoField(std::shared_ptr<CallPlan> plan, ComPtr<AdoRecordset> recordset, int position)
        : AutomationObject(std::move(plan), fieldKind), recordset_(std::move(recordset)), position_(position) {
        property(L"Name", [this](const Call&) { return OwnedVariant(fields().Name(position_)); });
        property(
            L"Value", [this](const Call&) { return OwnedVariant(fields().Item(position_)); },
            [this](const Call& call) {
                recordset_->setValue(fields().Name(position_), call.value(0));
                return OwnedVariant();
            });
        defaultMember(L"Value");
    }

private:
    FieldList& fields() { return recordset_->records().Fields(); }

    ComPtr<AdoRecordset> recordset_;
    int position_;
};

int positionOf(FieldList& fields, const Variant& key) {
    if (!key.is<std::string>()) {
        const std::int32_t position = toInt32(key);
        static_cast<void>(fields.Name(position)); // refuses a position that does not exist
        return position;
    }
    for (int position = 0; position < fields.Count(); ++position) {
        if (asciiLower(fields.Name(position)) == asciiLower(*key.get<std::string>())) {
            return position;
        }
    }
    throw Error(errors::unknownField, "ADODB.Recordset", "Item cannot be found in the collection.");
}

} // namespace

AdoFields::AdoFields(std::shared_ptr<CallPlan> plan, ComPtr<AdoRecordset> recordset)
    : AutomationObject(std::move(plan), fieldsKind), recordset_(std::move(recordset)) {
    property(L"Count", [this](const Call&) {
        return OwnedVariant(static_cast<std::int32_t>(recordset_->records().Fields().Count()));
    });
    property(L"Item", [this](const Call& call) {
        const int position = positionOf(recordset_->records().Fields(), call.value(0));
        return asValue(makeObject<AdoField>(this->plan(), recordset_, position));
    });
    defaultMember(L"Item");
}

} // namespace z7::cashflow::test
