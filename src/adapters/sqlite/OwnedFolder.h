#pragma once

#include "adapters/sqlite/Handle.h"

#include <filesystem>
#include <functional>
#include <string>

namespace z7::cashflow::sqlite {

/// A folder for the files of one run of a program. The destructor removes it with its contents. A system lock on it
/// ends with the run, so that other runs can distinguish an abandoned folder from one in use.
class OwnedFolder {
public:
    /// Creates a folder in "parent" whose name consists of the prefix and random characters. Only the current
    /// user can enter it. An Error reports why it cannot be created.
    OwnedFolder(const std::filesystem::path& parent, const std::string& prefix);
    OwnedFolder(const OwnedFolder&) = delete;
    OwnedFolder& operator=(const OwnedFolder&) = delete;
    ~OwnedFolder();

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

    /// Removes folders with this prefix that ended runs of the current user have left in "parent". "before" is
    /// called for each of them before it is removed, while no other run can use it. Folders that cannot be
    /// removed are left.
    static void removeAbandoned(const std::filesystem::path& parent, const std::string& prefix,
                                const std::function<void(const std::filesystem::path&)>& before = {});

private:
    std::filesystem::path path_;
    Handle lock_;
};

} // namespace z7::cashflow::sqlite
