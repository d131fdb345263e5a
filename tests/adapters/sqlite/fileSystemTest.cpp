#include "adapters/sqlite/fileSystem.h"

#include "doubles/ScratchFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace z7::cashflow::sqlite {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class FileSystem : public testing::Test {
protected:
    test::ScratchFolder folder_;
    fs::path file_ = folder_.write("new", "content");
    fs::path target_ = folder_.path() / fs::path(u8"公司.db");
};

TEST_F(FileSystem, APublishedFileIsTheFileItself) {
    ASSERT_FALSE(publishFile(file_, target_));
    EXPECT_EQ(contentOf(target_), "content");
    if (fs::exists(file_)) { // the file system supports two names
        EXPECT_TRUE(fs::equivalent(file_, target_));
        fs::remove(file_);
    }
    EXPECT_EQ(contentOf(target_), "content");
}

TEST_F(FileSystem, PublishingReplacesNothing) {
    std::ofstream(target_) << "mine";
    EXPECT_EQ(publishFile(file_, target_), std::errc::file_exists);
    EXPECT_EQ(contentOf(target_), "mine");
    EXPECT_EQ(contentOf(file_), "content");
}

TEST_F(FileSystem, PublishingNamesAMissingFolder) {
    EXPECT_EQ(publishFile(file_, folder_.path() / "missing" / "new"), std::errc::no_such_file_or_directory);
}

TEST_F(FileSystem, AFolderIsCreatedOnce) {
    const fs::path folder = folder_.path() / "private";
    EXPECT_FALSE(makePrivateFolder(folder));
    EXPECT_TRUE(fs::is_directory(folder));
    EXPECT_EQ(makePrivateFolder(folder), std::errc::file_exists);
    EXPECT_EQ(makePrivateFolder(folder_.path() / "missing" / "private"), std::errc::no_such_file_or_directory);
}

TEST_F(FileSystem, WhatThisProcessCreatesIsItsOwn) {
    EXPECT_TRUE(isOwn(file_));
    EXPECT_TRUE(isOwn(folder_.path()));
    EXPECT_FALSE(isOwn(folder_.path() / "missing"));
}

TEST_F(FileSystem, FlushesFilesAndFolders) {
    EXPECT_FALSE(syncFile(file_));
    EXPECT_FALSE(syncFolder(folder_.path()));
    EXPECT_EQ(syncFile(folder_.path() / "missing"), std::errc::no_such_file_or_directory);
}

} // namespace
} // namespace z7::cashflow::sqlite
