#include "adapters/sqlite/SessionPool.h"

#include <algorithm>

namespace z7::cashflow::sqlite {

SessionPool::SessionPool() : observers_(std::make_shared<Observers>()) {}

std::shared_ptr<Session> SessionPool::take(const std::string& connectionString) {
    std::shared_ptr<Session> session;
    const auto found =
        std::find_if(idle_.begin(), idle_.end(), [&](const auto& entry) { return entry.first == connectionString; });
    if (found != idle_.end()) {
        session = std::move(found->second);
        idle_.erase(found);
    } else {
        session = open(connectionString);
    }
    // What the caller holds ends in the pool: the deleter keeps the session itself alive.
    Session* const lent = session.get();
    return std::shared_ptr<Session>(
        lent, [pool = weak_from_this(), connectionString, session = std::move(session)](Session*) mutable {
            if (const auto home = pool.lock()) {
                home->giveBack(connectionString, std::move(session));
            }
        });
}

std::shared_ptr<Session> SessionPool::open(const std::string& connectionString) {
    return std::make_shared<Session>(parseConnectionString(connectionString), ++lastNumber_, observers_);
}

void SessionPool::close() noexcept {
    open_ = false;
    idle_.clear();
}

void SessionPool::giveBack(const std::string& connectionString, std::shared_ptr<Session> session) {
    if (!open_ || !session->isIdle()) {
        return;
    }
    idle_.emplace_front(connectionString, std::move(session));
    if (idle_.size() > mostIdle) {
        idle_.pop_back();
    }
}

} // namespace z7::cashflow::sqlite
