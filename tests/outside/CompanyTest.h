#pragma once

#include "doubles/ContextGuard.h"
#include "outside/Company.h"
#include "z7cashflow/model/schemaDocument.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/conversions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow::test {

using Lines = std::vector<std::string>;

/// A test on the small company, with a provider as in a host.
class CompanyTest : public LoginTest {
protected:
    /// "line 2 item 01 0 100" of each row of a collection document.
    static Lines rowsOf(const std::string& xml) {
        const auto rows = CashFlowCollection::Create();
        rows->Load(xml);
        Lines lines;
        for (const auto& row : *rows) {
            const auto text = [&](const char* name) { return toTextOrEmpty(row->Item(name)); };
            lines.push_back("line " + text("inid") + " item " + text("cCashItem") + " " + text("md") + " " +
                            text("mc"));
        }
        return lines;
    }
    /// The document without rows for a voucher's key.
    static std::string noRows(const std::string& key = "iperiod='0' isignseq='0' ino_id='0'") {
        return "<root " + key + ">" + schemaDocument() + "<rows>\r\n</rows></root>";
    }
    /// A document with a row for line 2, account 6001, of the voucher 1/1/6.
    static std::string documentOf(const std::string& item, double credit) {
        const auto rows = CashFlowCollection::Create();
        rows->UpdateCol(1, 1, 6, Date(41279.0));
        const auto row = rows->CreateCFObject();
        row->SetValue("inid", std::int16_t{2});
        row->SetValue("ccode", "6001");
        row->SetValue("csign", "收");
        row->SetValue("cCashItem", item);
        row->SetValue("mc", credit);
        rows->Add(row);
        return rows->Save();
    }
    void storeRow(const std::string& item = "02") {
        company.execute("insert into gl_cashtable (RowGuid,iYear,iPeriod,iSignSeq,iNo_id,csign,inid,cCashItem,ccode,mc,"
                        "dbill_date) values(N'before',2013,1,1,6,N'x',2,N'" +
                        item + "',N'6001',250.5,'2013-01-05')");
        (void)company.takeStatements();
    }
    static std::string stored(const std::string& item, const std::string& credit, const std::string& line = "2") {
        return "2013/1/1/6 line " + line + " account 6001 item " + item + " 0 " + credit;
    }

    Company company;
    Connection& connection = company.connection();
    VoucherProvider provider;
    IGlVoucherProvider& gl = provider.gl();
    IOutVoucherProvider& out = provider.out();
};

} // namespace z7::cashflow::test
