#include "workbench/statement/statementQueries.h"

namespace z7::cashflow::workbench::queries {

namespace {

std::string inRange(const std::string& alias, const Range& range) {
    return alias + ".iyear=" + std::to_string(range.year) + " and " + alias + ".iperiod between " +
           std::to_string(range.first) + " and " + std::to_string(range.last);
}

/// The joins by which readers find rows: a row counts only if its account and its item exist.
const std::string readableRows = " from gl_cashtable r inner join code c on c.iyear=r.iyear and c.ccode=r.ccode"
                                 " inner join fitemss98 i on i.citemcode=r.cCashItem where ";

/// The effect of a row on cash: debit less credit on a cash account, otherwise the opposite.
std::string effectOf(const std::string& debit, const std::string& credit) {
    return "case when c.bCashItem=1 then isnull(r." + debit + ",0)-isnull(r." + credit + ",0) else isnull(r." + credit +
           ",0)-isnull(r." + debit + ",0) end";
}

/// The sum of the positive effects and that of the others, of a derived table t.
const std::string bothSides = "sum(case when t.effect>0 then t.effect else 0 end) as receipts,"
                              "sum(case when t.effect>0 then 0 else t.effect end) as payments";

/// The lines that count as a voucher's cash.
std::string cashLines(std::int16_t year) {
    return " from gl_accvouch v inner join code c on c.iyear=" + std::to_string(year) +
           " and c.ccode=v.ccode where c.bend=1 and c.bclose=0 and c.bCashItem=1 and ";
}

const std::string debitAndCredit = "sum(isnull(v.md,0)) as debit,sum(isnull(v.mc,0)) as credit";

} // namespace

std::string lastPeriod(std::int16_t year) {
    return "select max(iperiod) as last_period from gl_accvouch where iyear=" + std::to_string(year);
}

std::string items(const Range& range) {
    return "select t.item_code,t.item_name,t.iperiod," + bothSides +
           " from (select i.citemcode as item_code,i.citemname as item_name,r.iperiod," + effectOf("md", "mc") +
           " as effect" + readableRows + inRange("r", range) +
           ") t group by t.item_code,t.item_name,t.iperiod order by t.item_code,t.iperiod";
}

std::string currencies(const Range& range) {
    return "select t.item_code,t.currency," + bothSides +
           " from (select i.citemcode as item_code,isnull(r.cexch_name,N'') as currency,"
           "case when isnull(r.cexch_name,N'')=N'' then " +
           effectOf("md", "mc") + " else " + effectOf("md_f", "mc_f") + " end as effect" + readableRows +
           inRange("r", range) + ") t group by t.item_code,t.currency order by t.item_code,t.currency";
}

std::string itemNames() { return "select citemcode,citemname from fitemss98"; }

std::string cashAccounts(std::int16_t year) {
    return "select ccode,ccode_name from code where iyear=" + std::to_string(year) +
           " and bend=1 and bclose=0 and bCashItem=1";
}

std::string openingBalances(const Range& range) {
    const std::string year = std::to_string(range.year);
    return "select c.ccode," + debitAndCredit + cashLines(range.year) + "(v.iyear<" + year + " or (v.iyear=" + year +
           " and v.iperiod<" + std::to_string(range.first) + ")) group by c.ccode";
}

std::string cashMovements(const Range& range) {
    return "select c.ccode,v.iperiod," + debitAndCredit + cashLines(range.year) + inRange("v", range) +
           " group by c.ccode,v.iperiod";
}

std::string gaps(const Range& range) {
    return "select t.iperiod,t.isignseq,t.ino_id,sum(t.cash) as cash,sum(t.effect) as effect,sum(t.stored) as stored,"
           "sum(t.seen) as seen from ("
           "select v.iperiod,v.isignseq,v.ino_id,isnull(v.md,0)-isnull(v.mc,0) as cash,0 as effect,0 as stored,0 as seen" +
           cashLines(range.year) + inRange("v", range) + " union all select r.iperiod,r.isignseq,r.ino_id,0 as cash," +
           effectOf("md", "mc") + " as effect,0 as stored,1 as seen" + readableRows + inRange("r", range) +
           " union all select r.iperiod,r.isignseq,r.ino_id,0 as cash,0 as effect,1 as stored,0 as seen"
           " from gl_cashtable r where " +
           inRange("r", range) +
           ") t group by t.iperiod,t.isignseq,t.ino_id having abs(sum(t.cash-t.effect))>=0.001"
           " order by t.iperiod,t.isignseq,t.ino_id";
}

std::string itemVouchers(const Range& range) {
    return "select t.item_code,t.iperiod,t.isignseq,t.ino_id," + bothSides +
           " from (select i.citemcode as item_code,r.iperiod,r.isignseq,r.ino_id," + effectOf("md", "mc") +
           " as effect" + readableRows + inRange("r", range) +
           ") t group by t.item_code,t.iperiod,t.isignseq,t.ino_id"
           " order by t.item_code,t.iperiod,t.isignseq,t.ino_id";
}

std::string accountVouchers(const Range& range) {
    return "select c.ccode,v.iperiod,v.isignseq,v.ino_id," + debitAndCredit + cashLines(range.year) +
           inRange("v", range) +
           " group by c.ccode,v.iperiod,v.isignseq,v.ino_id order by c.ccode,v.iperiod,v.isignseq,v.ino_id";
}

std::string voucherLines(std::int16_t year, std::uint8_t period, std::int16_t kind, std::int32_t number) {
    return "select inid from gl_accvouch where iyear=" + std::to_string(year) +
           " and iperiod=" + std::to_string(period) + " and isignseq=" + std::to_string(kind) +
           " and ino_id=" + std::to_string(number);
}

} // namespace z7::cashflow::workbench::queries
