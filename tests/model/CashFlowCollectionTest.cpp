#include "z7cashflow/model/CashFlowCollection.h"
#include "doubles/ContextGuard.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {
namespace {

std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

class Collection : public LoginTest {
protected:
    Collection() { collection->UpdateCol(1, 2, 5, Date(41279.0)); }

    std::shared_ptr<CashFlow> addRow(const Variant& inid = {}) {
        auto row = collection->CreateCFObject();
        row->SetValue("inid", inid);
        collection->Add(row);
        return row;
    }
    std::vector<std::string> lines() const {
        std::vector<std::string> result;
        for (const auto& row : *collection) {
            result.push_back(toTextOrEmpty(row->Item("inid")));
        }
        return result;
    }

    std::shared_ptr<CashFlowCollection> collection = CashFlowCollection::Create();
};

using Lines = std::vector<std::string>;

TEST_F(Collection, IsEmptyAndUnchangedAtFirst) {
    const auto fresh = CashFlowCollection::Create();
    EXPECT_FALSE(fresh->Changed());
    EXPECT_EQ(fresh->Count(), 0);
    EXPECT_EQ(fresh->iPeriod(), 0);
    EXPECT_EQ(fresh->isignseq(), 0);
    EXPECT_EQ(fresh->iNo_id(), 0);
    EXPECT_EQ(fresh->ibackno_id(), 0);
    EXPECT_EQ(fresh->dbill_date(), Date(0.0));
    EXPECT_EQ(fresh->VoucherTable(), "");
    EXPECT_EQ(fresh->coutNo_id(), "");
    EXPECT_EQ(fresh->begin(), fresh->end());
}

TEST_F(Collection, AddOfNothingChangesNothing) {
    collection->Add(nullptr);
    EXPECT_FALSE(collection->Changed());
    EXPECT_EQ(collection->Count(), 0);
}

TEST_F(Collection, AddAppendsUnderTheRowsKey) {
    const auto first = addRow(i16(1));
    const auto second = addRow(i16(2));
    EXPECT_TRUE(collection->Changed());
    EXPECT_EQ(collection->Count(), 2);
    EXPECT_EQ(collection->Item(1), first);
    EXPECT_EQ(collection->Item(2), second);
    EXPECT_EQ(collection->Item(second->key()), second);
    EXPECT_EQ(second->objParent(), collection);
    EXPECT_EQ(lines(), (Lines{"1", "2"}));
    EXPECT_EQ(&collection->NewEnum(), &collection->NewEnum());
}

TEST_F(Collection, FindsKeysWithoutRegardToCase) {
    const auto row = collection->CreateCFObject();
    row->key("AbC");
    collection->Add(row);
    EXPECT_EQ(collection->Item("aBc"), row);
    collection->Remove("ABC");
    EXPECT_EQ(collection->Count(), 0);
}

TEST_F(Collection, AddOfAKeyTwiceRaisesAndSetsTheParentAllTheSame) {
    const auto row = addRow();
    const auto twin = collection->CreateCFObject();
    twin->key(row->key());
    EXPECT_ERROR(collection->Add(twin), errors::keyExists);
    EXPECT_EQ(twin->objParent(), collection);
    EXPECT_EQ(collection->Count(), 1);
    EXPECT_EQ(collection->Item(row->key()), row);
}

TEST_F(Collection, AllowsOneRowGuidTwice) {
    const auto row = addRow();
    const auto twin = collection->CreateCFObject();
    twin->SetValue("RowGuid", row->Item("RowGuid"));
    collection->Add(twin);
    EXPECT_EQ(collection->Count(), 2);
}

TEST_F(Collection, InsertPutsARowInFrontOfAnother) {
    const auto last = addRow(i16(9));
    const auto row = collection->CreateCFObject();
    row->SetValue("inid", i16(8));
    collection->Insert(row, last->key());
    EXPECT_EQ(lines(), (Lines{"8", "9"}));
    EXPECT_EQ(row->objParent(), collection);
    EXPECT_EQ(collection->Item(row->key()), row);
}

TEST_F(Collection, InsertBeforeAnUnknownKeyLeavesNoRowButMarksTheChange) {
    const auto row = collection->CreateCFObject();
    collection->Insert(row, "unknown");
    EXPECT_EQ(collection->Count(), 0);
    EXPECT_TRUE(collection->Changed());
    EXPECT_EQ(row->objParent(), collection);
}

TEST_F(Collection, InsertOfAKeyTwiceRaisesNothing) {
    const auto row = addRow();
    const auto twin = collection->CreateCFObject();
    twin->key(row->key());
    collection->Insert(twin, row->key());
    EXPECT_EQ(collection->Count(), 1);
    EXPECT_EQ(collection->Item(1), row);
}

TEST_F(Collection, InsertOfNothingDoesNothing) {
    collection->Insert(nullptr, "unknown");
    EXPECT_FALSE(collection->Changed());
}

TEST_F(Collection, ItemRefusesWhatIsNotThere) {
    EXPECT_ERROR(collection->Item(1), errors::badIndex);
    addRow();
    EXPECT_ERROR(collection->Item(0), errors::badIndex);
    EXPECT_ERROR(collection->Item(2), errors::badIndex);
    EXPECT_ERROR(collection->Item(-1), errors::badIndex);
    EXPECT_ERROR(collection->Item("unknown"), errors::badArgument);
}

TEST_F(Collection, RemoveTakesTheRowOutAndItsParentAway) {
    const auto first = addRow(i16(1));
    const auto second = addRow(i16(2));
    collection->Remove(1);
    EXPECT_EQ(first->objParent(), nullptr);
    EXPECT_EQ(collection->Item(1), second);
    EXPECT_ERROR(collection->Item(first->key()), errors::badArgument);
    collection->Remove(second->key());
    EXPECT_EQ(collection->Count(), 0);
    EXPECT_EQ(second->objParent(), nullptr);
}

TEST_F(Collection, RemoveOfAnUnknownRowRaisesAndLeavesChangedAsItWas) {
    EXPECT_ERROR(collection->Remove("unknown"), errors::badArgument);
    EXPECT_ERROR(collection->Remove(1), errors::badIndex);
    EXPECT_FALSE(collection->Changed());
    const auto row = addRow();
    EXPECT_ERROR(collection->Remove("unknown"), errors::badArgument);
    EXPECT_ERROR(collection->Remove(2), errors::badIndex);
    EXPECT_ERROR(collection->Remove(0), errors::badIndex);
    EXPECT_EQ(row->objParent(), collection);
    EXPECT_EQ(collection->Count(), 1);
}

TEST_F(Collection, IsEmptiedByRemovingTheFirstRowAgainAndAgain) {
    for (int i = 0; i < 1000; ++i) {
        addRow(i16(i));
    }
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(collection->Item(1)->Item("inid"), Variant(i16(i)));
        collection->Remove(1);
    }
    EXPECT_EQ(collection->Count(), 0);
}

TEST_F(Collection, UpdateColReachesTheRowsAndMarksTheChange) {
    const auto row = addRow();
    const auto parent = CashFlowCollection::Create();
    row->objParent(parent);
    collection->UpdateCol(1, 2, 5, Date(41279.0));
    EXPECT_TRUE(parent->Changed());
    collection->UpdateCol(12, i16(-3), 40000, Date(2.0));
    EXPECT_EQ(row->Item("iPeriod"), Variant(std::uint8_t{12}));
    EXPECT_EQ(row->Item("iSignSeq"), Variant(i16(-3)));
    EXPECT_EQ(row->Item("iNo_id"), Variant(std::int32_t{40000}));
    EXPECT_EQ(row->Item("dbill_date"), Variant(Date(2.0)));
    EXPECT_EQ(collection->iPeriod(), 12);
    EXPECT_EQ(collection->isignseq(), -3);
    EXPECT_EQ(collection->dbill_date(), Date(2.0));
}

TEST_F(Collection, UpdateColWithoutRowsMarksNothing) {
    collection->UpdateCol(9, 9, 9, Date(9.0));
    EXPECT_FALSE(collection->Changed());
    EXPECT_EQ(collection->iNo_id(), 9);
}

TEST_F(Collection, UpdateColStopsAtARowThatLacksAHeaderField) {
    const auto document = XmlDocument::load("<row md='1'/>");
    const auto row = collection->CreateCFObject();
    row->Load(document->documentElement());
    collection->Add(row);
    EXPECT_ERROR(collection->UpdateCol(3, 3, 3, Date(3.0)), 1000);
    EXPECT_EQ(collection->iPeriod(), 3);
}

TEST_F(Collection, SettersReachNeitherTheRowsNorChanged) {
    const auto row = collection->CreateCFObject();
    row->objParent(collection);
    collection->iPeriod(7);
    collection->isignseq(7);
    collection->iNo_id(7);
    collection->ibackno_id(8);
    collection->dbill_date(Date(7.0));
    collection->VoucherTable("t");
    collection->coutNo_id("out");
    EXPECT_FALSE(collection->Changed());
    EXPECT_EQ(row->Item("iPeriod"), Variant(std::uint8_t{1}));
    EXPECT_EQ(row->Item("iNo_id"), Variant(std::int32_t{5}));
    EXPECT_EQ(row->Item("dbill_date"), Variant(Date(41279.0)));
    EXPECT_EQ(collection->iPeriod(), 7);
    EXPECT_EQ(collection->isignseq(), 7);
    EXPECT_EQ(collection->iNo_id(), 7);
    EXPECT_EQ(collection->ibackno_id(), 8);
    EXPECT_EQ(collection->dbill_date(), Date(7.0));
    EXPECT_EQ(collection->VoucherTable(), "t");
    EXPECT_EQ(collection->coutNo_id(), "out");
}

TEST_F(Collection, ReturnsItsNumberInSixteenBits) {
    collection->iNo_id(5);
    EXPECT_EQ(collection->iNo_id(), 5);
    collection->UpdateCol(1, 2, 32767, Date(41279.0));
    EXPECT_EQ(collection->iNo_id(), 32767);
    collection->UpdateCol(1, 2, 32768, Date(41279.0));
    EXPECT_ERROR(collection->iNo_id(), errors::overflow);
    collection->UpdateCol(1, 2, -32769, Date(41279.0));
    EXPECT_ERROR(collection->iNo_id(), errors::overflow);
    collection->UpdateCol(1, 2, 40000, Date(41279.0));
    EXPECT_ERROR(collection->iNo_id(), errors::overflow);
    EXPECT_EQ(collection->CreateCFObject()->Item("iNo_id"), Variant(std::int32_t{40000}));
    EXPECT_NE(collection->Save().find("ino_id='40000'"), std::string::npos);
}

TEST_F(Collection, HasNoCashFlowSum) {
    addRow()->SetValue("md", 100.0);
    EXPECT_EQ(collection->GetCashFlowSum(), 0.0);
}

TEST_F(Collection, AnInsertedLineMovesTheRowsOfTheLinesAfterIt) {
    for (const int line : {2, 3, 3, 4}) {
        addRow(i16(line));
    }
    const auto untouched = CashFlowCollection::Create();
    collection->Item(1)->objParent(untouched);
    const auto touched = CashFlowCollection::Create();
    collection->Item(2)->objParent(touched);
    collection->UpdateInid(1, 2, 5, 3, true);
    EXPECT_EQ(lines(), (Lines{"2", "4", "4", "5"}));
    EXPECT_TRUE(touched->Changed());
    EXPECT_FALSE(untouched->Changed());
}

TEST_F(Collection, ADeletedLineRemovesAllItsRowsAndMovesThoseAfterIt) {
    for (const int line : {2, 3, 3, 4}) {
        addRow(i16(line));
    }
    const auto gone = collection->Item(2);
    collection->UpdateInid(1, 2, 5, 3, false);
    EXPECT_EQ(lines(), (Lines{"2", "3"}));
    EXPECT_EQ(gone->objParent(), collection);
    EXPECT_ERROR(collection->Item(gone->key()), errors::badArgument);
}

TEST_F(Collection, ADeletedLineTouchesNoValueOfItsRows) {
    const auto row = addRow(i16(3));
    const auto parent = CashFlowCollection::Create();
    row->objParent(parent);
    collection->UpdateInid(1, 2, 5, 3, false);
    EXPECT_EQ(collection->Count(), 0);
    EXPECT_FALSE(parent->Changed());
    EXPECT_EQ(row->objParent(), parent);
    EXPECT_EQ(row->Item("inid"), Variant(i16(3)));
}

TEST_F(Collection, ADeletedLineTakesEveryRowOfALongSplit) {
    for (int i = 0; i < 50; ++i) {
        addRow(i16(3));
    }
    addRow(i16(4));
    collection->UpdateInid(1, 2, 5, 3, false);
    EXPECT_EQ(lines(), Lines{"3"});
}

TEST_F(Collection, RowsOfAnotherVoucherDoNotFollowTheLines) {
    addRow(i16(3))->SetValue("iPeriod", std::uint8_t{2});
    addRow(i16(3))->SetValue("iSignSeq", i16(9));
    addRow(i16(3))->SetValue("iNo_id", std::int32_t{6});
    addRow(i16(3))->SetValue("iPeriod", Null{});
    addRow(i16(3))->SetValue("iSignSeq", Null{});
    addRow(i16(3))->SetValue("iNo_id", Null{});
    addRow(Null{});
    const auto parent = CashFlowCollection::Create();
    for (const auto& row : *collection) {
        row->objParent(parent);
    }
    collection->UpdateInid(1, 2, 5, 3, true);
    collection->UpdateInid(1, 2, 5, 3, false);
    EXPECT_EQ(lines(), (Lines{"3", "3", "3", "3", "3", "3", ""}));
    EXPECT_FALSE(parent->Changed());
}

TEST_F(Collection, RowsOfAVoucherWithoutANumberFollowTheLines) {
    const auto row = addRow(i16(3));
    row->SetValue("iNo_id", std::int32_t{0});
    collection->UpdateInid(1, 2, 5, 1, true);
    EXPECT_EQ(lines(), Lines{"4"});
    row->SetValue("iNo_id", "0");
    collection->UpdateInid(1, 2, 5, 1, true);
    EXPECT_EQ(lines(), Lines{"5"});
}

TEST_F(Collection, RowsWhoseNumbersAreTextsFollowTheLinesAndGetANumber) {
    const auto row = addRow("3");
    row->SetValue("iPeriod", "1");
    row->SetValue("iSignSeq", "2");
    row->SetValue("iNo_id", "5");
    collection->UpdateInid(1, 2, 5, 3, true);
    EXPECT_FALSE(row->Item("inid").is<std::string>());
    EXPECT_EQ(toText(row->Item("inid")), "4");
    row->SetValue("inid", "4");
    collection->UpdateInid(1, 2, 5, 4, false);
    EXPECT_EQ(collection->Count(), 0);
}

TEST_F(Collection, LinesFollowANumberBeyondSixteenBits) {
    collection->UpdateCol(1, 2, 40000, Date(41279.0));
    addRow(i16(3));
    collection->UpdateInid(1, 2, 40000, 3, true);
    EXPECT_EQ(lines(), Lines{"4"});
}

TEST_F(Collection, NeedsNoLoginToBeMade) {
    modPublic::context() = modPublic::Context{};
    const auto other = CashFlowCollection::Create();
    EXPECT_EQ(other->CFStruct().Fields().size(), 42U);
    EXPECT_EQ(other->CreateCFObject()->Count(), 42);
}

TEST_F(Collection, ARowThatIsRenamedAfterAddStaysUnderItsFormerKey) {
    const auto row = addRow(i16(1));
    const std::string former = row->key();
    row->key("renamed");
    EXPECT_EQ(collection->Item(former), row);
    EXPECT_ERROR(collection->Item("renamed"), errors::badArgument);
    EXPECT_EQ(row->Item("key"), Variant("renamed"));
    collection->Remove(former);
    EXPECT_EQ(collection->Count(), 0);
}

TEST_F(Collection, ARowInTwoCollectionsBelongsToTheSecond) {
    const auto row = addRow(i16(1));
    const auto second = CashFlowCollection::Create();
    second->Add(row);
    EXPECT_EQ(row->objParent(), second);
    EXPECT_EQ(collection->Item(row->key()), row) << "the first one still lists it";
    second->Remove(row->key());
    EXPECT_EQ(row->objParent(), nullptr);
    EXPECT_EQ(collection->Count(), 1);
}

} // namespace
} // namespace z7::cashflow::test
