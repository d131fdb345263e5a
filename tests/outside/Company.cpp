#include "outside/Company.h"

#include "adapters/sqlite/database.h"
#include "adapters/sqlite/functions.h"
#include "z7cashflow/support/conversions.h"

#include <sqlite3.h>

#include <random>
#include <stdexcept>
#include <system_error>

namespace z7::cashflow::test {

namespace fs = std::filesystem;

namespace {

fs::path newFolder() {
    std::random_device random;
    fs::path path;
    do {
        path = fs::temp_directory_path() / ("z7cashflow-outside-" + std::to_string(random()));
    } while (!fs::create_directories(path));
    return path;
}

// Columns of a subsystem's own table: no key of the ledger, and with the item on the line.
constexpr const char* outsideColumns =
    "(inid smallint, ccode nvarchar(40) collate z7_text, ccashitem_id nvarchar(40), md money real,"
    " mc money real, md_f money real, mc_f money real, nd_s float, nc_s float, cdept_id nvarchar(60),"
    " cperson_id nvarchar(60), ccus_id nvarchar(60), csup_id nvarchar(60), citem_class nvarchar(20),"
    " citem_id nvarchar(60), coutno_id nvarchar(100) collate z7_text, cDefine1 nvarchar(60), cDefine2 nvarchar(60),"
    " cDefine3 nvarchar(60), cDefine4 datetime, cDefine5 float, cDefine6 datetime, cDefine7 float,"
    " cDefine8 nvarchar(120), cDefine9 nvarchar(120), cDefine10 nvarchar(120), cDefine11 nvarchar(120),"
    " cDefine12 nvarchar(120), cDefine13 nvarchar(120), cDefine14 nvarchar(120), cDefine15 float, cDefine16 float)";

void makeOutsideTables(const fs::path& account) {
    sqlite3* opened = nullptr;
    const int status = sqlite3_open(account.string().c_str(), &opened);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle(opened, sqlite3_close);
    if (status != SQLITE_OK) {
        throw std::runtime_error("the account cannot be opened: " + account.string());
    }
    sqlite::prepareSession(handle.get(), 2013);
    for (const char* table : {"sales", "costs"}) {
        const std::string statement = std::string("create table ") + table + " " + outsideColumns;
        if (sqlite3_exec(handle.get(), statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(handle.get()));
        }
    }
}

} // namespace

Company::Company() : folder_(newFolder()), connection_(std::make_unique<sqlite::Connection>()) {
    const fs::path account = folder_ / "company.db";
    sqlite::createDatabase(account);
    makeOutsideTables(account);
    connection_->Open(sqlite::connectionString(account, 2013) + ";timeout=0");
    fill();
    const int own = connection_->sessionNumber();
    connection_->onStatement([this, own](int session, const std::string& text) {
        statements_.push_back((session == own ? "main: " : "own: ") + text);
    });
}

Company::~Company() {
    connection_.reset();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void Company::fill() {
    for (const char* account :
         {"N'1001',N'库存现金',1,1,0", "N'1002',N'银行存款',1,1,0", "N'1003',N'closed cash',1,1,1",
          "N'6001',N'主营业务收入',0,1,0", "N'6602',N'管理费用',0,1,0"}) {
        execute(std::string("insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) values(2013,") + account +
                ")");
    }
    execute("insert into fitemss98 (citemcode,citemname) values(N'01',N'销售商品收到的现金')");
    execute("insert into fitemss98 (citemcode,citemname) values(N'02',N'other receipts')");
    execute("insert into dsign (isignseq,csign) values(1,N'收')");
    execute("insert into dsign (isignseq,csign) values(2,N'付')");
    for (const char* option : {"bCashCode", "bAutoDisplay", "bXJLL"}) {
        execute(std::string("insert into accinformation (csysid,cname,cvalue) values(N'GL',N'") + option +
                "',N'False')");
    }
    execute("insert into zqsystem..ua_period (cacc_id,iyear,iid,dbegin,dend) "
            "values(N'001',2013,1,'2013-01-01','2013-12-31')");
    execute("insert into GL_CashItemDataSource (iyear,bDataStyle,cDataSource,bdir,cItemCode,dStartDate,dEndDate) "
            "values(2013,0,N'6001',0,N'01','2013-01-01','2013-12-31')");
    const auto voucher = [&](const char* key, const char* outsideKey, const char* amount, const char* item) {
        const std::string begin =
            "insert into gl_accvouch (iyear,iperiod,isignseq,ino_id,inid,dbill_date,csign,ccode,md,"
            "mc,citem_class,citem_id,cexch_name,cdigest,coutno_id) values(2013,";
        execute(begin + key + ",1,'2013-01-05',N'收',N'1001'," + amount + ",0,Null,Null,N'人民币',N'a & b'," +
                outsideKey + ")");
        execute(begin + key + ",2,'2013-01-05',N'收',N'6001',0," + amount + "," + item + ",N'人民币',N'a & b'," +
                outsideKey + ")");
    };
    voucher("1,2,5", "Null", "100", "N'98',N'01'");
    voucher("1,1,6", "N'OUT'", "250.5", "Null,Null");
    voucher("2,1,40000", "N'BIG'", "7", "Null,Null");
    const auto line = [&](const std::string& table, const char* values) {
        execute("insert into " + table + " (coutno_id,inid,ccode,md,mc,ccashitem_id,cDefine1) values(" + values + ")");
    };
    line("sales", "N'OUT',1,N'1001',250.5,0,Null,N'till 1'");
    line("sales", "N'OUT',2,N'6001',0,250.5,N'02',N'bill 7'");
    line("costs", "N'NOCASH',1,N'6602',9,0,Null,Null");
    line("costs", "N'NOCASH',2,N'6001',0,9,Null,Null");
}

std::vector<std::string> Company::takeStatements() {
    std::vector<std::string> taken;
    taken.swap(statements_);
    return taken;
}

void Company::setOption(const std::string& name, const std::string& value) {
    execute("update accinformation set cvalue=N'" + value + "' where csysid=N'GL' and cname=N'" + name + "'");
    statements_.clear();
}

std::vector<std::string> Company::records(const std::string& query) {
    const std::vector<std::string> kept = statements_;
    std::vector<std::string> lines;
    const auto result = connection_->Execute(query);
    for (; !result->atEnd(); result->MoveNext()) {
        std::string line;
        for (int i = 0; i < result->Fields().Count(); ++i) {
            const Variant value = result->Fields().Item(i);
            if (!value.isNull()) {
                line += (line.empty() ? "" : " ") + result->Fields().Name(i) + "=" + toText(value);
            }
        }
        lines.push_back(line);
    }
    result->Close();
    statements_ = kept;
    return lines;
}

std::vector<std::string> Company::storedRows() {
    const std::vector<std::string> kept = statements_;
    std::vector<std::string> lines;
    const auto rows = connection_->Execute("select * from gl_cashtable order by iYear,iPeriod,iSignSeq,iNo_id,inid");
    for (; !rows->atEnd(); rows->MoveNext()) {
        const auto text = [&](const char* name) { return toTextOrEmpty(rows->Fields().Item(name)); };
        lines.push_back(text("iYear") + "/" + text("iPeriod") + "/" + text("iSignSeq") + "/" + text("iNo_id") +
                        " line " + text("inid") + " account " + text("ccode") + " item " + text("cCashItem") + " " +
                        text("md") + " " + text("mc"));
    }
    rows->Close();
    statements_ = kept;
    return lines;
}

int Company::temporaryTables() {
    const std::vector<std::string> kept = statements_;
    const auto tables = connection_->Execute("select name from tempdb..sqlite_schema where name like N'TempVoucher%'");
    const int count = tables->RecordCount();
    statements_ = kept;
    return count;
}

} // namespace z7::cashflow::test
