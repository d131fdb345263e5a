#pragma once

#include "z7cashflow/ports/Connection.h"
#include "z7cashflow/support/visibility.h"

#include <memory>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// Creates connections for the parts of the library that open their own: the dialog and its entry point. The host
/// sets one beside the login in the thread's context.
class ConnectionFactory {
public:
    virtual ~ConnectionFactory() = default;

    /// A new, closed connection of the kind that the connection string requires, to be opened with that string;
    /// user and password are those of the string, if any. The database is not accessed yet. Error of the
    /// adapter for a string that no kind of connection accepts, without its password in the text. The caller
    /// owns the connection.
    [[nodiscard]] virtual std::unique_ptr<Connection> create(const std::string& connectionString) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
