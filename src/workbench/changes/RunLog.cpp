#include "workbench/changes/RunLog.h"

#include "workbench/changes/literal.h"
#include "workbench/vouchers/Transaction.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/guid.h"

#include <utility>

namespace z7::cashflow::workbench {

namespace {

constexpr std::size_t longestUser = 60;
constexpr std::size_t longestCommand = 255;

bool isTableMissing(const Error& error) {
    return error.sqlState() == "42S02" || (!error.sqlState().empty() && error.nativeError() == 208);
}

std::optional<std::int32_t> numberOrNothing(const Variant& value) {
    return value.isNull() ? std::nullopt : std::optional(toInt32(value));
}

std::vector<LoggedRun> readRuns(Connection& connection, const std::string& condition) {
    const auto records = connection.Execute(
        "select r.iRun,r.cUser,r.dTime,r.cCommand,r.iUndo,v.vouchers from z7_run as r inner join (select t.iRun,"
        "count(*) as vouchers from (select distinct iRun,iYear,iPeriod,iSignSeq,iNo_id from z7_run_row) t group by "
        "t.iRun) v on v.iRun=r.iRun" +
        condition + " order by r.iRun desc");
    std::vector<LoggedRun> runs;
    for (; !records->atEnd(); records->MoveNext()) {
        const FieldList& fields = records->Fields();
        runs.push_back({toInt32(fields.Item("iRun")), toTextOrEmpty(fields.Item("cUser")), toDate(fields.Item("dTime")),
                        toTextOrEmpty(fields.Item("cCommand")), numberOrNothing(fields.Item("iUndo")),
                        toInt32(fields.Item("vouchers"))});
    }
    return runs;
}

} // namespace

bool RunLog::available() {
    if (!available_) {
        available_ = hasLog(connection_);
    }
    return *available_;
}

std::int32_t RunLog::begin() {
    if (number_) {
        return *number_;
    }
    const std::string token = guidText(systemGuidSource());
    connection_.Execute("insert into z7_run (cUser,dTime,cCommand,iUndo,cToken) values(" +
                        literal(leftCharacters(note_.user, longestUser)) + ",'" + dateText(note_.now()) + "'," +
                        literal(leftCharacters(note_.command, longestCommand)) + "," +
                        (note_.undoes ? std::to_string(*note_.undoes) : "null") + "," + literal(token) + ")");
    const auto record = connection_.Execute("select max(iRun) as iRun from z7_run where cToken=" + literal(token));
    number_ = toInt32(record->Fields().Item("iRun"));
    return *number_;
}

std::int32_t RunLog::reserve() {
    Transaction transaction(connection_);
    const std::int32_t number = begin();
    transaction.end(true);
    reserved_ = true;
    return number;
}

void RunLog::settle(bool changed) {
    if (!changed) {
        // After an error the database may be gone. A run without rows does no harm there.
        ignoringErrors([this] {
            connection_.Execute("delete from z7_run where iRun=" + std::to_string(number_.value()) +
                                " and iRun not in (select iRun from z7_run_row)");
        });
        number_.reset();
    }
    committed_ = changed;
    reserved_ = false;
}

void RunLog::note(const VoucherKey& key, bool after) {
    const std::string columns = rowColumnList();
    connection_.Execute("insert into z7_run_row (iRun,bAfter," + columns + ") select " + std::to_string(begin()) + "," +
                        (after ? "1," : "0,") + columns + " from gl_cashtable where " + rowsOfVoucher(key));
}

void RunLog::ended(bool committed) {
    if (committed) {
        committed_ = number_.has_value();
    } else if (!committed_ && !reserved_) {
        number_.reset();
    }
}

bool hasLog(Connection& connection) {
    try {
        connection.Execute("select top 1 iRun from z7_run_row");
        return true;
    } catch (const Error& error) {
        if (!isTableMissing(error)) {
            throw;
        }
        return false;
    }
}

std::vector<LoggedRun> readRuns(Connection& connection) { return readRuns(connection, ""); }

std::optional<LoggedRun> findRun(Connection& connection, std::int32_t number) {
    auto runs = readRuns(connection, " where r.iRun=" + std::to_string(number));
    return runs.empty() ? std::nullopt : std::optional(std::move(runs.front()));
}

std::vector<VoucherKey> vouchersOfRun(Connection& connection, std::int32_t run) {
    const auto records = connection.Execute(
        "select distinct iYear,iPeriod,iSignSeq,iNo_id from z7_run_row where iRun=" + std::to_string(run) +
        " order by iYear,iPeriod,iSignSeq,iNo_id");
    std::vector<VoucherKey> keys;
    for (; !records->atEnd(); records->MoveNext()) {
        const FieldList& fields = records->Fields();
        keys.emplace_back(toInt16(fields.Item("iYear")), toByte(fields.Item("iPeriod")),
                          toInt16(fields.Item("iSignSeq")), toInt32(fields.Item("iNo_id")));
    }
    return keys;
}

LoggedVoucher readLogged(Connection& connection, std::int32_t run, const VoucherKey& key) {
    const auto rows = [&](const char* side) {
        return readRowImages(
            connection, "select " + rowColumnList() + " from z7_run_row where iRun=" + std::to_string(run) +
                            " and bAfter=" + side + " and " + rowsOfVoucher(key) + " order by inid,cCashItem,md,mc");
    };
    return {key, rows("0"), rows("1")};
}

} // namespace z7::cashflow::workbench
