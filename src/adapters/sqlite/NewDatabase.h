#pragma once

#include "adapters/sqlite/OwnedFolder.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace z7::cashflow::sqlite {

/// A new account, which is built in a hidden folder beside its place and appears there as a whole or not at all,
/// whatever becomes of the disk or of the program. It never takes the place of anything that is there.
class NewDatabase {
public:
    /// The account's file, or a file that belongs to it, if something has that name already; nothing if all names are
    /// free. What ended runs have left of an account that they did not finish at this place is removed first.
    [[nodiscard]] static std::optional<std::filesystem::path> takenName(const std::filesystem::path& account);

    /// Creates an empty account in the hidden folder, which goes with this object. An Error says what the disk refuses.
    explicit NewDatabase(std::filesystem::path account);

    /// The file under which it can be opened and filled until it is published. Its connections must be closed by then.
    [[nodiscard]] const std::filesystem::path& file() const noexcept { return file_; }

    /// Brings everything into the account's files, checks them, writes them to the disk, gives them their names and
    /// opens them once as every program will. Returns the name that somebody else has taken meanwhile; nothing is
    /// published then, nor after an Error. "beforeStep" is called before each change of the folder in which the account
    /// appears, for tests.
    [[nodiscard]] std::optional<std::filesystem::path> publish(const std::function<void()>& beforeStep = {});

private:
    std::filesystem::path account_;
    OwnedFolder folder_;
    std::filesystem::path file_;
};

} // namespace z7::cashflow::sqlite
