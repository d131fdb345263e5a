#include "adapters/shared/session/SessionPool.h"

namespace z7::cashflow::shared {

SessionPool::SessionPool(Opener opener) : opener_(std::move(opener)) {}

std::shared_ptr<Session> SessionPool::take(const std::string& connectionString) {
    std::shared_ptr<Session> session;
    for (auto entry = idle_.begin(); entry != idle_.end() && session == nullptr;) {
        if (entry->first != connectionString) {
            ++entry;
            continue;
        }
        if (entry->second->isIdle()) { // its connection may be lost by now
            session = std::move(entry->second);
        }
        entry = idle_.erase(entry);
    }
    if (session == nullptr) {
        session = open(connectionString);
    }
    // The deleter of the returned pointer gives the session back to the pool and keeps it alive.
    Session* const lent = session.get();
    return std::shared_ptr<Session>(
        lent, [pool = weak_from_this(), connectionString, session = std::move(session)](Session*) mutable {
            if (const auto home = pool.lock()) {
                home->giveBack(connectionString, std::move(session));
            }
        });
}

std::shared_ptr<Session> SessionPool::open(const std::string& connectionString) {
    return opener_(connectionString, ++lastNumber_);
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

} // namespace z7::cashflow::shared
