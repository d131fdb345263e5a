#pragma once

#include "adapters/sqlite/Connection.h"

namespace z7::cashflow::sqlite {

/// While it lives, commits of a connection do not wait for the disk. A crash of the program loses nothing; a power
/// failure loses at most the last moments, and each transaction is complete or absent.
class RelaxedCommits {
public:
    /// The connection is open, not in a transaction, and outlives this object.
    explicit RelaxedCommits(Connection& connection);
    RelaxedCommits(const RelaxedCommits&) = delete;
    RelaxedCommits& operator=(const RelaxedCommits&) = delete;
    /// Calls finish if nobody has, and ignores an error.
    ~RelaxedCommits();

    /// Waits until everything that was committed is on the disk, and makes each commit wait again. Raises an
    /// error of the database if the disk fails.
    void finish();

private:
    Connection& connection_;
    bool finished_ = false;
};

} // namespace z7::cashflow::sqlite
