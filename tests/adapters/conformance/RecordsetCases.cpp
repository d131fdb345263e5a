#include "adapters/conformance/DatabaseUnderTest.h"

#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::conformance {
namespace {

class RecordsetCases : public DatabaseCase {
protected:
    void SetUp() override {
        DatabaseCase::SetUp();
        addVoucher();
    }
};

TEST_P(RecordsetCases, AClosedRecordsetRefusesWhatNeedsAnOpenOne) {
    const auto records = connection_->createRecordset();
    EXPECT_EQ(records->State(), ObjectState::closed);
    for (const auto& action : std::vector<std::function<void()>>{
             [&] { records->Close(); }, [&] { static_cast<void>(records->atEnd()); }, [&] { records->MoveFirst(); },
             [&] { records->MoveNext(); }, [&] { static_cast<void>(records->Fields()); }, [&] { records->Filter(""); },
             [&] { records->AddNew(); }, [&] { records->Update(); }, [&] { static_cast<void>(records->Source()); },
             [&] { static_cast<void>(records->RecordCount()); }}) {
        EXPECT_EQ(errorOf(action).number(), 3704);
    }
    EXPECT_EQ(errorOf([&] {
                  records->Open("select * from code", std::monostate(), CursorType::snapshot, LockType::readOnly);
              }).number(),
              3709);
}

TEST_P(RecordsetCases, ReturnsItsRecordsInOrderAndNoneAfterTheLast) {
    auto records = connection_->createRecordset();
    records->CursorLocation(CursorLocation::client);
    records->ActiveConnection(connection_.get());
    records->Open("select * from gl_accvouch order by inid", std::monostate(), CursorType::snapshot,
                  LockType::readOnly);
    EXPECT_EQ(errorOf([&] {
                  records->Open("select 1 as x", connection_.get(), CursorType::snapshot, LockType::readOnly);
              }).number(),
              3705);
    EXPECT_EQ(errorOf([&] { records->CursorLocation(CursorLocation::server); }).number(), 3705);
    EXPECT_EQ(records->RecordCount(), 3);
    std::string codes;
    for (; !records->atEnd(); records->MoveNext()) {
        codes += *records->Fields().Item("CCODE").get<std::string>() + ",";
    }
    EXPECT_EQ(codes, "1001,6001,6002,");
    EXPECT_EQ(errorOf([&] { records->MoveNext(); }).number(), 3021);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records->Fields().Item("ccode")); }).number(), 3021);
    records->MoveFirst();
    EXPECT_EQ(records->Fields().Item("ccode"), Variant("1001"));
    EXPECT_EQ(errorOf([&] { static_cast<void>(records->Fields().Item("nosuch")); }).number(), 3265);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records->Fields().Item(999)); }).number(), 3265);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records->Fields().Name(-1)); }).number(), 3265);
}

TEST_P(RecordsetCases, AFilterShowsOnlyWhatEqualsItAndABadOneChangesNothing) {
    const auto records = run("select * from gl_accvouch");
    records->Filter("inid=2");
    EXPECT_EQ(records->RecordCount(), 1);
    EXPECT_EQ(records->Fields().Item("ccode"), Variant("6001"));
    EXPECT_EQ(errorOf([&] { records->Filter("inid="); }).number(), 3001);
    EXPECT_EQ(records->Filter(), "inid=2");
    EXPECT_EQ(records->RecordCount(), 1);
    records->Filter("iperiod=1 and isignseq=2 and ino_id=5 and inid=9");
    EXPECT_TRUE(records->atEnd());
    records->Filter("");
    EXPECT_EQ(records->RecordCount(), 3);
}

TEST_P(RecordsetCases, ReadOnlyRecordsetsRefuseChanges) {
    for (const LockType lock : {LockType::readOnly, LockType::unspecified}) {
        const auto records = openRecords("select * from fitemss98", lock);
        EXPECT_EQ(errorOf([&] { records->AddNew(); }).number(), 3251);
        EXPECT_EQ(errorOf([&] { records->Fields().Item("citemname", Variant("x")); }).number(), 3251);
        records->Update(); // nothing is pending
    }
    EXPECT_EQ(errorOf([&] { run("select * from fitemss98")->AddNew(); }).number(), 3251);
}

TEST_P(RecordsetCases, NewAndChangedRecordsAreWrittenByAnUpdateOrAMove) {
    const auto records = openRecords("select * from fitemss98");
    records->AddNew();
    records->Fields().Item("citemcode", Variant(std::int32_t{99}));
    records->Fields().Item("citemname", Variant("新"));
    EXPECT_EQ(count("select * from fitemss98"), 2) << "not written yet";
    records->Update();
    EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'99'"), Variant("新"));
    EXPECT_EQ(records->RecordCount(), 3);
    EXPECT_EQ(records->Fields().Item("citemcode"), Variant("99"));
    records->Fields().Item("citemname", Variant());
    records->Update();
    EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'99'"), Variant());
    records->MoveFirst();
    records->Fields().Item("citemname", Variant("first"));
    records->MoveNext(); // writes pending changes
    EXPECT_EQ(count("select * from fitemss98 where citemname=N'first'"), 1);
}

TEST_P(RecordsetCases, NewRecordsOfDifferentColumns) {
    const auto records = openRecords("select * from fitemss98");
    const auto add = [&](const char* code, const char* name, bool nameFirst) {
        records->AddNew();
        if (name != nullptr && nameFirst) {
            records->Fields().Item("citemname", Variant(name));
        }
        records->Fields().Item("citemcode", Variant(code));
        if (name != nullptr && !nameFirst) {
            records->Fields().Item("citemname", Variant(name));
        }
        records->Update();
    };
    add("90", nullptr, false);
    add("91", "one", false);
    add("92", "two", false);
    add("93", "three", true);
    add("94", nullptr, false);
    EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'90'"), Variant());
    EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'91'"), Variant("one"));
    EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'92'"), Variant("two"));
    EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'93'"), Variant("three"));
    EXPECT_EQ(first("select citemname from fitemss98 where citemcode=N'94'"), Variant());
    records->MoveFirst();
    std::string names;
    for (; !records->atEnd(); records->MoveNext()) {
        names += toTextOrEmpty(records->Fields().Item("citemname")) + ';';
    }
    EXPECT_TRUE(names.ends_with(";;one;two;three;;")) << names;
}

TEST_P(RecordsetCases, ARefusedRecordStaysPending) {
    const auto records = openRecords("select * from fitemss98");
    records->AddNew();
    records->Fields().Item("citemcode", Variant("0101"));
    EXPECT_EQ(errorOf([&] { records->Update(); }).sqlState(), "23000");
    records->Fields().Item("citemcode", Variant("0103"));
    records->Update();
    EXPECT_EQ(count("select * from fitemss98"), 3);
    records->AddNew();
    EXPECT_EQ(errorOf([&] { records->Update(); }).sqlState(), "23000") << "the code must not be null";
    records->Close();
    EXPECT_EQ(count("select * from fitemss98"), 3);
}

TEST_P(RecordsetCases, AJoinCannotBeWritten) {
    const auto records = openRecords("select a.ccode from gl_accvouch a inner join code on a.ccode=code.ccode");
    EXPECT_EQ(errorOf([&] { records->AddNew(); }).number(), 3251);
}

TEST_P(RecordsetCases, ARecordWithoutAKeyIsNotChanged) {
    run("insert into dsign (isignseq,csign) values(1,N'收')");
    const auto records = openRecords("select * from dsign");
    records->Fields().Item("csign", Variant("付"));
    EXPECT_EQ(errorOf([&] { records->Update(); }).number(), 3251);
    EXPECT_EQ(first("select csign from dsign"), Variant("收"));
}

TEST_P(RecordsetCases, OutlivesWhatItWasOpenedOn) {
    Z7_NEEDS(database_->keepsRecordsAfterClose());
    const auto records = openRecords("select * from fitemss98");
    connection_->Close();
    EXPECT_EQ(records->RecordCount(), 2);
    records->Fields().Item("citemname", Variant("x"));
    EXPECT_EQ(errorOf([&] { records->Update(); }).number(), 3704);
}

TEST_P(RecordsetCases, CutOffFromItsSession) {
    const auto records = connection_->createRecordset();
    records->CursorLocation(CursorLocation::client);
    records->Open("select * from fitemss98", connection_.get(), CursorType::keyset, LockType::optimistic);
    records->ActiveConnection(std::monostate());
    EXPECT_EQ(records->RecordCount(), 2);
    EXPECT_EQ(errorOf([&] { records->AddNew(); }).number(), 3251);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(records->ActiveConnection()));
}

TEST_P(RecordsetCases, StatementWithoutRecordsLeavesItClosed) {
    auto records = connection_->createRecordset();
    records->Open("delete from dsign", connection_.get(), CursorType::snapshot, LockType::readOnly);
    EXPECT_EQ(records->State(), ObjectState::closed);
}

INSTANTIATE_TEST_SUITE_P(Adapters, RecordsetCases, ::testing::ValuesIn(databasesUnderTest()), adapterName);

} // namespace
} // namespace z7::cashflow::conformance
