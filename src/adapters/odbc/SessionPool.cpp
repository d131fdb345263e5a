#include "adapters/odbc/SessionPool.h"

namespace z7::cashflow::odbc {

SessionPool::SessionPool() : observers_(std::make_shared<Observers>()) {
    // Where one line is cut the idle ones are cut as well, and would each report it anew.
    observers_->sessionLost = [this] { idle_.clear(); };
}

SessionPool::~SessionPool() { observers_->sessionLost = nullptr; }

std::shared_ptr<Session> SessionPool::take(const std::string& connectionString) {
    std::shared_ptr<Session> session;
    for (auto entry = idle_.begin(); entry != idle_.end() && session == nullptr;) {
        if (entry->first != connectionString) {
            ++entry;
            continue;
        }
        if (entry->second->isIdle()) { // the driver may have noticed meanwhile that the line is cut
            session = std::move(entry->second);
        }
        entry = idle_.erase(entry);
    }
    if (session == nullptr) {
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
    ConnectionOptions options = parseConnectionString(connectionString);
    if (environment_ == nullptr) {
        environment_ = std::make_shared<Environment>();
    }
    return std::make_shared<Session>(std::move(options), ++lastNumber_, environment_, observers_);
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

} // namespace z7::cashflow::odbc
