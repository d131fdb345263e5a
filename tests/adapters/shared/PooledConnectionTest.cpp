#include "adapters/shared/session/PooledConnection.h"
#include "z7cashflow/support/Error.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace z7::cashflow::shared {
namespace {

/// The state of the sessions that a pool opens.
struct Fate {
    std::vector<int> opened;
    std::set<int> closed;
    std::set<int> lost; ///< whose connection is lost
};

class FakeSession final : public Session {
public:
    FakeSession(int number, std::shared_ptr<Fate> fate) : number_(number), fate_(std::move(fate)) {
        fate_->opened.push_back(number);
    }
    FakeSession(const FakeSession&) = delete;
    FakeSession& operator=(const FakeSession&) = delete;
    ~FakeSession() override { close(); }

    void close() noexcept override { fate_->closed.insert(number_); }
    [[nodiscard]] int number() const noexcept override { return number_; }
    Result run(const std::string&, bool) override { return {}; }
    void begin() override { inTransaction_ = true; }
    void commit() override { inTransaction_ = false; }
    void rollback() override { inTransaction_ = false; }
    [[nodiscard]] bool inTransaction() const noexcept override { return inTransaction_; }
    [[nodiscard]] bool isIdle() const noexcept override { return !inTransaction_ && !isLost(); }
    [[nodiscard]] bool isLost() const noexcept override { return fate_->lost.contains(number_); }

private:
    int number_;
    std::shared_ptr<Fate> fate_;
    bool inTransaction_ = false;
};

class PoolTest : public ::testing::Test {
protected:
    PoolTest() {
        pool_ = std::make_shared<SessionPool>(
            [fate = fate_](const std::string&, int number) { return std::make_shared<FakeSession>(number, fate); });
        pool_->reopen();
    }
    /// The number of open sessions; those of the pool if nobody holds one.
    [[nodiscard]] std::size_t openCount() const { return fate_->opened.size() - fate_->closed.size(); }

    std::shared_ptr<Fate> fate_ = std::make_shared<Fate>();
    std::shared_ptr<SessionPool> pool_;
};

TEST_F(PoolTest, NobodySharesASessionAndTheLastThatCameBackGoesFirst) {
    const auto first = pool_->take("a");
    auto second = pool_->take("a");
    EXPECT_EQ(first->number(), 1);
    EXPECT_EQ(second->number(), 2);
    second.reset();
    EXPECT_EQ(pool_->take("b")->number(), 3) << "another text, another session";
    EXPECT_EQ(pool_->take("a")->number(), 2);
}

TEST_F(PoolTest, IdleSessionsAreFewAndGoWithThePool) {
    {
        std::vector<std::shared_ptr<Session>> many;
        for (int i = 0; i < 10; ++i) {
            many.push_back(pool_->take("a"));
        }
    }
    EXPECT_EQ(fate_->opened.size(), 10U);
    EXPECT_EQ(openCount(), SessionPool::mostIdle);
    pool_->close();
    EXPECT_EQ(openCount(), 0U);
    pool_->take("a").reset();
    EXPECT_EQ(openCount(), 0U) << "a closed pool keeps nothing";
}

TEST_F(PoolTest, ASessionInATransactionDoesNotComeBack) {
    pool_->take("a")->begin();
    EXPECT_TRUE(fate_->closed.contains(1));
}

TEST_F(PoolTest, AnIdleSessionWhoseLineWasCutIsNotHandedOut) {
    pool_->take("a").reset();
    EXPECT_EQ(openCount(), 1U);
    fate_->lost.insert(1);
    EXPECT_EQ(pool_->take("a")->number(), 2);
    EXPECT_TRUE(fate_->closed.contains(1));
}

TEST_F(PoolTest, ASessionMayOutliveThePool) {
    const auto session = pool_->take("a");
    pool_.reset();
    EXPECT_FALSE(fate_->closed.contains(1));
    EXPECT_EQ(session->number(), 1);
}

class FakeConnection final : public PooledConnection {
public:
    explicit FakeConnection(const std::shared_ptr<Fate>& fate)
        : PooledConnection(std::make_shared<SessionPool>([fate](const std::string&, int number) {
                               return std::make_shared<FakeSession>(number, fate);
                           }),
                           std::make_shared<Observers>()) {}
};

TEST(PooledConnection, OpensANewSessionForOneThatWasCutOutsideATransaction) {
    const auto fate = std::make_shared<Fate>();
    FakeConnection connection(fate);
    connection.Open("text");
    connection.Execute("a");
    fate->lost.insert(1);
    connection.Execute("b");
    EXPECT_EQ(connection.sessionNumber(), 2);
    connection.BeginTrans();
    fate->lost.insert(2);
    connection.RollbackTrans();
    EXPECT_EQ(connection.sessionNumber(), 2) << "the transaction belongs to the session that was cut";
    connection.Execute("c");
    EXPECT_EQ(connection.sessionNumber(), 3);
}

TEST(PooledConnection, KeepsItsTextWhenItIsClosed) {
    FakeConnection connection(std::make_shared<Fate>());
    EXPECT_EQ(connection.ConnectionString(), "");
    connection.Open("text");
    connection.Close();
    EXPECT_EQ(connection.ConnectionString(), "text");
    EXPECT_EQ(connection.sessionNumber(), 0);
    EXPECT_THROW(connection.Execute("a"), Error);
    EXPECT_THROW(connection.Close(), Error);
}

} // namespace
} // namespace z7::cashflow::shared
