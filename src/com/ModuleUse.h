#pragma once

namespace z7::com {

/// Keeps the DLL in memory as long as it exists. Every object that a host holds and every class factory has one.
class ModuleUse {
public:
    /// Counts one more use.
    ModuleUse() noexcept;
    ModuleUse(const ModuleUse&) = delete;
    ModuleUse& operator=(const ModuleUse&) = delete;
    /// Counts one use less.
    ~ModuleUse();

    /// Counts one more use until unlock(): a host that wants to keep the DLL in memory.
    static void lock() noexcept;
    /// Ends a lock().
    static void unlock() noexcept;
    /// The number of uses at this moment, over all threads.
    [[nodiscard]] static long count() noexcept;
};

} // namespace z7::com
