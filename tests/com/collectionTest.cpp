#include "com/ComTest.h"

#include <vector>

namespace z7::test {
namespace {

class CollectionThroughCom : public ComTest {
protected:
    ComPtr<_CashFlowCollection> rows_ = collection();

    void TearDown() override {
        rows_.reset();
        ComTest::TearDown();
    }
    [[nodiscard]] ComPtr<_CashFlow> item(std::int32_t index) const {
        return objectOf<_CashFlow>([&](auto** out) { return rows_->get_Item(OwnedVariant(index).get(), out); });
    }
    [[nodiscard]] static OwnedVariant field(_CashFlow& row, const char* name) {
        OwnedVariant result;
        EXPECT_OK(row.get_Item(Bstr(name).get(), result.put()));
        return result;
    }
    [[nodiscard]] std::vector<std::int32_t> lines(IEnumVARIANT& enumerator, ULONG most) const {
        std::vector<std::int32_t> found;
        OwnedVariant row;
        while (most-- > 0 && enumerator.Next(1, row.put(), nullptr) == S_OK) {
            const Dispatch object = Dispatch::ofValue(row.get(), L"row");
            found.push_back(object.get(L"Item", "inid").get().lVal);
        }
        return found;
    }
    [[nodiscard]] ComPtr<IEnumVARIANT> enumerator() const {
        return objectOf<IUnknown>([&](auto** out) { return rows_->get_NewEnum(out); }).as<IEnumVARIANT>();
    }
};

TEST_F(CollectionThroughCom, IsEmptyAndUnchangedAtFirst) {
    EXPECT_EQ(value<LONG>([&](auto* out) { return rows_->get_Count(out); }), 0);
    EXPECT_EQ(value<VARIANT_BOOL>([&](auto* out) { return rows_->get_Changed(out); }), VARIANT_FALSE);
    EXPECT_EQ(value<double>([&](auto* out) { return rows_->GetCashFlowSum(out); }), 0.0);
}

TEST_F(CollectionThroughCom, TwoCollectionsAreTwoObjects) {
    const auto other = collection();
    addRow(*rows_, 1);
    EXPECT_FALSE(isSameObject(rows_.get(), other.get()));
    EXPECT_EQ(value<LONG>([&](auto* out) { return other->get_Count(out); }), 0);
}

TEST_F(CollectionThroughCom, HeaderValuesAreKept) {
    EXPECT_OK(rows_->put_iPeriod(12));
    EXPECT_OK(rows_->put_isignseq(-3));
    EXPECT_OK(rows_->put_iNo_id(5));
    EXPECT_OK(rows_->put_ibackno_id(7));
    EXPECT_OK(rows_->put_dbill_date(41279.5));
    EXPECT_OK(rows_->put_VoucherTable(Bstr("gl_accvouch").get()));
    EXPECT_OK(rows_->put_coutNo_id(Bstr("凭证一").get()));
    EXPECT_EQ(value<BYTE>([&](auto* out) { return rows_->get_iPeriod(out); }), 12);
    EXPECT_EQ(value<SHORT>([&](auto* out) { return rows_->get_isignseq(out); }), -3);
    EXPECT_EQ(value<SHORT>([&](auto* out) { return rows_->get_iNo_id(out); }), 5);
    EXPECT_EQ(value<SHORT>([&](auto* out) { return rows_->get_ibackno_id(out); }), 7);
    EXPECT_EQ(value<DATE>([&](auto* out) { return rows_->get_dbill_date(out); }), 41279.5);
    EXPECT_EQ(textOf([&](auto* out) { return rows_->get_VoucherTable(out); }), "gl_accvouch");
    EXPECT_EQ(textOf([&](auto* out) { return rows_->get_coutNo_id(out); }), "凭证一");
}

TEST_F(CollectionThroughCom, ANumberBeyondSixteenBitsOverflows) {
    EXPECT_OK(rows_->UpdateCol(1, 1, 40000, 2.0));
    SHORT number = 0;
    EXPECT_EQ(rows_->get_iNo_id(&number), codeOfNumber(6));
    EXPECT_EQ(errorOf(codeOfNumber(6)).source, "Z7CashFlow");
}

TEST_F(CollectionThroughCom, ARowAskedForTwiceIsOneObject) {
    const auto row = addRow(*rows_, 1);
    EXPECT_EQ(item(1).get(), item(1).get());
    EXPECT_TRUE(isSameObject(item(1).get(), row.get()));
    const std::string key = textOf([&](auto* out) { return row->get_key(out); });
    const auto byKey = objectOf<_CashFlow>([&](auto** out) { return rows_->get_Item(OwnedVariant(key).get(), out); });
    EXPECT_TRUE(isSameObject(byKey.get(), row.get()));
}

TEST_F(CollectionThroughCom, TheWayBackFromARowIsTheSameCollection) {
    const auto row = addRow(*rows_, 1);
    const auto parent = objectOf<_CashFlowCollection>([&](auto** out) { return row->get_objParent(out); });
    EXPECT_TRUE(isSameObject(parent.get(), rows_.get()));
}

TEST_F(CollectionThroughCom, ARowThatWasRemovedHasNoCollection) {
    const auto row = addRow(*rows_, 1);
    EXPECT_OK(rows_->Remove(OwnedVariant(1).get()));
    EXPECT_FALSE(objectOf<_CashFlowCollection>([&](auto** out) { return row->get_objParent(out); }));
}

TEST_F(CollectionThroughCom, ARowKeepsItsCollectionAlive) {
    const auto row = addRow(*rows_, 4);
    rows_.reset();
    const auto parent = objectOf<_CashFlowCollection>([&](auto** out) { return row->get_objParent(out); });
    ASSERT_TRUE(parent);
    EXPECT_EQ(value<LONG>([&](auto* out) { return parent->get_Count(out); }), 1);
}

TEST_F(CollectionThroughCom, AnInterfaceKeepsItsObjectAlive) {
    addRow(*rows_, 1);
    const auto xml = rows_.as<_IXmlSerializable>();
    rows_.reset();
    EXPECT_NE(textOf([&](auto* out) { return xml->Save(out); }).find("<rows>"), std::string::npos);
}

TEST_F(CollectionThroughCom, AnUnknownIndexOrKeyIsTheListsError) {
    _CashFlow* row = nullptr;
    EXPECT_EQ(rows_->get_Item(OwnedVariant(1).get(), &row), codeOfNumber(9));
    EXPECT_EQ(rows_->get_Item(OwnedVariant("none").get(), &row), codeOfNumber(5));
    EXPECT_EQ(rows_->Remove(OwnedVariant("none").get()), codeOfNumber(5));
    EXPECT_EQ(row, nullptr);
    EXPECT_EQ(value<VARIANT_BOOL>([&](auto* out) { return rows_->get_Changed(out); }), VARIANT_FALSE);
}

TEST_F(CollectionThroughCom, NothingCanBeAdded) {
    EXPECT_OK(rows_->Add(nullptr));
    EXPECT_OK(rows_->Insert(nullptr, Bstr("none").get()));
    EXPECT_EQ(value<VARIANT_BOOL>([&](auto* out) { return rows_->get_Changed(out); }), VARIANT_FALSE);
}

TEST_F(CollectionThroughCom, AnEnumeratorVisitsTheRowsInOrder) {
    addRow(*rows_, 1);
    addRow(*rows_, 2);
    addRow(*rows_, 3);
    const auto walk = enumerator();
    EXPECT_EQ(walk->Skip(1), S_OK);
    EXPECT_EQ(lines(*walk, 9), (std::vector<std::int32_t>{2, 3}));
    EXPECT_EQ(walk->Skip(1), S_FALSE);
    EXPECT_EQ(walk->Reset(), S_OK);
    EXPECT_EQ(lines(*walk, 9), (std::vector<std::int32_t>{1, 2, 3}));
}

TEST_F(CollectionThroughCom, AnEnumeratorSurvivesRemovalOnTheWay) {
    addRow(*rows_, 1);
    addRow(*rows_, 2);
    addRow(*rows_, 3);
    addRow(*rows_, 4);
    const auto walk = enumerator();
    EXPECT_EQ(lines(*walk, 1), std::vector<std::int32_t>{1});
    EXPECT_OK(rows_->Remove(OwnedVariant(1).get()));
    EXPECT_OK(rows_->Remove(OwnedVariant(2).get())); // line 3
    addRow(*rows_, 5);
    EXPECT_EQ(lines(*walk, 9), (std::vector<std::int32_t>{2, 4}))
        << "removed rows are left out, added ones not visited";
}

TEST_F(CollectionThroughCom, AnEnumeratorKeepsTheCollectionAlive) {
    addRow(*rows_, 1);
    const auto walk = enumerator();
    rows_.reset();
    EXPECT_EQ(lines(*walk, 9), std::vector<std::int32_t>{1});
}

TEST_F(CollectionThroughCom, UpdateInidMovesTheRowsOfLaterLines) {
    EXPECT_OK(rows_->UpdateCol(1, 1, 9, 2.0));
    addRow(*rows_, 2);
    addRow(*rows_, 3);
    EXPECT_OK(rows_->UpdateInid(1, 1, 9, 3, VARIANT_TRUE));
    EXPECT_EQ(field(*item(1), "inid").get().lVal, 2);
    EXPECT_EQ(field(*item(2), "inid").value(), cashflow::Variant(std::int16_t{4}));
    EXPECT_OK(rows_->UpdateInid(1, 1, 9, 4, VARIANT_FALSE));
    EXPECT_EQ(value<LONG>([&](auto* out) { return rows_->get_Count(out); }), 1);
}

TEST_F(CollectionThroughCom, ValuesComeBackAsTheyWereGiven) {
    const auto row = addRow(*rows_, 1);
    const auto kept = [&](const VARIANT& given) {
        EXPECT_OK(row->SetValue(Bstr("cDefine1").get(), given));
        return field(*row, "cDefine1");
    };
    VARIANT money{};
    money.vt = VT_CY;
    money.cyVal.int64 = 12345600;
    VARIANT whole{};
    whole.vt = VT_I8;
    whole.llVal = 5'000'000'000;
    VARIANT single{};
    single.vt = VT_R4;
    single.fltVal = 0.1F;
    VARIANT empty{};
    OwnedVariant variable("甲");
    EXPECT_EQ(kept(money).get().dblVal, 1234.56);
    EXPECT_EQ(kept(whole).get().dblVal, 5e9);
    EXPECT_EQ(kept(single).get().dblVal, 0.1);
    EXPECT_EQ(kept(empty).get().vt, VT_NULL);
    EXPECT_EQ(kept(OwnedVariant::byReference(variable).get()).value(), cashflow::Variant("甲"));
    EXPECT_EQ(kept(OwnedVariant(true).get()).get().boolVal, VARIANT_TRUE);
    EXPECT_EQ(field(*row, "iPeriod").get().vt, VT_UI1);
    EXPECT_EQ(field(*row, "dbill_date").get().vt, VT_DATE);
}

TEST_F(CollectionThroughCom, AnObjectIsNotAValue) {
    const auto row = addRow(*rows_, 1);
    const OwnedVariant object(static_cast<IDispatch*>(row.get()));
    EXPECT_EQ(row->SetValue(Bstr("md").get(), object.get()), codeOfNumber(13));
}

TEST_F(CollectionThroughCom, FieldsAreAnArrayFromZero) {
    const auto row = addRow(*rows_, 1);
    OwnedVariant names;
    EXPECT_OK(row->get_Fields(names.put()));
    ASSERT_EQ(names.get().vt, VT_ARRAY | VT_VARIANT);
    LONG lower = -1;
    LONG upper = -1;
    SafeArrayGetLBound(names.get().parray, 1, &lower);
    SafeArrayGetUBound(names.get().parray, 1, &upper);
    EXPECT_EQ(lower, 0);
    EXPECT_EQ(upper, 41);
    OwnedVariant last;
    SafeArrayGetElement(names.get().parray, &upper, last.put());
    EXPECT_EQ(last.value(), cashflow::Variant("cDefine16"));
    EXPECT_EQ(value<LONG>([&](auto* out) { return row->get_Count(out); }), 42);
}

TEST_F(CollectionThroughCom, TheXmlFormIsReadBack) {
    const auto row = addRow(*rows_, 3);
    EXPECT_OK(row->SetValue(Bstr("cDefine1").get(), OwnedVariant("a<b & '现金'").get()));
    const std::string xml = textOf([&](auto* out) { return rows_.as<_IXmlSerializable>()->Save(out); });
    const auto other = collection();
    EXPECT_OK(other.as<_IXmlSerializable>()->Load(OwnedVariant(xml).get()));
    EXPECT_EQ(value<LONG>([&](auto* out) { return other->get_Count(out); }), 1);
    const auto loaded = objectOf<_CashFlow>([&](auto** out) { return other->get_Item(OwnedVariant(1).get(), out); });
    EXPECT_EQ(field(*loaded, "cDefine1").value(), cashflow::Variant("a<b & '现金'"));
    EXPECT_EQ(field(*loaded, "inid").value(), cashflow::Variant("3"));
}

TEST_F(CollectionThroughCom, ARowIsLoadedFromAnElement) {
    const auto row = addRow(*rows_, 3);
    EXPECT_OK(row.as<_IXmlSerializable>()->Load(OwnedVariant("<row inid='8' md=''/>").get()));
    EXPECT_EQ(value<LONG>([&](auto* out) { return row->get_Count(out); }), 2);
    EXPECT_EQ(field(*row, "inid").value(), cashflow::Variant("8"));
    EXPECT_EQ(field(*row, "md").get().vt, VT_NULL);
    EXPECT_EQ(row.as<_IXmlSerializable>()->Load(OwnedVariant("no element").get()), codeOfNumber(13));
}

TEST_F(CollectionThroughCom, ARowIsLoadedFromANodeOfTheSystemsXmlDocuments) {
    const auto row = addRow(*rows_, 3);
    const Dispatch document = Dispatch::create(L"MSXML2.DOMDocument");
    ASSERT_EQ(document.call(L"loadXML", "<rows><row inid='8' cCashItem='现金'/></rows>").value(),
              cashflow::Variant(true));
    const OwnedVariant node = document.call(L"selectSingleNode", "rows/row");
    EXPECT_OK(row.as<_IXmlSerializable>()->Load(node.get()));
    EXPECT_EQ(field(*row, "cCashItem").value(), cashflow::Variant("现金"));
}

TEST_F(CollectionThroughCom, TheSqlFormFollowsTheSchema) {
    const auto row = addRow(*rows_, 3);
    EXPECT_OK(row->SetValue(Bstr("iYear").get(), OwnedVariant(2013).get()));
    const auto structure = objectOf<_CashFlowStruct>([&](auto** out) { return rows_->get_CFStruct(out); });
    const auto sql = [&] {
        return textOf([&](auto* out) {
            return row.as<_ISQLSerializable>()->InsertSql(Bstr("gl_cashtable").get(), structure.get(), out);
        });
    };
    EXPECT_EQ(sql().substr(0, 30), "insert into gl_cashtable (RowG");
    const auto guid =
        objectOf<_CashFlowStructItem>([&](auto** out) { return structure->get_Item(Bstr("RowGuid").get(), out); });
    EXPECT_OK(guid->put_isSave(VARIANT_FALSE));
    EXPECT_EQ(sql().substr(0, 31), "insert into gl_cashtable (iYear");
    BSTR none = nullptr;
    EXPECT_EQ(row.as<_ISQLSerializable>()->InsertSql(Bstr("t").get(), nullptr, &none), codeOfNumber(91));
}

TEST_F(CollectionThroughCom, TheSchemaOfOneCollectionIsItsOwn) {
    const auto structure = objectOf<_CashFlowStruct>([&](auto** out) { return rows_->get_CFStruct(out); });
    const auto again = objectOf<_CashFlowStruct>([&](auto** out) { return rows_->get_CFStruct(out); });
    EXPECT_TRUE(isSameObject(structure.get(), again.get()));
    const auto created = library().create<_CashFlowStructItem>(CLSID_CashFlowStructItem);
    EXPECT_OK(created->put_FieldName(Bstr("cExtra").get()));
    EXPECT_OK(created->put_DefaultValue(OwnedVariant("0").get()));
    EXPECT_OK(structure->Add(created.get()));
    EXPECT_EQ(structure->Add(created.get()), codeOfNumber(457));
    OwnedVariant count;
    EXPECT_OK(structure->get_Count(count.put()));
    EXPECT_EQ(count.value(), cashflow::Variant(std::int32_t{43}));
    const auto found =
        objectOf<_CashFlowStructItem>([&](auto** out) { return structure->get_Item(Bstr("cExtra").get(), out); });
    EXPECT_TRUE(isSameObject(found.get(), created.get()));
    const auto other = collection();
    const auto others = objectOf<_CashFlowStruct>([&](auto** out) { return other->get_CFStruct(out); });
    EXPECT_OK(others->get_Count(count.put()));
    EXPECT_EQ(count.value(), cashflow::Variant(std::int32_t{42}));
    EXPECT_FALSE(objectOf<_CashFlowStructItem>([&](auto** out) { return others->get_Item(Bstr("iyear").get(), out); }));
}

TEST_F(CollectionThroughCom, AnOutArgumentThatIsMissingIsRefused) {
    EXPECT_EQ(rows_->get_Count(nullptr), E_POINTER);
    EXPECT_EQ(rows_->CreateCFObject(nullptr), E_POINTER);
}

} // namespace
} // namespace z7::test
