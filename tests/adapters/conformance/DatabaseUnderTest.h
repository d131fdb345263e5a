#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace z7::cashflow::conformance {

/// A capability of an adapter. If it is missing, the reason is reported by the skipped case.
struct Capability {
    bool present = true;
    std::string reason;
};

/// A new, empty account database used through one adapter; it is removed with this object.
class DatabaseUnderTest {
public:
    virtual ~DatabaseUnderTest() = default;
    /// A closed connection of the adapter.
    [[nodiscard]] virtual std::unique_ptr<Connection> makeConnection() const = 0;
    /// A connection string whose sessions wait for a lock at most the given number of milliseconds.
    [[nodiscard]] virtual std::string connectionString(std::optional<std::int16_t> year, int timeout) const = 0;

    /// An account identifier that nobody else uses in the system database, which adapters may share.
    [[nodiscard]] virtual std::string accountId() const { return "001"; }

    [[nodiscard]] virtual Capability selectInto() const { return {}; }
    [[nodiscard]] virtual Capability writesToView() const { return {}; }
    [[nodiscard]] virtual Capability comparesWithoutCase() const { return {}; }
    [[nodiscard]] virtual Capability waitsForLock() const { return {}; }
    /// A lock timeout is reported with the state HYT00.
    [[nodiscard]] virtual Capability tellsLockTimeout() const { return {}; }
    /// Errors have the numbers and states of the suite's server.
    [[nodiscard]] virtual Capability tellsErrorNumbers() const { return {}; }
    /// For a text that ends early, with a quote left over, the quote is reported and not what precedes it.
    [[nodiscard]] virtual Capability tellsLeftOverQuoteFirst() const { return {}; }
    /// In a result, the column of an expression without an alias has an empty name.
    [[nodiscard]] virtual Capability leavesExpressionsUnnamed() const { return {}; }
    /// A recordset keeps its records when its connection is closed.
    [[nodiscard]] virtual Capability keepsRecordsAfterClose() const { return {}; }
    /// A batch that cannot be parsed does not end the transaction.
    [[nodiscard]] virtual Capability keepsTransactionAfterBadSyntax() const { return {}; }
};

struct Adapter {
    std::string name;
    std::function<std::unique_ptr<DatabaseUnderTest>()> make;
    friend void PrintTo(const Adapter& adapter, std::ostream* out) { *out << adapter.name; }
};

/// The adapters of the test program to which these cases are linked.
[[nodiscard]] std::vector<Adapter> databasesUnderTest();

/// A case with a new database and an open session in the year 2013.
class DatabaseCase : public ::testing::TestWithParam<Adapter> {
protected:
    void SetUp() override {
        database_ = GetParam().make();
        connection_ = open(std::int16_t{2013});
    }
    [[nodiscard]] std::unique_ptr<Connection> open(std::optional<std::int16_t> year, int timeout = 0) const {
        auto connection = database_->makeConnection();
        connection->Open(database_->connectionString(year, timeout));
        return connection;
    }
    std::shared_ptr<Recordset> run(const std::string& statement) const { return connection_->Execute(statement); }
    [[nodiscard]] std::int32_t count(const std::string& statement) const { return run(statement)->RecordCount(); }
    [[nodiscard]] Variant first(const std::string& statement) const { return run(statement)->Fields().Item(0); }
    std::shared_ptr<Recordset> openRecords(const std::string& statement, LockType lock = LockType::optimistic) const {
        auto records = connection_->createRecordset();
        records->Open(statement, connection_.get(), CursorType::keyset, lock);
        return records;
    }
    /// Adds the accounts 1001 (cash), 6001 and 6002 of 2013, the items 0101 and 0102, and the voucher
    /// 2013/1/2/5 with three lines.
    void addVoucher() const {
        run("insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) values(2013,N'1001',N'现金',1,1,0);"
            "insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) values(2013,N'6001',N'收入',0,1,0);"
            "insert into code (iyear,ccode,ccode_name,bCashItem,bend,bclose) values(2013,N'6002',N'Costs',0,1,0)");
        run("insert into fitemss98 (citemcode,citemname) values(N'0101',N'销售商品');"
            "insert into fitemss98 (citemcode,citemname) values(N'0102',N'Other')");
        for (const char* line : {"1,N'1001',100.25,0", "2,N'6001',0,60.1", "3,N'6002',0,40.15"}) {
            run(std::string("insert into gl_accvouch "
                            "(iyear,iperiod,isignseq,ino_id,csign,dbill_date,cexch_name,inid,ccode,md,mc) "
                            "values(2013,1,2,5,N'付',N'2013-01-05',N'USD',") +
                line + ")");
        }
    }

    std::unique_ptr<DatabaseUnderTest> database_;
    std::unique_ptr<Connection> connection_;
};

#define Z7_NEEDS(capability)                                                                                           \
    if (const auto needed = (capability); !needed.present)                                                             \
    GTEST_SKIP() << needed.reason

/// Runs an action that must raise an Error, and returns the Error.
template <class Action> Error errorOf(Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error came out";
    return Error(0, "", "");
}

inline std::string adapterName(const ::testing::TestParamInfo<Adapter>& info) { return info.param.name; }

} // namespace z7::cashflow::conformance
