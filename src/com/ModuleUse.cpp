#include "com/ModuleUse.h"

#include <atomic>

namespace z7::com {

namespace {

constinit std::atomic<long> uses = 0;

} // namespace

ModuleUse::ModuleUse() noexcept { lock(); }

ModuleUse::~ModuleUse() { unlock(); }

void ModuleUse::lock() noexcept { ++uses; }

void ModuleUse::unlock() noexcept { --uses; }

long ModuleUse::count() noexcept { return uses; }

} // namespace z7::com
