#pragma once

#include "adapters/sqlite/OwnedFolder.h"

#include <filesystem>
#include <memory>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// The tempdb of an account: what the sessions of one process share, as the sessions of a server share its tempdb,
/// and what ends with them. It is in the user's folder for temporary files, so that an account can be read where
/// nothing can be written, and so that no table outlives the program that created it: what a killed program has
/// left is removed by the next one that needs a tempdb.
class TempDatabase {
public:
    /// The account's tempdb in this process; created for its first user and removed after the last.
    /// Thread-safe. An Error reports why it cannot be created.
    [[nodiscard]] static std::shared_ptr<const TempDatabase> of(const std::filesystem::path& account);

    /// Attaches it to a handle as "tempdb". The handle must be closed before this object is destroyed.
    void attachTo(sqlite3* handle) const;

private:
    TempDatabase();

    OwnedFolder folder_;
};

} // namespace z7::cashflow::sqlite
