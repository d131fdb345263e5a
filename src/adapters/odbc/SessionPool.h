#pragma once

#include "adapters/odbc/Session.h"

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <utility>

namespace z7::cashflow::odbc {

/// Sessions for recordsets that are opened on the text of a connection string. A session that comes back is kept for the next
/// who asks with the same text, so that a row does not cost a login. It belongs to one Connection.
class SessionPool : public std::enable_shared_from_this<SessionPool> {
public:
    /// The most idle sessions that are kept, for all texts together.
    static constexpr std::size_t mostIdle = 4;

    SessionPool();
    SessionPool(const SessionPool&) = delete;
    SessionPool& operator=(const SessionPool&) = delete;
    ~SessionPool();

    /// A session for the caller's use alone, which is in no transaction. It comes back to the pool when the last holder lets it go,
    /// unless its line is cut or a text that ran on it may have altered it.
    [[nodiscard]] std::shared_ptr<Session> take(const std::string& connectionString);
    /// A session that is never pooled.
    [[nodiscard]] std::shared_ptr<Session> open(const std::string& connectionString);
    /// Closes the idle sessions. Those that are out close when they come back.
    void close() noexcept;
    /// Lets sessions be kept (again).
    void reopen() noexcept { open_ = true; }

    [[nodiscard]] std::size_t idleCount() const noexcept { return idle_.size(); }
    [[nodiscard]] Observers& observers() noexcept { return *observers_; }

private:
    void giveBack(const std::string& connectionString, std::shared_ptr<Session> session);

    std::list<std::pair<std::string, std::shared_ptr<Session>>> idle_; ///< the one that came back last in front
    std::shared_ptr<Observers> observers_;
    std::shared_ptr<Environment> environment_;
    int lastNumber_ = 0;
    bool open_ = false;
};

} // namespace z7::cashflow::odbc
