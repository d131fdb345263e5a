#pragma once

#include "z7cashflow/ports/ServerRefClient.h"
#include "z7cashflow/ports/ZQReferClient.h"

#include <memory>

namespace z7::cashflow {

/// A new client from the host's dialog factory, or the library's own if the host has none. Error 91 without a
/// factory.
[[nodiscard]] std::unique_ptr<ServerRefClient> createServerRefClient();
[[nodiscard]] std::unique_ptr<ZQReferClient> createReferClient();

} // namespace z7::cashflow
