#include "com/CollectionObject.h"

#include "adapters/ado/automation/OwnedVariant.h"
#include "com/Identities.h"
#include "com/RowEnumerator.h"
#include "com/RowObject.h"
#include "z7cashflow/support/conversions.h"

#include <utility>

namespace z7::com {

namespace {

using Known = Identities<CollectionObject>;

// Runs an action with the index or the key that a host passes: a text is a key, everything else a number.
template <class Action> decltype(auto) withIndexOrKey(const VARIANT& vntIndexKey, Action&& action) {
    const cashflow::Variant place = adapters::automation::fromAutomation(vntIndexKey);
    if (const auto* key = place.get<std::string>()) {
        return action(*key);
    }
    return action(cashflow::toInt32(place));
}

// A row's collection has changed when this ends, also by an operation that fails.
struct CollectionChange {
    RowObject& row;
    explicit CollectionChange(RowObject& changed) : row(changed) {}
    CollectionChange(const CollectionChange&) = delete;
    CollectionChange& operator=(const CollectionChange&) = delete;
    ~CollectionChange() { row.keepCollection(); }
};

} // namespace

adapters::automation::ComPtr<CollectionObject>
CollectionObject::of(const std::shared_ptr<cashflow::CashFlowCollection>& collection) {
    return collection ? Known::of(collection.get(), [&collection] { return new CollectionObject(collection); })
                      : nullptr;
}

CollectionObject::CollectionObject(std::shared_ptr<cashflow::CashFlowCollection> collection)
    : collection_(std::move(collection)), sql_(*this, *collection_), xml_(*this, *collection_, XmlFace::document) {}

CollectionObject::~CollectionObject() { Known::forget(collection_.get(), this); }

HRESULT CollectionObject::get_Changed(VARIANT_BOOL* value) noexcept {
    return answer(value, [this] { return collection_->Changed(); });
}

HRESULT CollectionObject::CreateCFObject(_CashFlow** row) noexcept {
    return answer(row, [this] { return RowObject::of(collection_->CreateCFObject()); });
}

HRESULT CollectionObject::UpdateCol(BYTE iPeriod, SHORT isignseq, LONG iNo_id, DATE dbill_date) noexcept {
    return run([&] { collection_->UpdateCol(iPeriod, isignseq, iNo_id, cashflow::Date(dbill_date)); });
}

HRESULT CollectionObject::get_CFStruct(_CashFlowStruct** structure) noexcept {
    return answer(structure, [this] {
        if (!struct_) {
            struct_ = new StructObject(collection_->CFStruct());
        }
        return struct_;
    });
}

HRESULT CollectionObject::get_iPeriod(BYTE* value) noexcept {
    return answer(value, [this] { return collection_->iPeriod(); });
}

HRESULT CollectionObject::get_dbill_date(DATE* value) noexcept {
    return answer(value, [this] { return collection_->dbill_date().dayNumber(); });
}

HRESULT CollectionObject::put_dbill_date(DATE value) noexcept {
    return run([&] { collection_->dbill_date(cashflow::Date(value)); });
}

HRESULT CollectionObject::get_VoucherTable(BSTR* value) noexcept {
    return answer(value, [this] { return collection_->VoucherTable(); });
}

HRESULT CollectionObject::put_VoucherTable(BSTR value) noexcept {
    return run([&] { collection_->VoucherTable(text(value)); });
}

HRESULT CollectionObject::put_iPeriod(BYTE value) noexcept {
    return run([&] { collection_->iPeriod(value); });
}

HRESULT CollectionObject::get_isignseq(SHORT* value) noexcept {
    return answer(value, [this] { return collection_->isignseq(); });
}

HRESULT CollectionObject::put_isignseq(SHORT value) noexcept {
    return run([&] { collection_->isignseq(value); });
}

HRESULT CollectionObject::get_iNo_id(SHORT* value) noexcept {
    return answer(value, [this] { return collection_->iNo_id(); });
}

HRESULT CollectionObject::put_iNo_id(SHORT value) noexcept {
    return run([&] { collection_->iNo_id(value); });
}

HRESULT CollectionObject::get_ibackno_id(SHORT* value) noexcept {
    return answer(value, [this] { return collection_->ibackno_id(); });
}

HRESULT CollectionObject::put_ibackno_id(SHORT value) noexcept {
    return run([&] { collection_->ibackno_id(value); });
}

HRESULT CollectionObject::get_coutNo_id(BSTR* value) noexcept {
    return answer(value, [this] { return collection_->coutNo_id(); });
}

HRESULT CollectionObject::put_coutNo_id(BSTR value) noexcept {
    return run([&] { collection_->coutNo_id(text(value)); });
}

HRESULT CollectionObject::Add(_CashFlow* objItem) noexcept {
    return run([&] {
        if (auto* added = objectIfAny<RowObject>(objItem)) {
            const CollectionChange change(*added);
            collection_->Add(added->row());
        }
    });
}

HRESULT CollectionObject::Insert(_CashFlow* objItem, BSTR BeforeItem) noexcept {
    return run([&] {
        if (auto* inserted = objectIfAny<RowObject>(objItem)) {
            const CollectionChange change(*inserted);
            collection_->Insert(inserted->row(), text(BeforeItem));
        }
    });
}

HRESULT CollectionObject::get_Item(VARIANT vntIndexKey, _CashFlow** row) noexcept {
    return answer(row, [&] {
        return withIndexOrKey(vntIndexKey,
                              [this](const auto& place) { return RowObject::of(collection_->Item(place)); });
    });
}

HRESULT CollectionObject::get_Count(LONG* number) noexcept {
    return answer(number, [this] { return collection_->Count(); });
}

HRESULT CollectionObject::Remove(VARIANT vntIndexKey) noexcept {
    return run([&] {
        withIndexOrKey(vntIndexKey, [this](const auto& place) {
            const auto removed = RowObject::of(collection_->Item(place));
            const CollectionChange change(*removed);
            collection_->Remove(place);
        });
    });
}

HRESULT CollectionObject::GetCashFlowSum(double* sum) noexcept {
    return answer(sum, [this] { return collection_->GetCashFlowSum(); });
}

HRESULT CollectionObject::get_NewEnum(IUnknown** rows) noexcept {
    return answer(rows, [this] {
        return adapters::automation::ComPtr<IUnknown>(static_cast<IUnknown*>(new RowEnumerator(collection_)));
    });
}

HRESULT CollectionObject::UpdateInid(BYTE iPeriod, SHORT isignseq, LONG iNo_id, SHORT CurInid,
                                     VARIANT_BOOL bInsert) noexcept {
    return run([&] { collection_->UpdateInid(iPeriod, isignseq, iNo_id, CurInid, truth(bInsert)); });
}

} // namespace z7::com
