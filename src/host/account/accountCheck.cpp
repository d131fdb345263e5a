#include "host/account/accountCheck.h"

#include "adapters/odbc/accountSchema.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/integrity.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/text/joined.h"
#include "host/text/reasonText.h"
#include "workbench/vouchers/VoucherKinds.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"
#include "z7cashflow/support/format.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t mostOfAKind = 20;
constexpr const char* tableMissing = "42S02";
constexpr int permissionDenied = 229;

/// Findings of one kind; only the first ones are kept, the others are counted.
class Findings {
public:
    Findings(const char* kind, std::vector<AccountFinding>& all) : kind_(kind), all_(all) {}
    ~Findings() {
        if (count_ > mostOfAKind) {
            all_.push_back({kind_, HostText::verifyMore, {std::to_string(count_ - mostOfAKind)}});
        }
    }
    Findings(const Findings&) = delete;
    Findings& operator=(const Findings&) = delete;

    void add(HostText text, std::vector<std::string> arguments) {
        if (++count_ <= mostOfAKind) {
            all_.push_back({kind_, text, std::move(arguments)});
        }
    }

private:
    const char* kind_;
    std::vector<AccountFinding>& all_;
    std::size_t count_ = 0;
};

void forEachRecord(Connection& connection, const std::string& query,
                   const std::function<void(const FieldList&)>& take) {
    const auto records = connection.Execute(query);
    for (; !records->atEnd(); records->MoveNext()) {
        take(records->Fields());
    }
}

std::string text(const FieldList& fields, const char* name) { return toTextOrEmpty(fields.Item(name)); }

/// Reports the items that a table refers to and the list of items does not have.
void checkItems(Connection& connection, const std::string& table, const std::string& column,
                const std::string& condition, const char* kind, std::vector<AccountFinding>& all) {
    Findings findings(kind, all);
    forEachRecord(connection,
                  "select a." + column + " as item,count(*) as times from " + table + " a left join fitemss98 b on a." +
                      column + "=b.citemcode where b.citemcode is null and a." + column + " is not null and a." +
                      column + "<>N''" + condition + " group by a." + column + " order by a." + column,
                  [&](const FieldList& fields) {
                      findings.add(HostText::verifyItem, {table, text(fields, "item"), text(fields, "times")});
                  });
}

void checkAccounts(Connection& connection, std::vector<AccountFinding>& all) {
    Findings findings("line-account", all);
    forEachRecord(connection,
                  "select a.iyear as lineyear,a.ccode as account,count(*) as times from gl_accvouch a left join code b "
                  "on a.iyear=b.iyear and a.ccode=b.ccode where b.ccode is null group by a.iyear,a.ccode order by "
                  "a.iyear,a.ccode",
                  [&](const FieldList& fields) {
                      findings.add(HostText::verifyAccount,
                                   {text(fields, "account"), text(fields, "lineyear"), text(fields, "times")});
                  });
}

struct Period {
    Date begin;
    Date end;
};

void checkPeriods(Connection& connection, const std::string& account, std::vector<AccountFinding>& all) {
    std::set<std::string> accounts;
    std::multimap<std::int32_t, Period> periods;
    forEachRecord(connection, "select cacc_id,iyear,dbegin,dend from zqsystem..ua_period",
                  [&](const FieldList& fields) {
                      const std::string name = text(fields, "cacc_id");
                      accounts.insert(name);
                      if (asciiLower(name) == asciiLower(account)) {
                          periods.emplace(toInt32(fields.Item("iyear")),
                                          Period{toDate(fields.Item("dbegin")), toDate(fields.Item("dend"))});
                      }
                  });
    if (periods.empty()) {
        all.push_back(accounts.empty() ? AccountFinding{"account-identifier", HostText::verifyNoPeriods, {}}
                                       : AccountFinding{"account-identifier",
                                                        HostText::verifyForeignAccount,
                                                        {account, joined(accounts, ", ")}});
        return;
    }
    Findings findings("period", all);
    forEachRecord(connection,
                  "select iyear,dbill_date,count(*) as times from gl_accvouch where dbill_date is not null group by "
                  "iyear,dbill_date order by iyear,dbill_date",
                  [&](const FieldList& fields) {
                      const Date date = toDate(fields.Item("dbill_date"));
                      const auto [first, last] = periods.equal_range(toInt32(fields.Item("iyear")));
                      const bool covered = std::any_of(first, last, [date](const auto& entry) {
                          return entry.second.begin <= date && date <= entry.second.end;
                      });
                      if (!covered) {
                          findings.add(HostText::verifyDate,
                                       {dayText(date), text(fields, "iyear"), account, text(fields, "times")});
                      }
                  });
}

void checkBalances(Connection& connection, std::vector<AccountFinding>& all) {
    constexpr double leastAmount = 0.00005;
    Findings findings("balance", all);
    const auto kinds = workbench::VoucherKinds::read(connection);
    forEachRecord(connection,
                  "select iyear,iperiod,isignseq,ino_id,sum(md) as debit,sum(mc) as credit from gl_accvouch group by "
                  "iyear,iperiod,isignseq,ino_id order by iyear,iperiod,isignseq,ino_id",
                  [&](const FieldList& fields) {
                      const auto amount = [&fields](const char* name) {
                          const Variant value = fields.Item(name);
                          return value.isNull() ? 0.0 : toDouble(value);
                      };
                      if (std::fabs(amount("debit") - amount("credit")) >= leastAmount) {
                          findings.add(
                              HostText::verifyBalance,
                              {kinds.keyText({toInt16(fields.Item("iyear")), toByte(fields.Item("iperiod")),
                                              toInt16(fields.Item("isignseq")), toInt32(fields.Item("ino_id"))}),
                               format(amount("debit"), "##,##0.00"), format(amount("credit"), "##,##0.00")});
                      }
                  });
}

/// Compares the version of a server's schema. For a file, opening it does that.
void checkVersion(Connection& connection, CheckedAccount& checked) {
    const auto version = serverSchemaVersion(connection);
    if (!version) {
        checked.remark = HostText::verifyNoVersion;
    } else if (*version != odbc::accountSchemaVersion) {
        checked.findings.push_back({"schema-version",
                                    HostText::verifyVersion,
                                    {std::to_string(*version), std::to_string(odbc::accountSchemaVersion)}});
    }
}

} // namespace

std::vector<AccountFinding> checkAccount(Connection& connection, const std::string& account, Language language) {
    std::vector<AccountFinding> all;
    const auto checks = {
        std::function<void()>(
            [&] { checkItems(connection, "GL_CashItemDataSource", "cItemCode", "", "template-item", all); }),
        std::function<void()>([&] { checkItems(connection, "GL_VouchDraft", "cCashItem", "", "draft-item", all); }),
        std::function<void()>(
            [&] { checkItems(connection, "gl_accvouch", "citem_id", " and a.citem_class=N'98'", "line-item", all); }),
        std::function<void()>([&] { checkItems(connection, "gl_cashtable", "cCashItem", "", "row-item", all); }),
        std::function<void()>([&] { checkAccounts(connection, all); }),
        std::function<void()>([&] { checkPeriods(connection, account, all); }),
        std::function<void()>([&] { checkBalances(connection, all); })};
    for (const auto& check : checks) {
        try {
            check();
        } catch (const Error& error) {
            if (error.sqlState() != tableMissing) {
                throw;
            }
            all.push_back({"schema", HostText::verifyTable, {reasonText(language, error)}});
        }
    }
    return all;
}

CheckedAccount checkAccount(const AccountPlace& place, const GlobalOptions& options) {
    const auto file = place.file();
    std::error_code ignored;
    if (file && !std::filesystem::exists(*file, ignored)) {
        throw Failure(exit_code::database, HostText::fileMissing, {sqlite::utf8Of(*file)});
    }
    CheckedAccount checked;
    if (file) {
        for (const sqlite::Damage& damage : sqlite::findDamage(*file)) {
            checked.findings.push_back({"damage",
                                        HostText::verifyDamage,
                                        {sqlite::utf8Of(damage.file), reasonText(options.language, damage.reason)}});
        }
    }
    if (!checked.findings.empty()) {
        return checked;
    }
    const auto connection = place.makeConnection();
    try {
        connection->Open(place.connectionString(std::nullopt));
    } catch (const Error& error) {
        const std::string reason = reasonText(options.language, error);
        throw(file ? Failure(exit_code::database, HostText::notADatabase, {sqlite::utf8Of(*file), reason})
                   : Failure(exit_code::database, HostText::notConnected, {reason}))
            .because({error, {}});
    }
    if (!file) {
        checkVersion(*connection, checked);
    }
    const auto only = options.accountGiven ? std::nullopt : onlyAccount(*connection);
    for (AccountFinding& finding : checkAccount(*connection, only.value_or(options.account), options.language)) {
        checked.findings.push_back(std::move(finding));
    }
    connection->Close();
    return checked;
}

std::optional<std::int32_t> serverSchemaVersion(Connection& connection) {
    std::optional<std::int32_t> version;
    try {
        forEachRecord(connection, "select version from z7_schema_version",
                      [&version](const FieldList& fields) { version = toInt32(fields.Item("version")); });
    } catch (const Error& error) {
        if (error.sqlState() != tableMissing && error.nativeError() != permissionDenied) {
            throw;
        }
    }
    return version;
}

std::optional<std::string> onlyAccount(Connection& connection) {
    std::vector<std::string> accounts;
    forEachRecord(connection, "select distinct cacc_id from zqsystem..ua_period",
                  [&accounts](const FieldList& fields) { accounts.push_back(text(fields, "cacc_id")); });
    return accounts.size() == 1 ? std::optional(accounts.front()) : std::nullopt;
}

} // namespace z7::cashflow::host
