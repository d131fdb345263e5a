#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace z7::cashflow::host {

/// Sets or removes an environment variable for its lifetime.
class EnvironmentGuard {
public:
    EnvironmentGuard(const char* name, const char* value) : name_(name) {
        if (const char* former = std::getenv(name)) {
            former_ = former;
        }
        set(value);
    }
    ~EnvironmentGuard() { set(former_ ? former_->c_str() : nullptr); }
    EnvironmentGuard(const EnvironmentGuard&) = delete;
    EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

private:
    void set(const char* value) {
        if (value == nullptr) {
            unsetenv(name_.c_str());
        } else {
            setenv(name_.c_str(), value, 1);
        }
    }

    std::string name_;
    std::optional<std::string> former_;
};

} // namespace z7::cashflow::host
