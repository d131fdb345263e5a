#include "adapters/sqlite/OwnedFolder.h"

#include "adapters/sqlite/EmbeddedDatabase.h"
#include "doubles/ScratchFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

constexpr const char* prefix = "work-";

TEST(OwnedFolder, GoesWithItsObject) {
    const test::ScratchFolder parent;
    fs::path path;
    {
        const OwnedFolder folder(parent.path(), prefix);
        path = folder.path();
        EXPECT_TRUE(path.filename().string().starts_with(prefix));
        OwnedFolder::removeAbandoned(parent.path(), prefix);
        EXPECT_TRUE(fs::is_directory(path));
    }
    EXPECT_TRUE(fs::is_empty(parent.path()));
}

TEST(OwnedFolder, IsNotTakenFromARunThatHasJustMadeIt) {
    constexpr int runs = 8;
    constexpr int rounds = 150;
    const test::ScratchFolder parent;
    std::atomic<int> lost = 0;
    std::vector<std::thread> threads;
    threads.reserve(runs);
    for (int run = 0; run < runs; ++run) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                OwnedFolder::removeAbandoned(parent.path(), prefix);
                const OwnedFolder folder(parent.path(), prefix);
                std::this_thread::yield(); // a run that mistook the folder for abandoned removes it now
                std::error_code unreadable;
                lost += fs::is_directory(folder.path(), unreadable) ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(lost, 0);
    EXPECT_TRUE(fs::is_empty(parent.path()));
}

} // namespace
} // namespace z7::cashflow::sqlite
