#pragma once

#include "adapters/ado/automation/Dispatch.h"
#include "z7cashflow/support/Error.h"

#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::ado {

/// The error of the database behind an error that an ADO object has raised. ADO raises the errors of its own, such as
/// 3704, by number; an error of the database is a code of the provider, and the connection's Errors collection tells
/// the database's number, its SQL state and its text. The first entry is taken that is not a warning and belongs to
/// the error; without one the error remains as it is. The connection may be nothing.
[[nodiscard]] Error databaseError(const Error& error, const adapters::automation::Dispatch& connection,
                                  const std::vector<std::string>& secrets);

/// Runs an action on an ADO object and raises the database's error instead of that of ADO.
template <class Action>
decltype(auto) withDatabaseErrors(const adapters::automation::Dispatch& connection,
                                  const std::vector<std::string>& secrets, Action&& action) {
    try {
        return std::forward<Action>(action)();
    } catch (const Error& error) {
        throw databaseError(error, connection, secrets);
    }
}

} // namespace z7::cashflow::ado
