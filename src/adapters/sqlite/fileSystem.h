#pragma once

#include <filesystem>
#include <system_error>

/// What the standard library lacks for files that must survive a power failure and must not replace others.
namespace z7::cashflow::sqlite {

/// Creates a folder that only the current user can enter. The code is std::errc::file_exists if the name is taken.
[[nodiscard]] std::error_code makePrivateFolder(const std::filesystem::path& folder);

/// Whether a file or folder (a link is not followed) belongs to the current user.
[[nodiscard]] bool isOwn(const std::filesystem::path& path);

/// Gives a file a second name, or a new name if the file system does not support that. Never replaces anything: the
/// code is std::errc::file_exists if the new name is taken.
[[nodiscard]] std::error_code publishFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Flushes a file to the disk.
[[nodiscard]] std::error_code syncFile(const std::filesystem::path& file);

/// Flushes the names in a folder to the disk. Does nothing if the system or the file system does not support it.
[[nodiscard]] std::error_code syncFolder(const std::filesystem::path& folder);

} // namespace z7::cashflow::sqlite
