#pragma once

#include <atomic>

namespace z7::cashflow::sqlite {

/// Stands between the database library and the disk as long as it lives, counts what changes the disk, and from one of
/// these calls on does what a failing disk or a killed program does. One at a time; files must be closed before it
/// goes.
class FaultyDisk {
public:
    enum class Fault {
        full,        ///< no write succeeds any more, and no file can be created
        syncFails,   ///< what is written does not reach the disk any more
        growsNoMore, ///< the file size limit of the process: a failed write, but not for lack of space
        killed       ///< a signal kills the process on the spot
    };

    FaultyDisk();
    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;
    ~FaultyDisk();

    /// From the call of this number on, counted from 1 since this was called, there is the fault.
    void failFrom(int call, Fault fault);
    /// The number of calls since then, those that failed included.
    [[nodiscard]] static int calls();
};

} // namespace z7::cashflow::sqlite
