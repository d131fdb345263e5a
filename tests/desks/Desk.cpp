#include "desks/Desk.h"

#include "host/work/HostLogin.h"
#include "workbench/vouchers/Allotment.h"
#include "workbench/vouchers/databaseFailure.h"
#include "z7cashflow/model/CashFlow.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>

namespace z7::cashflow::desks {

namespace {

bool isRefusal(const Error& error) {
    return error.number() == errors::rowsDoNotFit || error.number() == errors::sumsDiffer ||
           error.number() == errors::invalidNull;
}

std::string voucherOf(FieldList& field) {
    return toText(field.Item(0)) + "/" + toText(field.Item(1)) + "/" + toText(field.Item(2));
}

} // namespace

Desk::Desk(const Office& office, const std::string& connectionString) : connection_(office.makeConnection()) {
    connection_->Open(connectionString);
    modPublic::context() = modPublic::Context{};
    gl().objLogin(std::make_shared<host::HostLogin>(office.options(), year, connectionString));
}

Desk::~Desk() { modPublic::context() = modPublic::Context{}; }

void Desk::mark(const workbench::VoucherHead& voucher, const std::string& mark) {
    const workbench::VoucherKey& key = voucher.key;
    connection().Execute("update gl_accvouch set cDefine1=N'" + mark + "' where iyear=" + std::to_string(year) +
                         " and iperiod=" + std::to_string(key.period) + " and isignseq=" + std::to_string(key.kind) +
                         " and ino_id=" + std::to_string(key.number));
}

void Desk::edit(const workbench::VoucherHead& voucher, const std::string& mark, const std::string& item) {
    const workbench::VoucherKey& key = voucher.key;
    workbench::lockVoucher(connection(), key);
    std::shared_ptr<CashFlowCollection> rows = gl().CreateCashFlowColFromDB(
        connection(), workbench::voucherTable, key.period, key.kind, key.number, voucher.date);
    for (const auto& row : *rows) {
        row->SetValue("cCashItem", item);
    }
    gl().SaveCashFlowColEx(connection(), workbench::voucherTable, key.period, key.kind, key.number, voucher.date,
                           &rows);
    this->mark(voucher, mark);
    connection().Execute("update gl_cashtable set cDefine1=N'" + mark + "' where iYear=" + std::to_string(year) +
                         " and iPeriod=" + std::to_string(key.period) + " and iSignSeq=" + std::to_string(key.kind) +
                         " and iNo_id=" + std::to_string(key.number));
}

bool Desk::allot(const workbench::VoucherKey& key) {
    constexpr int mostAttempts = 1000;
    for (int attempt = 1; attempt <= mostAttempts; ++attempt) {
        const auto result = workbench::Allotment(connection(), data_, gl(), true).allot(key);
        if (!result.refusal) {
            return true;
        }
        if (result.refusal->findings.empty() ||
            result.refusal->findings.front().kind != workbench::Finding::Kind::heldElsewhere) {
            return false;
        }
    }
    throw Error(0, "test", "another desk never let go of " + nameOf(key));
}

bool Desk::save(const workbench::VoucherHead& voucher, const std::string& mark, const std::string& item) {
    constexpr int mostAttempts = 1000;
    for (int attempt = 1;; ++attempt) {
        try {
            connection().BeginTrans();
            edit(voucher, mark, item);
            connection().CommitTrans();
            return true;
        } catch (const Error& error) {
            ignoringErrors([this] { connection().RollbackTrans(); }); // the first error is the one that counts
            if (isRefusal(error)) {
                return false;
            }
            if (!workbench::isHeldElsewhere(error) || attempt == mostAttempts) {
                throw;
            }
        }
    }
}

std::vector<workbench::VoucherHead> Desk::vouchers() {
    return workbench::listVouchers(connection(), year, std::nullopt);
}

std::map<std::string, std::string> Desk::stored() {
    const auto rows =
        connection().Execute("select iperiod,isignseq,ino_id,count(*) as lines,sum(md) as debit,sum(mc) as credit "
                             "from gl_cashtable group by iperiod,isignseq,ino_id");
    std::map<std::string, std::string> result;
    for (; !rows->atEnd(); rows->MoveNext()) {
        FieldList& field = rows->Fields();
        result[voucherOf(field)] =
            toText(field.Item("lines")) + ":" + toText(field.Item("debit")) + ":" + toText(field.Item("credit"));
    }
    return result;
}

std::map<std::string, std::vector<std::string>> Desk::marksOfLines() {
    return marks("select iperiod,isignseq,ino_id,cDefine1 from gl_accvouch where iyear=" + std::to_string(year));
}

std::map<std::string, std::vector<std::string>> Desk::marksOfRows() {
    return marks("select iperiod,isignseq,ino_id,cDefine1,cCashItem from gl_cashtable where iyear=" +
                 std::to_string(year));
}

std::map<std::string, std::vector<std::string>> Desk::marks(const std::string& query) {
    std::map<std::string, std::vector<std::string>> result;
    const auto records = connection().Execute(query);
    for (; !records->atEnd(); records->MoveNext()) {
        FieldList& field = records->Fields();
        std::string mark = toTextOrEmpty(field.Item("cDefine1"));
        if (field.has("cCashItem")) {
            mark += "/" + toTextOrEmpty(field.Item("cCashItem"));
        }
        auto& known = result[voucherOf(field)];
        if (std::find(known.begin(), known.end(), mark) == known.end()) {
            known.push_back(mark);
        }
    }
    return result;
}

std::string nameOf(const workbench::VoucherKey& key) {
    return std::to_string(key.period) + "/" + std::to_string(key.kind) + "/" + std::to_string(key.number);
}

} // namespace z7::cashflow::desks
