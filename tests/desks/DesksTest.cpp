// Several desks at work on one database at the same time, each a process of its own.

#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "host/AccountMaker.h"
#include "host/GlobalOptions.h"
#include "host/HostLogin.h"
#include "host/TableFiles.h"
#include "host/VoucherList.h"
#include "z7cashflow/model/modPublic.h"
#include "z7cashflow/providers/VoucherProvider.h"
#include "z7cashflow/support/Guid.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace z7::cashflow {
namespace {

constexpr std::int16_t year = 2024;

// How a desk's process ends.
enum DeskResult : int { allDone = 0, unexpectedError = 1 };

// A desk: its own session, its own login.
class Desk {
public:
    explicit Desk(const std::filesystem::path& file) {
        const std::string text = sqlite::connectionString(file, year) + ";timeout=60000";
        connection.Open(text);
        modPublic::context() = modPublic::Context{};
        provider.Gl().objLogin(std::make_shared<host::HostLogin>(host::GlobalOptions{}, year, text));
    }
    ~Desk() { modPublic::context() = modPublic::Context{}; }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    // Saves a voucher in a transaction of its own; a refusal leaves it as it was.
    void save(const host::VoucherHead& voucher) {
        connection.BeginTrans();
        try {
            provider.Gl().SaveCashFlowColEx(connection, host::voucherTable, voucher.key.period, voucher.key.kind,
                                            voucher.key.number, voucher.date);
        } catch (const Error& error) {
            connection.RollbackTrans();
            const bool refusal = error.number() == errors::rowsDoNotFit || error.number() == errors::sumsDiffer ||
                                 error.number() == errors::invalidNull;
            if (!refusal) {
                throw;
            }
            return;
        }
        connection.CommitTrans();
    }

    sqlite::Connection connection;
    VoucherProvider provider;
};

class DesksTest : public testing::Test {
protected:
    DesksTest() : folder_(std::filesystem::path(testing::TempDir()) / ("z7desks" + guidText(systemGuidSource()))) {
        std::filesystem::create_directory(folder_);
        file = folder_ / "company.db";
        host::makeAccount(file, host::tableFilesOfSample(), {}, host::Language::english, [] { return false; });
    }
    ~DesksTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    // Runs each desk in a process of its own and waits for all of them. Each ends with its result.
    static std::vector<int> runDesks(const std::vector<std::function<void()>>& desks) {
        std::vector<pid_t> processes;
        for (const auto& desk : desks) {
            const pid_t process = fork();
            if (process == 0) {
                int result = allDone;
                try {
                    desk();
                } catch (const Error& error) {
                    std::fprintf(stderr, "desk: %d %s\n", error.number(), error.what());
                    result = unexpectedError;
                }
                _exit(result);
            }
            processes.push_back(process);
        }
        std::vector<int> results;
        for (const pid_t process : processes) {
            int status = 0;
            waitpid(process, &status, 0);
            results.push_back(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
        }
        return results;
    }

    [[nodiscard]] std::vector<host::VoucherHead> vouchers() const {
        Desk desk(file);
        return host::listVouchers(desk.connection, year, std::nullopt);
    }

    // Number and sum of the stored rows of each voucher, "rows:debit:credit".
    [[nodiscard]] std::map<std::string, std::string> stored() const {
        Desk desk(file);
        const auto rows = desk.connection.Execute(
            "select iperiod,isignseq,ino_id,count(*) as lines,sum(md) as debit,sum(mc) as credit from gl_cashtable "
            "group by iperiod,isignseq,ino_id");
        std::map<std::string, std::string> result;
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            FieldList& field = rows->Fields();
            result[toText(field.Item(0)) + "/" + toText(field.Item(1)) + "/" + toText(field.Item(2))] =
                toText(field.Item("lines")) + ":" + toText(field.Item("debit")) + ":" + toText(field.Item("credit"));
        }
        return result;
    }

    std::filesystem::path file;

private:
    std::filesystem::path folder_;
};

TEST_F(DesksTest, LoseNothingWhereTheySaveDifferentVouchers) {
    const auto all = vouchers();
    const auto share = [&](std::size_t part) {
        return [this, &all, part] {
            Desk desk(file);
            for (std::size_t at = part; at < all.size(); at += 3) {
                desk.save(all[at]);
            }
        };
    };
    EXPECT_EQ(runDesks({share(0), share(1), share(2)}), (std::vector<int>{allDone, allDone, allDone}));
    const auto together = stored();

    // One desk that saves them all once more comes to the same.
    Desk alone(file);
    for (const auto& voucher : all) {
        alone.save(voucher);
    }
    EXPECT_EQ(stored(), together);
    EXPECT_GT(together.size(), 150U);
}

TEST_F(DesksTest, LeaveNoHalfAndNoDoubleVoucherWhereTheySaveTheSame) {
    const auto all = vouchers();
    const auto work = [&] {
        Desk desk(file);
        for (const auto& voucher : all) {
            desk.save(voucher);
        }
    };
    EXPECT_EQ(runDesks({work, work, work}), (std::vector<int>{allDone, allDone, allDone}));
    const auto together = stored();

    Desk alone(file);
    for (const auto& voucher : all) {
        alone.save(voucher);
    }
    EXPECT_EQ(stored(), together);
}

TEST_F(DesksTest, EndInAClearErrorWhereAnotherKeepsTheDatabase) {
    const auto all = vouchers();
    Desk holder(file);
    holder.connection.BeginTrans();
    const auto impatient = [&] {
        sqlite::Connection connection;
        connection.Open(sqlite::connectionString(file, year) + ";timeout=10");
        try {
            connection.BeginTrans();
        } catch (const Error& error) {
            _exit(error.sqlState() == "HYT00" ? 42 : unexpectedError);
        }
    };
    EXPECT_EQ(runDesks({impatient}), std::vector<int>{42});
    holder.connection.RollbackTrans();
    EXPECT_NO_THROW(holder.save(all.front()));
}

TEST_F(DesksTest, SeeOnOwnSessionsOnlyWhatIsCommitted) {
    Desk desk(file);
    const std::string statement = "select citemname from fitemss98 where citemcode=N'NEW'";
    desk.connection.BeginTrans();
    desk.connection.Execute("insert into fitemss98 (citemcode,citemname) values (N'NEW',N'new item')");
    const auto own = [&] {
        const auto records = desk.connection.CreateRecordset();
        records->Open(statement, desk.connection.ConnectionString(), CursorType::ForwardOnly, LockType::ReadOnly);
        return !records->EndOfFile();
    };
    EXPECT_FALSE(desk.connection.Execute(statement)->EndOfFile());
    EXPECT_FALSE(own());
    desk.connection.CommitTrans();
    EXPECT_TRUE(own());
}

} // namespace
} // namespace z7::cashflow
