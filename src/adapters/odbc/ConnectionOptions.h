#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow::odbc {

/// The contents of a connection string; see Connection for its forms and keywords.
struct ConnectionOptions {
    std::string driverText;           ///< for the ODBC driver manager; contains the password
    std::string driver;               ///< the value of its keyword "driver"; empty if it names a data source
    std::string target;               ///< server, port, database and data source for messages; empty if none is given
    std::vector<std::string> secrets; ///< the values that must not appear in messages
    std::optional<std::int16_t> year; ///< of the session; empty if the string has none
    int timeout = 5000;               ///< milliseconds
};

/// Error 5 that names the keyword that is missing, repeated or has an invalid value. No value is quoted, because
/// any of them could be a secret.
[[nodiscard]] ConnectionOptions parseConnectionString(const std::string& text);

/// The text with every secret in it replaced by "***".
[[nodiscard]] std::string withoutSecrets(std::string text, const std::vector<std::string>& secrets);

} // namespace z7::cashflow::odbc

Z7_PUBLIC_END
