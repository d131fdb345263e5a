#pragma once

#include "adapters/sqlite/ConnectionOptions.h"
#include "adapters/sqlite/Handle.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;

namespace z7::cashflow::sqlite {

class TempDatabase;

/// Opens a file with flags of the database library, SQLITE_OPEN_READWRITE and the like. An Error names the file.
[[nodiscard]] Handle openHandle(const std::filesystem::path& file, int flags);

/// Opens a file read-only by itself, without its log and without locks. An Error names the file.
[[nodiscard]] Handle openUnlocked(const std::filesystem::path& file);

/// Opens a file for reading, without locks if nothing can be written beside it and there is no log. An Error names
/// the file; it may say that there is a log that only a user with more rights can read.
[[nodiscard]] Handle openToRead(const std::filesystem::path& file);

/// Attaches a file to a handle under a name. An Error names the file.
void attach(sqlite3* handle, const std::filesystem::path& file, const char* name);

/// The account's file to which a path leads, following links: its companion is beside it. The path itself if it
/// leads nowhere.
[[nodiscard]] std::filesystem::path accountFile(const std::filesystem::path& path);

/// The state of a file when it was opened without locks, because nothing can be written beside it. Others may be
/// able to write, so a session that reads this way checks from time to time.
class UnlockedFile {
public:
    explicit UnlockedFile(std::filesystem::path file);
    /// Whether nobody has begun to write to it or has written to it since.
    [[nodiscard]] bool isUnchanged() const;
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return file_; }

private:
    std::filesystem::path file_;
    std::uintmax_t size_;
    std::filesystem::file_time_type written_;
};

/// An open account with its system database attached, ready for a session.
struct OpenAccount {
    Handle handle;
    std::filesystem::path file;           ///< the account's file after following links
    std::vector<UnlockedFile> unlocked{}; ///< the files that are read without locks
    bool readOnly = false;                ///< whether the account's file or its system database can only be read
};

/// Opens an account's file and its system database after checking that they are the expected ones. Files that
/// cannot be written are opened read-only. An Error names the file and the remedy.
[[nodiscard]] OpenAccount openAccount(const ConnectionOptions& options);

/// Attaches the system database and tempdb of an account's file to a bare session on that file, for programs that
/// use the file without a Connection, such as benchmarks. The tempdb must be kept until the handle is closed.
[[nodiscard]] std::shared_ptr<const TempDatabase> attachCompanions(sqlite3* handle,
                                                                   const std::filesystem::path& account);

} // namespace z7::cashflow::sqlite
