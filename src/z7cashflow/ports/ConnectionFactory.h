#pragma once

#include "z7cashflow/ports/Connection.h"

#include <memory>
#include <string>

namespace z7::cashflow {

/// Makes connections for the parts of the library that open their own: the dialog and its entry. The host sets one
/// beside the login in the thread's context.
class ConnectionFactory {
public:
    virtual ~ConnectionFactory() = default;

    /// A new, closed connection of the kind that a connection string asks for, to be opened with that string; user and
    /// password are those in the string, if any. The database is not touched yet. Error of the adapter for a string
    /// that no kind of connection takes, without a password of it in the text. The caller owns the connection.
    [[nodiscard]] virtual std::unique_ptr<Connection> create(const std::string& connectionString) = 0;
};

} // namespace z7::cashflow
