// Stands before the C library (LD_PRELOAD) and makes every flush to the disk take as long as Z7_FLUSH_MICROSECONDS
// says, so that a run can be timed as on a disk of that kind. At the end it writes how many flushes there were to the
// error stream.

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
