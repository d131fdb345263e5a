#pragma once

#include "adapters/sqlite/Connection.h"

namespace z7::cashflow::sqlite {

/// While it lives, the commits of a connection do not wait until the disk has them. A crash of the program loses
/// nothing; a loss of power loses at most the last moments, and each transaction is there as a whole or not at all.
class RelaxedCommits {
public:
    /// The connection is open, in no transaction, and outlives it.
    explicit RelaxedCommits(Connection& connection);
    RelaxedCommits(const RelaxedCommits&) = delete;
    RelaxedCommits& operator=(const RelaxedCommits&) = delete;
    /// Finishes if nobody has, and keeps an error to itself.
    ~RelaxedCommits();

    /// Waits until the disk has everything that was committed, and lets each commit wait again. Error of the database
    /// if the disk does not take it.
    void finish();

private:
    Connection& connection_;
    bool finished_ = false;
};

} // namespace z7::cashflow::sqlite
