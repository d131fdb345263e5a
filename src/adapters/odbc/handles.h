#pragma once

#include "adapters/odbc/ConnectionOptions.h"
#include "adapters/odbc/nativeCalls.h"

#include <memory>

namespace z7::cashflow::odbc {

/// A handle of the driver manager that is freed with its owner.
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

/// The program's door to the driver manager. Several may be open.
class Environment {
public:
    /// Error if the driver manager does not work.
    Environment();
    [[nodiscard]] Handle get() const noexcept { return handle_.get(); }

private:
    OwnedHandle handle_;
};

/// A line to a database through its driver, with one statement that is used again and again: some drivers allow one at a time.
class Line {
public:
    /// Connects. An Error says why the driver or the server refuses, without any secret.
    Line(std::shared_ptr<Environment> environment, const ConnectionOptions& options);
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line();

    [[nodiscard]] Handle connection() const noexcept { return connection_.get(); }
    /// The statement, free for use: what it had open is closed.
    [[nodiscard]] Handle freshStatement();
    /// Gives the statement up after a failure, which may have left it half-used.
    void dropStatement() noexcept { statement_.reset(); }
    /// Whether the driver knows that the line is cut. Does not ask the server.
    [[nodiscard]] bool isDead() const noexcept;

private:
    std::shared_ptr<Environment> environment_;
    OwnedHandle connection_;
    OwnedHandle statement_;
    bool connected_ = false;
};

} // namespace z7::cashflow::odbc
