#pragma once

#include "adapters/shared/session/Session.h"
#include "z7cashflow/support/visibility.h"

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <utility>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::shared {

/// Sessions for recordsets that are opened by connection string. A returned session is kept for the next request
/// with the same string, so that a row does not require a login. The pool belongs to one connection.
class SessionPool : public std::enable_shared_from_this<SessionPool> {
public:
    /// Opens a session with the given number.
    using Opener = std::function<std::shared_ptr<Session>(const std::string& connectionString, int number)>;
    /// The maximum number of idle sessions, for all connection strings together.
    static constexpr std::size_t mostIdle = 4;

    /// A pool without sessions; sessions are kept only after reopen.
    explicit SessionPool(Opener opener);

    /// A session for exclusive use, which is not in a transaction. It returns to the pool when its last owner
    /// releases it, and is kept if it can be handed out again.
    [[nodiscard]] std::shared_ptr<Session> take(const std::string& connectionString);
    /// A session that is never pooled.
    [[nodiscard]] std::shared_ptr<Session> open(const std::string& connectionString);
    /// Closes the idle sessions.
    void dropIdle() noexcept { idle_.clear(); }
    /// Closes the idle sessions. Sessions in use are closed when they are returned.
    void close() noexcept;
    /// Allows sessions to be kept again.
    void reopen() noexcept { open_ = true; }

private:
    void giveBack(const std::string& connectionString, std::shared_ptr<Session> session);

    std::list<std::pair<std::string, std::shared_ptr<Session>>> idle_; ///< the most recently returned one first
    Opener opener_;
    int lastNumber_ = 0;
    bool open_ = false;
};

} // namespace z7::cashflow::shared

Z7_PUBLIC_END
