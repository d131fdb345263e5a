#pragma once

#include <memory>

struct sqlite3;

namespace z7::cashflow::sqlite {

/// Closes a handle of the database library; if statements remain, it is closed with the last of them.
struct HandleCloser {
    void operator()(sqlite3* handle) const noexcept;
};

/// Owns an open handle of the database library.
using Handle = std::unique_ptr<sqlite3, HandleCloser>;

} // namespace z7::cashflow::sqlite
