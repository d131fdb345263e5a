#pragma once

#include <array>
#include <cstddef>
#include <ostream>

namespace z7::cashflow::sqlite {

/// Intercepts the calls of the database library to the disk for its lifetime, counts those that change the disk,
/// and from one of them on behaves like a failing disk or a killed program. At most one at a time; close all files
/// before it is destroyed.
class FaultyDisk {
public:
    enum class Fault {
        full,        ///< all writes fail, and no file can be created
        syncFails,   ///< written data no longer reaches the disk
        growsNoMore, ///< the file size limit of the process: writes fail, but not for lack of space
        killed       ///< a signal kills the process immediately
    };

    FaultyDisk();
    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;
    ~FaultyDisk();

    /// The fault occurs from the given call on, counted from 1 after this.
    void failFrom(int call, Fault fault);
    /// The number of calls since then, including failed ones.
    [[nodiscard]] static int calls();
};

/// Names the fault in the names of tests.
inline void PrintTo(FaultyDisk::Fault fault, std::ostream* out) {
    static constexpr std::array names{"Full", "SyncFails", "GrowsNoMore", "Killed"};
    *out << names.at(static_cast<std::size_t>(fault));
}

} // namespace z7::cashflow::sqlite
