#pragma once

#include "adapters/sqlite/Handle.h"

#include <filesystem>
#include <functional>
#include <string>

namespace z7::cashflow::sqlite {

/// A folder for the work of one run of a program. It goes with everything in it when its object does, and the system's
/// lock on it goes with the run, so that another run can tell an abandoned folder from one in use.
class OwnedFolder {
public:
    /// Creates a folder in "parent" whose name begins with the prefix and goes on at random. Only the current user can
    /// enter it. An Error says why it cannot be created.
    OwnedFolder(const std::filesystem::path& parent, const std::string& prefix);
    OwnedFolder(const OwnedFolder&) = delete;
    OwnedFolder& operator=(const OwnedFolder&) = delete;
    ~OwnedFolder();

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

    /// Removes the folders with this prefix that the current user's ended runs have left in "parent". "before" sees
    /// each of them before it is removed, while no other run can touch it. What cannot be removed stays.
    static void removeAbandoned(const std::filesystem::path& parent, const std::string& prefix,
                                const std::function<void(const std::filesystem::path&)>& before = {});

private:
    std::filesystem::path path_;
    Handle lock_;
};

} // namespace z7::cashflow::sqlite
