#include "workbench/lists/accountLists.h"

#include "workbench/forEachRecord.h"
#include "z7cashflow/support/conversions.h"

namespace z7::cashflow::workbench {

namespace {

std::string textOf(const FieldList& fields, const char* column) { return toTextOrEmpty(fields.Item(column)); }

bool isTrue(const FieldList& fields, const char* column) {
    const Variant value = fields.Item(column);
    return !value.isNull() && toBool(value);
}

std::optional<Date> dateOf(const FieldList& fields, const char* column) {
    const Variant value = fields.Item(column);
    return value.isNull() ? std::nullopt : std::optional(toDate(value));
}

} // namespace

std::vector<ListedItem> listItems(Connection& connection) {
    std::vector<ListedItem> items;
    forEachRecord(connection, "select citemcode,citemname from fitemss98 order by citemcode",
                  [&items](const FieldList& fields) {
                      items.push_back({textOf(fields, "citemcode"), textOf(fields, "citemname")});
                  });
    return items;
}

std::vector<ListedAccount> listAccounts(Connection& connection, std::int16_t year) {
    std::vector<ListedAccount> accounts;
    forEachRecord(
        connection,
        "select ccode,ccode_name,bCashItem,bend,bclose,cUserDefineType from code where iyear=" + std::to_string(year) +
            " order by ccode",
        [&accounts](const FieldList& fields) {
            accounts.push_back({textOf(fields, "ccode"), textOf(fields, "ccode_name"), isTrue(fields, "bCashItem"),
                                isTrue(fields, "bend"), isTrue(fields, "bclose"), textOf(fields, "cUserDefineType")});
        });
    return accounts;
}

std::vector<ListedTemplate> listTemplates(Connection& connection, std::int16_t year) {
    std::vector<ListedTemplate> templates;
    forEachRecord(
        connection,
        "select t.cDataSource,t.bdir,t.cItemCode,t.dStartDate,t.dEndDate,c.ccode_name,i.citemname from "
        "GL_CashItemDataSource as t left join code as c on c.iyear=t.iyear and c.ccode=t.cDataSource left join "
        "fitemss98 as i on i.citemcode=t.cItemCode where t.iyear=" +
            std::to_string(year) + " and t.bDataStyle=0 order by t.cDataSource,t.bdir desc,t.iID",
        [&templates](const FieldList& fields) {
            templates.push_back({textOf(fields, "cDataSource"), textOf(fields, "ccode_name"), isTrue(fields, "bdir"),
                                 textOf(fields, "cItemCode"), textOf(fields, "citemname"), dateOf(fields, "dStartDate"),
                                 dateOf(fields, "dEndDate")});
        });
    return templates;
}

} // namespace z7::cashflow::workbench
