#pragma once

#include "adapters/sqlite/OwnedFolder.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace z7::cashflow::sqlite {

/// A new account, built in a hidden folder beside its destination. It appears there as a whole or not at all, even
/// if the disk or the program fails, and never replaces anything.
class NewDatabase {
public:
    /// The account's file, or a file that belongs to it, if the name is taken; empty if all names are free.
    /// First removes what ended runs have left of an unfinished account at this place.
    [[nodiscard]] static std::optional<std::filesystem::path> takenName(const std::filesystem::path& account);

    /// Creates an empty account in the hidden folder, which is removed by the destructor. An Error reports what
    /// the disk refuses.
    explicit NewDatabase(std::filesystem::path account);

    /// The file by which it can be opened and filled before it is published. Its connections must be closed by
    /// then.
    [[nodiscard]] const std::filesystem::path& file() const noexcept { return file_; }

    /// Completes the account's files, checks them, writes them to the disk, renames them, and opens them once
    /// like any program. Returns the name that somebody else has taken meanwhile; in that case, and after an
    /// Error, nothing is published. "beforeStep" is called before each change of the destination folder, for
    /// tests.
    [[nodiscard]] std::optional<std::filesystem::path> publish(const std::function<void()>& beforeStep = {});

private:
    std::filesystem::path account_;
    OwnedFolder folder_;
    std::filesystem::path file_;
};

} // namespace z7::cashflow::sqlite
