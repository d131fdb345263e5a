#pragma once

#include "doubles/ContextGuard.h"
#include "doubles/ScriptedDatabase.h"
#include "providers/ledgerStatements.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {

using Lines = std::vector<std::string>;
using Collection = std::shared_ptr<CashFlowCollection>;

inline std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

/// A line of a voucher: account 1001 and its like are cash accounts.
struct Line {
    int inid = 1;
    std::string ccode;
    Variant md = 0.0;
    Variant mc = 0.0;
    Variant itemClass;
    Variant itemId;
    Variant department;
};

/// A database with one ledger voucher, 2013/1/2/5 of 2013-01-05: account 1001 debit 100, account 6001 credit 100,
/// whose line has the item "01". There are no stored rows and no templates, and all options are off.
struct Ledger {
    inline static const std::string nameQuery = "select citemname from fitemss98 where citemcode=N'";

    Ledger() {
        for (const char* name : {"bCashCode", "bAutoDisplay", "bXJLL"}) {
            setOption(name, "False");
        }
        database.answerPrefix("select iyear,iid from zqsystem..ua_period",
                              {{"iyear", "iid"}, {{i16(2013), std::uint8_t{1}}}, {}});
        haveCash(true);
        setLines({{1, "1001", 100.0, 0.0, {}, {}, {}}, {2, "6001", 0.0, 100.0, "98", "01", "D2"}});
        setSum(100.0);
        database.answerPrefix("select * from dsign",
                              {{"isignseq", "csign"}, {{i16(2), "kind"}, {i16(2), "later"}}, {}});
        setStored({});
        database.answerWith(nameQuery, [](const std::string& text) {
            const std::string code = text.substr(nameQuery.size(), text.size() - nameQuery.size() - 1);
            return code.empty() ? Table{{"citemname"}, {}, {}} : Table{{"citemname"}, {{"item " + code}}, {}};
        });
        database.answerPrefix("select * from GL_CashItemDataSource", {{"cItemCode"}, {}, {}});
        database.answerWith("select ccode from code where iyear=", [](const std::string& text) {
            return text.find("ccode=N'10") == std::string::npos ? Table{{"ccode"}, {}, {}}
                                                                : Table{{"ccode"}, {{"x"}}, {}};
        });
        database.answerPrefix("select  dBill_date from ", {{"dBill_date"}, {{Date(41279.0)}}, {}});
        for (const char* text : {"delete from gl_v_cashtable", "insert into gl_v_cashtable", "UPDATE GL_CashTable",
                                 "if not exists(", "delete from gl_cashtable", "insert into gl_cashtable"}) {
            database.acceptPrefix(text);
        }
    }

    void setOption(const std::string& name, const Variant& value) {
        database.answer(ledger::option(name), {{"cvalue", "cdefault"}, {{value, "x"}}, {}});
    }
    void haveCash(bool answer) {
        Table table{{"ccode"}, {}, {}};
        if (answer) {
            table.rows.push_back({"1001"});
        }
        database.answerPrefix("select code.ccode from ", table);
    }
    void setSum(const Variant& sum) {
        database.answerPrefix("select (sum(md) -sum(mc)) as mysum", {{"mysum"}, {{sum}}, {}});
    }
    /// Sets the voucher's lines, in tables with and without keys.
    void setLines(const std::vector<Line>& voucher) {
        Table keyed{{"iYear", "iPeriod", "iSignSeq", "csign", "iNo_id", "inid", "md", "mc", "ccode", "md_f", "cdept_id",
                     "citem_class", "citem_id", "bCashItem"},
                    {},
                    {}};
        Table keyless{
            {"iYear", "inid", "md", "mc", "ccode", "cdept_id", "citem_class", "citem_id", "bCashItem"}, {}, {}};
        for (const Line& line : voucher) {
            const bool cash = line.ccode.starts_with("10");
            keyed.rows.push_back({i16(2013), std::uint8_t{1}, i16(2), "V", std::int32_t{5}, i16(line.inid), line.md,
                                  line.mc, line.ccode, 7.5, line.department, line.itemClass, line.itemId, cash});
            keyless.rows.push_back({i16(2013), i16(line.inid), line.md, line.mc, line.ccode, line.department,
                                    line.itemClass, line.itemId, cash});
        }
        database.answerPrefix("select  code.iYear,", keyless);
        database.answerPrefix("select  code.iYear,iPeriod,", keyed);
    }
    /// Stores rows in gl_cashtable: credit 100 of account 6001 on line 2, one for each item.
    void setStored(const Lines& items) {
        Table table{{"RowGuid", "iyear", "iperiod", "isignseq", "csign", "ino_id", "inid", "cCashItem", "md", "mc",
                     "ccode", "dbill_date", "cexch_name", "ccode_name", "bCashItem", "citemname"},
                    {},
                    {}};
        for (const std::string& item : items) {
            table.rows.push_back({"stored", i16(2013), std::uint8_t{1}, i16(2), "S", std::int32_t{5}, i16(2), item, 0.0,
                                  100.0, "6001", Date(41270.0), Null{}, "sales", false, "stored name"});
        }
        database.answerPrefix("select table1.*,", table);
    }
    [[nodiscard]] const Lines& statements() const { return database.statements(); }

    ScriptedDatabase database;
    Connection& connection = database.connection();
    VoucherProvider provider;
    IGlVoucherProvider& gl = provider.gl();
    IOutVoucherProvider& out = provider.out();
};

class ProviderTest : public LoginTest {
protected:
    /// A collection for the voucher 1/2/5 as a host would create it.
    static Collection hostCollection(Ledger& on) {
        Collection collection = on.provider.CreateCashFlowCollection();
        collection->UpdateCol(1, 2, 5, Date(41279.0));
        collection->VoucherTable("gl_accvouch");
        return collection;
    }
    static std::shared_ptr<CashFlow> addRow(const Collection& collection, const Variant& inid, const Variant& ccode,
                                            const Variant& md, const Variant& mc, const Variant& item = "01") {
        auto row = collection->CreateCFObject();
        row->SetValue("inid", inid);
        row->SetValue("ccode", ccode);
        row->SetValue("md", md);
        row->SetValue("mc", mc);
        row->SetValue("cCashItem", item);
        collection->Add(row);
        return row;
    }
    Collection create(Ledger& on) {
        return on.gl.CreateCashFlowColFromDB(on.connection, "gl_accvouch", 1, 2, 5, Date(41279.0));
    }
    /// "inid:md:mc:item" of each row.
    static Lines rowsOf(const Collection& collection) {
        Lines rows;
        for (const auto& row : *collection) {
            rows.push_back(toTextOrEmpty(row->Item("inid")) + ":" + toTextOrEmpty(row->Item("md")) + ":" +
                           toTextOrEmpty(row->Item("mc")) + ":" + toTextOrEmpty(row->Item("cCashItem")));
        }
        return rows;
    }
    void TearDown() override {
        EXPECT_EQ(world.database.openRecordsets(), Lines{});
        EXPECT_EQ(world.database.droppedRecordsets(), dropped) << "what is opened is closed";
    }
    /// Declares that an error was raised, after which recordsets may be destroyed without being closed.
    void errorCameOut() { dropped = world.database.droppedRecordsets(); }

    Lines dropped;

    Ledger world;
};

} // namespace z7::cashflow::test
