// A preloaded library (LD_PRELOAD) that makes every flush to the disk take Z7_FLUSH_MICROSECONDS, so that a run can
// be timed as on such a disk. At the end it writes the number of flushes to standard error.

#include <dlfcn.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

std::atomic<long> flushes = 0;

struct Report {
    ~Report() { std::fprintf(stderr, "flushes: %ld\n", flushes.load()); }
} report;

int slowly(const char* name, int descriptor) {
    ++flushes;
    const char* text = std::getenv("Z7_FLUSH_MICROSECONDS"); // NOLINT(concurrency-mt-unsafe): nobody changes it
    std::this_thread::sleep_for(std::chrono::microseconds(text == nullptr ? 0 : std::atol(text)));
    using Flush = int (*)(int);
    return reinterpret_cast<Flush>(dlsym(RTLD_NEXT, name))(descriptor);
}

} // namespace

extern "C" int fdatasync(int descriptor) { return slowly("fdatasync", descriptor); }
extern "C" int fsync(int descriptor) { return slowly("fsync", descriptor); }
