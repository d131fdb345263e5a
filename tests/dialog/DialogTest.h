#pragma once

#include "dialog/RecordingForm.h"
#include "dialog/ScriptedConnectionFactory.h"
#include "doubles/ContextGuard.h"
#include "doubles/ScriptedDatabase.h"
#include "z7cashflow/dialog/frmCashFlow.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {

using Lines = std::vector<std::string>;

inline std::int16_t i16(int number) { return static_cast<std::int16_t>(number); }

/// The dialog without a screen, on a scripted database. The voucher is 2013/1/2/5 of 2013-01-05 in gl_accvouch:
/// line 1 on 1001, debit 100; line 2 on 6001, credit 60; line 3 on 6002, credit 40. No column widths are stored.
class DialogTest : public LoginTest {
protected:
    DialogTest() {
        login->connectionString = ScriptedDatabase::connectionString();
        modPublic::context().dialogFactory = factory;
        modPublic::context().connectionFactory = connections;
        database.answerPrefix("select cdigest from ", {{"cdigest"}, {{"digest"}}, {}});
        database.answerWith("select citemname from fitemss98 where citemcode=N'", [](const std::string& text) {
            const std::size_t begin = text.find('\'') + 1;
            const std::string code = text.substr(begin, text.size() - begin - 1);
            return code == "01" || code == "02" ? one("citemname", "item " + code) : none("citemname");
        });
        setSum(100.0);
        setWidths({});
        database.answer("select cvalue from accinformation where csysid=N'GL'  and cname='bCashCode' ",
                        one("cvalue", "False"));
        database.answerPrefix("select bCashItem from code where", one("bCashItem", false));
        database.answerPrefix("select * from fitemss98 where citemcode=N'", none("citemcode"));
        for (const char* code : {"01", "02"}) {
            database.answer(std::string("select * from fitemss98 where citemcode=N'") + code + "'",
                            one("citemcode", code));
        }
        setLine("1001", 1, 100.0, 0.0);
        setLine("6001", 2, 0.0, 60.0);
        setLine("6002", 3, 0.0, 40.0);
        collection->UpdateCol(1, 2, 5, Date(41279.0));
        collection->VoucherTable("gl_accvouch");
    }

    static Table one(const std::string& column, const Variant& value) { return {{column}, {{value}}, {}}; }
    static Table none(const std::string& column) { return {{column}, {}, {}}; }
    static Table voucherLine(const std::string& ccode, const Variant& inid, const Variant& md, const Variant& mc) {
        return {{"cdigest", "ccode", "inid", "md", "mc"}, {{"digest " + ccode, ccode, inid, md, mc}}, {}};
    }
    static Table noLine() { return {{"cdigest", "ccode", "inid", "md", "mc"}, {}, {}}; }

    void setSum(const Variant& sum) { database.answerPrefix("select (sum(md) -sum(mc)) as mysum", one("mysum", sum)); }
    void setWidths(const std::vector<Variant>& widths) {
        Table table{{"cauth", "ilength"}, {}, {}};
        for (const Variant& width : widths) {
            table.rows.push_back({"frmCashFlow", width});
        }
        database.answer(widthsQuery + "cFieldNum", table);
        database.answer(widthsQuery + "cfieldnum", table);
        database.acceptPrefix("Delete from GL_myoutput");
        database.acceptPrefix("insert into GL_myoutput");
    }
    /// Sets the line of an account, with or without its number in the statement.
    void setLine(const std::string& ccode, int inid, const Variant& md, const Variant& mc) {
        const std::string where = "gl_accvouch where ccode=N'" + ccode + "'" + keyCondition;
        database.answer("select top 1 * from " + where, voucherLine(ccode, i16(inid), md, mc));
        database.answerPrefix("select * from " + where + " And inid = ", noLine());
        database.answer("select * from " + where + " And inid = " + std::to_string(inid),
                        voucherLine(ccode, i16(inid), md, mc));
    }
    std::shared_ptr<CashFlow> addRow(const Variant& inid, const Variant& ccode, const Variant& md, const Variant& mc,
                                     const Variant& item) {
        auto row = collection->CreateCFObject();
        row->SetValue("inid", inid);
        row->SetValue("ccode", ccode);
        row->SetValue("md", md);
        row->SetValue("mc", mc);
        row->SetValue("cCashItem", item);
        collection->Add(row);
        return row;
    }
    /// Adds two rows that match the voucher: 60 on line 2 and 40 on line 3, both with the item 01.
    void addTwoRows() {
        addRow(i16(2), "6001", 0.0, 60.0, "01");
        addRow(i16(3), "6002", 0.0, 40.0, "01");
    }
    void load(bool blnCheckCF = true) { dialog.LoadData(login, collection, blnCheckCF); }
    /// Loads the dialog and clears the journals.
    void open(bool blnCheckCF = true) {
        load(blnCheckCF);
        forget();
    }
    void forget() {
        database.clearJournal();
        factory->journal.clear();
        messages->log.clear();
        (void)cells().takeCalls();
    }
    RecordingForm& form() { return *factory->form; }
    RecordingGrid& cells() { return form().cells; }
    /// "inid:ccode:md:mc:item" for each row of the dialog's collection.
    Lines rows() const {
        Lines lines;
        for (const auto& row : *dialog.CashFlowCol()) {
            std::string line;
            for (const char* name : {"inid", "ccode", "md", "mc", "cCashItem"}) {
                line += (name == std::string("inid") ? "" : ":") + toTextOrEmpty(row->Item(name));
            }
            lines.push_back(line);
        }
        return lines;
    }
    /// Only the recordset of the widths may be destroyed without being closed, because the load leaves it open
    /// if none are stored.
    void expectAllClosed() const {
        EXPECT_EQ(database.openRecordsets(), Lines{});
        EXPECT_EQ(database.droppedRecordsets(), Lines{widthsQuery + "cFieldNum"});
    }
    /// title".
    Lines boxes() const {
        Lines shown;
        for (const std::string& entry : messages->log) {
            if (entry.starts_with("Show ")) {
                shown.push_back(entry.substr(5, entry.size() - 8)); // without help file and context
            }
        }
        return shown;
    }
    static std::string notice(const std::string& prompt) { return prompt + "|64|<Z7.CW.GL.CashFlow.00013>"; }
    static std::string noticeOf(const std::string& key) { return notice("<Z7.CW.GL.CashFlow." + key + ">"); }

    const std::string widthsQuery =
        "select * from GL_myoutput where cauth=N'frmCashFlow' and csqrmode=10 and LocaleId=N'2052' order by ";
    const std::string keyCondition = " and iperiod=1 and isignseq=2 and ino_id=5";

    ScriptedDatabase database;
    std::shared_ptr<RecordingDialogFactory> factory = std::make_shared<RecordingDialogFactory>();
    std::shared_ptr<ScriptedConnectionFactory> connections = std::make_shared<ScriptedConnectionFactory>(database);
    std::shared_ptr<CashFlowCollection> collection = CashFlowCollection::Create();
    frmCashFlow dialog;
};

} // namespace z7::cashflow::test
