#include "workbench/vouchers/databaseFailure.h"

#include <gtest/gtest.h>

namespace z7::cashflow::workbench {
namespace {

TEST(DatabaseFailure, IsTheDatabaseAndNotTheVoucher) {
    EXPECT_TRUE(isDatabaseFailure(Error(5, "SQLite", "database is locked", "HYT00")));
    EXPECT_TRUE(isDatabaseFailure(Error(13, "CashFlow", "database or disk is full", "HY000")));
    EXPECT_TRUE(isDatabaseFailure(Error(11, "CashFlow", "database disk image is malformed", "HY000")));
    EXPECT_TRUE(isDatabaseFailure(Error(778, "CashFlow", "disk I/O error", "HY000")));
    EXPECT_TRUE(isDatabaseFailure(Error(1, "SQLite", "no such table: gl_accvouch", "42S02")));
    EXPECT_TRUE(isDatabaseFailure(Error(0, "x", "connection lost", "08S01")));
    EXPECT_TRUE(isDatabaseFailure(Error(3930, "CashFlow", "the transaction is gone", "25000")));
    EXPECT_TRUE(isDatabaseFailure(Error(1205, "CashFlow", "deadlock", "40001")));
    EXPECT_FALSE(isDatabaseFailure(Error(errors::typeMismatch, "CashFlow", "Type mismatch")))
        << "13 is not always a full disk";
    EXPECT_FALSE(isDatabaseFailure(Error(errors::badArgument, "CashFlow", "5")));
    EXPECT_FALSE(isDatabaseFailure(Error(errors::invalidNull, "CashFlow", "94")));
    EXPECT_FALSE(isDatabaseFailure(Error(errors::rowsDoNotFit, "CashFlow", "10008")));
    EXPECT_FALSE(isDatabaseFailure(Error(275, "CashFlow", "CHECK constraint failed", "23000")));
    EXPECT_FALSE(isDatabaseFailure(Error(102, "CashFlow", "near quote", "42000")));
    EXPECT_FALSE(isDatabaseFailure(Error(1, "CashFlow", "integer overflow", "HY000")));
    EXPECT_FALSE(isDatabaseFailure(Error(18, "CashFlow", "string or blob too big", "HY000")));
}

TEST(DatabaseFailure, DistinguishesALockOfAnotherSessionFromEverythingElse) {
    EXPECT_TRUE(isHeldElsewhere(Error(5, "SQLite", "database is locked", "HYT00")));
    EXPECT_TRUE(isHeldElsewhere(Error(1222, "CashFlow", "Lock request time out period exceeded.", "HYT00")));
    EXPECT_TRUE(isHeldElsewhere(Error(1222, "CashFlow", "Lock request time out period exceeded.", "42000")));
    EXPECT_TRUE(isHeldElsewhere(Error(1205, "CashFlow", "deadlocked", "40001")));
    EXPECT_TRUE(isHeldElsewhere(Error(1205, "CashFlow", "deadlocked", "HY000")));
    EXPECT_FALSE(isHeldElsewhere(Error(3930, "CashFlow", "the transaction is gone", "25000")));
    EXPECT_FALSE(isHeldElsewhere(Error(0, "ODBC", "connection lost", "08S01")));
    EXPECT_FALSE(isHeldElsewhere(Error(1205, "CashFlow", "no error of a database")));
}

} // namespace
} // namespace z7::cashflow::workbench
