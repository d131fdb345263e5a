#pragma once

#include "adapters/odbc/ConnectionOptions.h"
#include "adapters/odbc/nativeCalls.h"

#include <memory>

namespace z7::cashflow::odbc {

/// A handle of the driver manager that is freed by its owner.
class OwnedHandle {
public:
    OwnedHandle() = default;
    OwnedHandle(short type, Handle handle) noexcept : type_(type), handle_(handle) {}
    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;
    ~OwnedHandle() { reset(); }

    [[nodiscard]] Handle get() const noexcept { return handle_; }
    void reset(short type = 0, Handle handle = nullptr) noexcept;

private:
    short type_ = 0;
    Handle handle_ = nullptr;
};

/// Owns an environment handle of the driver manager. Several may exist.
class Environment {
public:
    /// Error if the driver manager does not work.
    Environment();
    [[nodiscard]] Handle get() const noexcept { return handle_.get(); }

private:
    OwnedHandle handle_;
};

/// An open connection of a driver, with one statement handle that is reused, because some drivers allow only one at
/// a time.
class DriverConnection {
public:
    /// Connects. An Error reports why the driver or the server refuses, without any secret.
    DriverConnection(std::shared_ptr<Environment> environment, const ConnectionOptions& options);
    DriverConnection(const DriverConnection&) = delete;
    DriverConnection& operator=(const DriverConnection&) = delete;
    ~DriverConnection();

    [[nodiscard]] Handle connection() const noexcept { return connection_.get(); }
    /// The statement handle, ready for use: an open result is closed.
    [[nodiscard]] Handle freshStatement();
    /// Frees the statement handle after a failure, which may have left it in an undefined state.
    void dropStatement() noexcept { statement_.reset(); }
    /// Whether the driver knows that the connection is lost. Does not query the server.
    [[nodiscard]] bool isDead() const noexcept;

private:
    std::shared_ptr<Environment> environment_;
    OwnedHandle connection_;
    OwnedHandle statement_;
    bool connected_ = false;
};

} // namespace z7::cashflow::odbc
