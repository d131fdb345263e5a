#include "host/cli/localTime.h"

#include <ctime>

namespace z7::cashflow::host {

Date localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return Date::fromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                           local.tm_sec);
}

} // namespace z7::cashflow::host
