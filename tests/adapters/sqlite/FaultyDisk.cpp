#include "adapters/sqlite/FaultyDisk.h"

#include <sqlite3.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace z7::cashflow::sqlite {
namespace {

using Fault = FaultyDisk::Fault;

struct State {
    sqlite3_vfs* real = nullptr;
    std::atomic<int> calls = 0;
    std::atomic<int> first = std::numeric_limits<int>::max();
    std::atomic<Fault> fault = Fault::full;
};

State& state() {
    static State only;
    return only;
}

/// Counts a call; true if the fault occurs.
bool isFaulty() {
    State& now = state();
    const bool faulty = ++now.calls >= now.first;
    if (faulty && now.fault == Fault::killed) {
#ifdef _WIN32
        std::abort(); // no test there asks for it
#else
        static_cast<void>(std::raise(SIGKILL));
#endif
    }
    return faulty;
}

struct File {
    sqlite3_file base;
    sqlite3_file* real;
};

sqlite3_file* realOf(sqlite3_file* file) { return reinterpret_cast<File*>(file)->real; }

int closeFile(sqlite3_file* file) { return realOf(file)->pMethods->xClose(realOf(file)); }
int readFile(sqlite3_file* file, void* data, int size, sqlite3_int64 at) {
    return realOf(file)->pMethods->xRead(realOf(file), data, size, at);
}
int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 at) {
    if (isFaulty()) {
        switch (state().fault) {
        case Fault::full:
            return SQLITE_FULL;
        case Fault::growsNoMore:
            return SQLITE_IOERR_WRITE;
        default:
            break;
        }
    }
    return realOf(file)->pMethods->xWrite(realOf(file), data, size, at);
}
int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    isFaulty();
    return realOf(file)->pMethods->xTruncate(realOf(file), size);
}
int syncFile(sqlite3_file* file, int flags) {
    if (isFaulty() && state().fault == Fault::syncFails) {
        return SQLITE_IOERR_FSYNC;
    }
    return realOf(file)->pMethods->xSync(realOf(file), flags);
}
int fileSize(sqlite3_file* file, sqlite3_int64* size) { return realOf(file)->pMethods->xFileSize(realOf(file), size); }
int lockFile(sqlite3_file* file, int lock) { return realOf(file)->pMethods->xLock(realOf(file), lock); }
int unlockFile(sqlite3_file* file, int lock) { return realOf(file)->pMethods->xUnlock(realOf(file), lock); }
int checkLock(sqlite3_file* file, int* held) { return realOf(file)->pMethods->xCheckReservedLock(realOf(file), held); }
int control(sqlite3_file* file, int operation, void* argument) {
    return realOf(file)->pMethods->xFileControl(realOf(file), operation, argument);
}
int sectorSize(sqlite3_file* file) { return realOf(file)->pMethods->xSectorSize(realOf(file)); }
int characteristics(sqlite3_file* file) { return realOf(file)->pMethods->xDeviceCharacteristics(realOf(file)); }
int mapShared(sqlite3_file* file, int page, int size, int extend, void volatile** memory) {
    return realOf(file)->pMethods->xShmMap(realOf(file), page, size, extend, memory);
}
int lockShared(sqlite3_file* file, int offset, int count, int flags) {
    return realOf(file)->pMethods->xShmLock(realOf(file), offset, count, flags);
}
void barrier(sqlite3_file* file) { realOf(file)->pMethods->xShmBarrier(realOf(file)); }
int unmapShared(sqlite3_file* file, int remove) { return realOf(file)->pMethods->xShmUnmap(realOf(file), remove); }

constexpr sqlite3_io_methods methods{2,        closeFile,   readFile,        writeFile,  truncateFile,
                                     syncFile, fileSize,    lockFile,        unlockFile, checkLock,
                                     control,  sectorSize,  characteristics, mapShared,  lockShared,
                                     barrier,  unmapShared, nullptr,         nullptr};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* flagsOut) {
    file->pMethods = nullptr;
    if ((flags & SQLITE_OPEN_CREATE) != 0 && state().real->xAccess != nullptr && name != nullptr) {
        int there = 0;
        state().real->xAccess(state().real, name, SQLITE_ACCESS_EXISTS, &there);
        if (there == 0 && isFaulty() && state().fault == Fault::full) {
            return SQLITE_CANTOPEN;
        }
    }
    auto* own = reinterpret_cast<File*>(file);
    own->real = reinterpret_cast<sqlite3_file*>(own + 1);
    const int code = state().real->xOpen(state().real, name, own->real, flags, flagsOut);
    if (own->real->pMethods != nullptr) {
        file->pMethods = &methods;
    }
    return code;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    isFaulty();
    return state().real->xDelete(state().real, name, syncFolder);
}

sqlite3_vfs& vfs() {
    static sqlite3_vfs only{};
    return only;
}

} // namespace

FaultyDisk::FaultyDisk() {
    State& now = state();
    if (now.real != nullptr) {
        throw std::logic_error("there is a faulty disk already");
    }
    now.real = sqlite3_vfs_find(nullptr);
    vfs() = *now.real; // everything else is that of the real disk, which needs only its data pointer
    vfs().zName = "faulty";
    vfs().szOsFile = static_cast<int>(sizeof(File)) + now.real->szOsFile;
    vfs().xOpen = openFile;
    vfs().xDelete = deleteFile;
    sqlite3_vfs_register(&vfs(), 1);
    failFrom(std::numeric_limits<int>::max(), Fault::full);
}

FaultyDisk::~FaultyDisk() {
    sqlite3_vfs_register(state().real, 1);
    sqlite3_vfs_unregister(&vfs());
    state().real = nullptr;
}

void FaultyDisk::failFrom(int call, Fault fault) {
    state().calls = 0;
    state().first = call;
    state().fault = fault;
}

int FaultyDisk::calls() { return state().calls; }

} // namespace z7::cashflow::sqlite
