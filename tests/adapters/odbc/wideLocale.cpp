#include <clocale>

namespace {

// unixODBC's driver manager converts wide texts with the locale's character set, which must be set before the first
// call.
[[maybe_unused]] const char* const locale = std::setlocale(LC_ALL, "C.UTF-8");

} // namespace
