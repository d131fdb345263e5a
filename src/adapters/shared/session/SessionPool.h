#pragma once

#include "adapters/shared/session/Session.h"

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>

namespace z7::cashflow::shared {

/// Sessions for recordsets that are opened on the text of a connection string. A session that comes back is kept for
/// the next who asks with the same text, so that a row does not cost a login. It belongs to one connection.
class SessionPool : public std::enable_shared_from_this<SessionPool> {
public:
    /// Opens a session with the number that it is to bear.
    using Opener = std::function<std::shared_ptr<Session>(const std::string& connectionString, int number)>;
    /// The most idle sessions that are kept, for all texts together.
    static constexpr std::size_t mostIdle = 4;

    explicit SessionPool(Opener opener);

    /// A session for the caller's use alone, which is in no transaction. It comes back to the pool when the last holder
    /// lets it go, and is kept unless it can no longer be handed to somebody else.
    [[nodiscard]] std::shared_ptr<Session> take(const std::string& connectionString);
    /// A session that is never pooled.
    [[nodiscard]] std::shared_ptr<Session> open(const std::string& connectionString);
    /// Closes the idle sessions.
    void dropIdle() noexcept { idle_.clear(); }
    /// Closes the idle sessions. Those that are out close when they come back.
    void close() noexcept;
    /// Lets sessions be kept (again).
    void reopen() noexcept { open_ = true; }

private:
    void giveBack(const std::string& connectionString, std::shared_ptr<Session> session);

    std::list<std::pair<std::string, std::shared_ptr<Session>>> idle_; ///< the one that came back last in front
    Opener opener_;
    int lastNumber_ = 0;
    bool open_ = false;
};

} // namespace z7::cashflow::shared
