#pragma once

#include <filesystem>
#include <system_error>

/// What the standard library lacks for files that must survive a power failure and must not take the place of others.
namespace z7::cashflow::sqlite {

/// Creates a folder that only the current user can enter. The code is std::errc::file_exists if the name is taken.
[[nodiscard]] std::error_code makePrivateFolder(const std::filesystem::path& folder);

/// Whether a file or folder, not followed if it is a link, belongs to the current user.
[[nodiscard]] bool isOwn(const std::filesystem::path& path);

/// Makes a file appear under a second name, or under a new name where the file system has no second names. Never
/// replaces anything: the code is std::errc::file_exists if the new name is taken.
[[nodiscard]] std::error_code publishFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Writes what the system still holds of a file to the disk.
[[nodiscard]] std::error_code syncFile(const std::filesystem::path& file);

/// Writes the names in a folder to the disk. Does nothing where the system or the file system does not offer it.
[[nodiscard]] std::error_code syncFolder(const std::filesystem::path& folder);

} // namespace z7::cashflow::sqlite
