#include "workbench/vouchers/voucherList.h"

#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::workbench {

std::vector<VoucherHead> listVouchers(Connection& connection, std::int16_t year,
                                      const std::optional<PeriodRange>& periods) {
    std::string condition = "iyear=" + std::to_string(year);
    if (periods) {
        condition +=
            " and iperiod>=" + std::to_string(periods->first) + " and iperiod<=" + std::to_string(periods->last);
    }
    const auto lines =
        connection.Execute("select iperiod,isignseq,ino_id,inid,dbill_date,cdigest from gl_accvouch where " +
                           condition + " order by iperiod,isignseq,ino_id,inid");
    std::vector<VoucherHead> heads;
    for (; !lines->atEnd(); lines->MoveNext()) {
        const FieldList& fields = lines->Fields();
        const VoucherKey key{year, toByte(fields.Item("iperiod")), toInt16(fields.Item("isignseq")),
                             toInt32(fields.Item("ino_id"))};
        if (heads.empty() || heads.back().key != key) {
            heads.push_back({key, Date::none(), toTextOrEmpty(fields.Item("cdigest"))});
        }
        const Variant date = fields.Item("dbill_date");
        if (heads.back().date == Date::none() && !date.isNull()) {
            heads.back().date = toDate(date);
        }
    }
    return heads;
}

} // namespace z7::cashflow::workbench
